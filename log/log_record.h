// What becomes of a format and its arguments: a levelled record, with a bracketed prefix before the
// message, or raw text. Both are handed to the sinks.
// Both return the length in bytes, whether or not a sink took it, and throw std::bad_alloc; while
// logging is off they return 0 and change nothing.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "log/log_level.h"

namespace svcinst {

/// A level that is too low also returns 0 and changes nothing.
std::int32_t log_record(LogLevel level, const char* format, std::va_list arguments);

/// Takes no record number, and no level filters it.
std::int32_t log_raw(const char* format, std::va_list arguments);

}  // namespace svcinst
