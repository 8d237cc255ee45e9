// Levelled records: the bracketed prefix and the message behind it.
#pragma once

#include <cstdarg>
#include <cstdint>

namespace svcinst {

/// Makes the record and hands it to the sinks, unless logging is off or `level` is too low; then
/// nothing changes. level: a LogLevel.
/// Returns the length of the record in bytes, whether or not a sink took it; 0 when none was made.
/// Throws std::bad_alloc.
std::int32_t log_record(std::int32_t level, const char* format, std::va_list arguments);

}  // namespace svcinst
