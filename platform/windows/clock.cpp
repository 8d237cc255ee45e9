#include "platform/clock_api.h"

namespace svcinst {

std::int64_t monotonic_nanoseconds() {
  constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
  LARGE_INTEGER counter;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&counter);
  QueryPerformanceFrequency(&frequency);
  // Whole seconds apart from the rest, so that the product doesn't overflow.
  return counter.QuadPart / frequency.QuadPart * kNanosecondsPerSecond +
         counter.QuadPart % frequency.QuadPart * kNanosecondsPerSecond / frequency.QuadPart;
}

}  // namespace svcinst
