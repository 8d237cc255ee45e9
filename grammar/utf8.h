// Reads one character of UTF-8, as generously as the grammar engine wants it.
#pragma once

#include <cstdint>

namespace svcinst {

struct Utf8Char {
  std::uint32_t length;  // bytes, 1 to 4; 0 when the bytes are no sequence
  std::uint32_t code_point;
};

/// The sequence that begins at `bytes`, which must be followed by a NUL somewhere: a sequence that
/// the NUL cuts off is none. Overlong forms, surrogates and values above 0x10FFFF are accepted.
Utf8Char decode_utf8(const char* bytes);

}  // namespace svcinst
