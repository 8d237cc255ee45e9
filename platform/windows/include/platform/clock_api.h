// The clocks: `GetTickCount`, `Sleep`, `SYSTEMTIME` and `GetLocalTime` are the system's.
#pragma once

#include <cstdint>

#include "platform/types_api.h"

namespace svcinst {

/// Nanoseconds of the performance counter, which never goes back.
std::int64_t monotonic_nanoseconds();

}  // namespace svcinst
