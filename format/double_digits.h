// The text of a floating-point number, without heap memory.
#pragma once

#include <array>

#include "common/text_view.h"

namespace svcinst {

/// Room for the longest text: a '-', the 309 integer digits of the greatest double, '.', six digits
/// and the NUL that the C library puts behind.
using DoubleBuffer = std::array<char, 320>;

/// Writes what the C library's "%f" writes for `value` in the C locale and the default rounding
/// mode. Returns a view into `buffer`; no NUL is promised behind it.
TextView write_double(DoubleBuffer& buffer, double value);

}  // namespace svcinst
