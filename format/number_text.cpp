#include "format/number_text.h"

#include <algorithm>
#include <cstring>

#include "format/digits.h"
#include "format/double_digits.h"

namespace svcinst {
namespace {

constexpr unsigned kNoNibble = 16;

ByteString text_of(const Digits& digits) {
  ByteString text;
  resize(text, digits.length, '0');
  write(text.data + text.length, digits);
  return text;
}

// The value of a hexadecimal digit; kNoNibble for any other character.
unsigned nibble_of(char character) {
  const auto code = static_cast<unsigned char>(character);
  if (code >= '0' && code <= '9') return code - unsigned{'0'};
  if (code >= 'A' && code <= 'F') return code - unsigned{'A'} + 10;
  if (code >= 'a' && code <= 'f') return code - unsigned{'a'} + 10;
  return kNoNibble;
}

}  // namespace

ByteString u64_to_dec(std::uint64_t value) {
  return text_of(decimal_digits(value));
}

ByteString i64_to_dec(std::int64_t value) {
  ByteString digits = u64_to_dec(magnitude(value));
  if (value < 0) return '-' + digits;
  return digits;
}

ByteString u64_to_hex(std::uint64_t value, bool whole_bytes, bool upper_case) {
  Digits digits = hex_digits(value);
  if (whole_bytes) digits.length += digits.length % 2;
  if (upper_case) digits.radix = Radix::hex_upper;
  return text_of(digits);
}

ByteString hex_to_bin(const ByteString& hex) {
  ByteString bits;
  resize(bits, 4 * hex.length, '0');
  char* next = bits.data;
  for (const char character : view(hex)) {
    const unsigned nibble = nibble_of(character);
    if (nibble == kNoNibble) return {};
    nibble_bits[nibble].copy(next, 4);
    next += 4;
  }
  return bits;
}

void pad_left_zeros(ByteString& text, std::uint64_t count) {
  const std::uint64_t old_length = text.length;
  resize(text, std::max(count, old_length + count), '0');  // a sum that wraps is no length either
  std::memmove(text.data + count, text.data, old_length);
  std::memset(text.data, '0', count);
}

ByteString double_to_text(double value) {
  DoubleBuffer buffer;
  return ByteString(write_double(buffer, value));
}

}  // namespace svcinst
