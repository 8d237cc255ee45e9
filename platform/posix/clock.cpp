#include <chrono>
#include <ctime>
#include <thread>

#include "platform/clock_api.h"
#include "platform/steady_clock.h"

DWORD GetTickCount() {
  return static_cast<DWORD>(svcinst::monotonic_nanoseconds() / 1'000'000);
}

void Sleep(DWORD milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void GetLocalTime(LPSYSTEMTIME time) {
  timespec moment;
  clock_gettime(CLOCK_REALTIME, &moment);
  tm local{};
  localtime_r(&moment.tv_sec, &local);
  *time = {static_cast<WORD>(local.tm_year + 1900), static_cast<WORD>(local.tm_mon + 1),
           static_cast<WORD>(local.tm_wday),        static_cast<WORD>(local.tm_mday),
           static_cast<WORD>(local.tm_hour),        static_cast<WORD>(local.tm_min),
           static_cast<WORD>(local.tm_sec),         static_cast<WORD>(moment.tv_nsec / 1'000'000)};
}
