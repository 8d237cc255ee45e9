// The clock that plays Windows' elsewhere.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "platform/clock_api.h"

using namespace std::chrono;

TEST(Clock, TellsTheTimeOfTheUsersZone) {
  setenv("TZ", "AHEAD-05:30", 1);
  SYSTEMTIME time;
  GetLocalTime(&time);
  const sys_days day = year(time.wYear) / month(time.wMonth) / time.wDay;
  const auto told = day + hours(time.wHour) + minutes(time.wMinute) + seconds(time.wSecond) +
                    milliseconds(time.wMilliseconds);
  const auto since = system_clock::now() + minutes(330) - told;
  EXPECT_TRUE(since >= seconds(0) && since < seconds(9)) << since / milliseconds(1);
}

TEST(Clock, SleepsMilliseconds) {
  const DWORD start = GetTickCount();
  Sleep(50);
  const DWORD slept = GetTickCount() - start;
  EXPECT_TRUE(slept >= 50 && slept < 9000) << slept;
}
