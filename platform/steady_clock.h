// The clock that never goes back.
#pragma once

#include <cstdint>

namespace svcinst {

/// Nanoseconds of the standard library's steady clock.
std::int64_t monotonic_nanoseconds();

}  // namespace svcinst
