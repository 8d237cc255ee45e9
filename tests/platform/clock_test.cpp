// The clock and the process that play Windows' elsewhere.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "platform/clock_api.h"
#include "platform/process_api.h"

using namespace std::chrono;

TEST(Clock, TellsTheTimeOfTheUsersZone) {
  setenv("TZ", "AHEAD-05:30", 1);
  SYSTEMTIME time;
  const auto before = floor<milliseconds>(system_clock::now());
  GetLocalTime(&time);
  const sys_days day = year(time.wYear) / month(time.wMonth) / time.wDay;
  const auto told = day + hours(time.wHour) + minutes(time.wMinute) + seconds(time.wSecond) +
                    milliseconds(time.wMilliseconds) - minutes(330);
  EXPECT_TRUE(before <= told && told <= system_clock::now()) << (told - before) / milliseconds(1);
}

TEST(Clock, SleepsMilliseconds) {
  const DWORD start = GetTickCount();
  Sleep(50);
  const DWORD slept = GetTickCount() - start;
  EXPECT_TRUE(slept >= 50 && slept < 9000) << slept;
}

TEST(Process, HasTheIdsOfTheSystem) {
  EXPECT_EQ(GetCurrentProcessId(), static_cast<DWORD>(getpid()));
  std::jthread([] { EXPECT_EQ(GetCurrentThreadId(), static_cast<DWORD>(gettid())); });
}
