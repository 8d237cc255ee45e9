#include "platform/steady_clock.h"

#include <chrono>

std::int64_t svcinst::monotonic_nanoseconds() {
  return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}
