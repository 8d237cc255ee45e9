// Numbers as texts of their own. Nothing here knows widths, flags or precisions, and no "0x" or '+'
// is put in front. Every function that returns a new string throws std::bad_alloc.
#pragma once

#include <cstdint>

#include "common/byte_string.h"

namespace svcinst {

/// Decimal digits, as few as possible.
ByteString u64_to_dec(std::uint64_t value);
inline ByteString u32_to_dec(std::uint32_t value) {
  return u64_to_dec(value);
}
inline ByteString u16_to_dec(std::uint16_t value) {
  return u64_to_dec(value);
}
inline ByteString u8_to_dec(std::uint8_t value) {
  return u64_to_dec(value);
}

/// The same with a '-' in front of a negative value.
ByteString i64_to_dec(std::int64_t value);
inline ByteString i32_to_dec(std::int32_t value) {
  return i64_to_dec(value);
}
inline ByteString i16_to_dec(std::int16_t value) {
  return i64_to_dec(value);
}
inline ByteString i8_to_dec(std::int8_t value) {
  return i64_to_dec(value);
}

/// Hexadecimal digits. whole_bytes: an even number of them, by a '0' in front where it needs one;
/// otherwise as few as possible.
ByteString u64_to_hex(std::uint64_t value, bool whole_bytes, bool upper_case);

/// Lowercase hexadecimal digits, as few as possible.
inline ByteString u32_to_hex(std::uint32_t value) {
  return u64_to_hex(value, false, false);
}
inline ByteString u16_to_hex(std::uint16_t value) {
  return u64_to_hex(value, false, false);
}
inline ByteString u8_to_hex(std::uint8_t value) {
  return u64_to_hex(value, false, false);
}

/// Four binary digits for each hexadecimal digit, of either case. An empty text when any character
/// is no hexadecimal digit.
ByteString hex_to_bin(const ByteString& hex);

/// Puts `count` '0' characters in front of `text`. Throws std::bad_alloc; `text` is then unchanged.
void pad_left_zeros(ByteString& text, std::uint64_t count);

/// What the C library's "%f" writes for `value`.
ByteString double_to_text(double value);

}  // namespace svcinst
