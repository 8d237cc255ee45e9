#include <cerrno>
#include <chrono>
#include <ctime>

#include "platform/clock_api.h"

namespace {

constexpr long kNanosecondsPerMillisecond = 1'000'000;

timespec now(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return time;
}

}  // namespace

DWORD GetTickCount() {
  const timespec time = now(CLOCK_MONOTONIC);
  return static_cast<DWORD>(time.tv_sec * 1000 + time.tv_nsec / kNanosecondsPerMillisecond);
}

void Sleep(DWORD milliseconds) {
  timespec left{milliseconds / 1000, milliseconds % 1000 * kNanosecondsPerMillisecond};
  while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) continue;
}

void GetLocalTime(LPSYSTEMTIME time) {
  // localtime() looks at the zone's file each time, which takes far longer than the conversion.
  static const bool zone_is_read = (tzset(), true);
  static_cast<void>(zone_is_read);
  const timespec moment = now(CLOCK_REALTIME);
  tm local{};
  localtime_r(&moment.tv_sec, &local);
  *time = {static_cast<WORD>(local.tm_year + 1900),
           static_cast<WORD>(local.tm_mon + 1),
           static_cast<WORD>(local.tm_wday),
           static_cast<WORD>(local.tm_mday),
           static_cast<WORD>(local.tm_hour),
           static_cast<WORD>(local.tm_min),
           static_cast<WORD>(local.tm_sec),
           static_cast<WORD>(moment.tv_nsec / kNanosecondsPerMillisecond)};
}

namespace svcinst {

std::int64_t monotonic_nanoseconds() {
  const auto since_start = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(since_start).count();
}

}  // namespace svcinst
