#include <cerrno>
#include <ctime>

#include "platform/clock_api.h"

namespace {

constexpr long kNanosecondsPerMillisecond = 1'000'000;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

}  // namespace

DWORD GetTickCount() {
  return static_cast<DWORD>(svcinst::monotonic_nanoseconds() / kNanosecondsPerMillisecond);
}

void Sleep(DWORD milliseconds) {
  timespec left{milliseconds / 1000, milliseconds % 1000 * kNanosecondsPerMillisecond};
  while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) continue;
}

void GetLocalTime(LPSYSTEMTIME time) {
  // localtime() looks at the zone's file each time, which takes far longer than the conversion.
  static const bool zone_is_read = (tzset(), true);
  static_cast<void>(zone_is_read);
  timespec moment;
  clock_gettime(CLOCK_REALTIME, &moment);
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
  timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * kNanosecondsPerSecond + time.tv_nsec;
}

}  // namespace svcinst
