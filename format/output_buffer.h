// The byte array that formatted text goes to. The caller owns the array; nothing is stored at or
// behind index `size`, and no NUL is put behind the text.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "common/text_view.h"

namespace svcinst {

/// With null `bytes` and size 0 nothing is stored, and `count` grows by all that there would be.
/// Null `bytes` with any other size are not allowed.
struct OutputBuffer {
  char* bytes = nullptr;
  std::uint64_t size = 0;   // bytes that may be stored
  std::uint64_t count = 0;  // bytes stored so far, and the index of the next one
};

/// True when bytes are stored, and there is room for `length` more.
inline bool has_room(const OutputBuffer& output, std::uint64_t length) {
  return output.bytes != nullptr && output.size - output.count >= length;
}

/// Puts `text` behind what is stored; what there is no room for is dropped.
inline void store(OutputBuffer& output, TextView text) {
  std::uint64_t length = text.size();
  if (output.bytes != nullptr) {
    length = std::min(length, output.size - output.count);
    text.copy(output.bytes + output.count, length);
  }
  output.count += length;
}

/// Puts `length` bytes `fill` behind what is stored; what there is no room for is dropped.
inline void store_fill(OutputBuffer& output, char fill, std::uint64_t length) {
  if (output.bytes != nullptr) {
    length = std::min(length, output.size - output.count);
    std::memset(output.bytes + output.count, fill, length);
  }
  output.count += length;
}

inline void store_byte(OutputBuffer& output, char byte) {
  if (output.bytes != nullptr) {
    if (output.count == output.size) return;
    output.bytes[output.count] = byte;
  }
  ++output.count;
}

}  // namespace svcinst
