// The two zero-filled buffers of a log call: one that the message is formatted into, one that holds
// what the sinks get. Each call makes its own.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>

#include "common/text_view.h"

namespace svcinst {

struct LogBuffer {
  std::unique_ptr<char[]> bytes;
  std::uint64_t length = 0;  // bytes in use
};

/// The bytes in use, valid as long as the buffer is.
inline TextView view(const LogBuffer& buffer) {
  return {buffer.bytes.get(), buffer.length};
}

/// The formatted message: `max` bytes at most, and of a malformed format what stands before the
/// fault. Throws std::bad_alloc.
LogBuffer format_message(bool with_hex, const char* format, std::va_list arguments);

/// `prefix` and, directly behind it, `message`. The buffer has `max` bytes, or more where both need
/// them. Throws std::bad_alloc.
LogBuffer join(TextView prefix, TextView message);

}  // namespace svcinst
