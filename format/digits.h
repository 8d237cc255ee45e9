// The digits of an integer: how many there are, and writing them where they are to stand.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "format/digit_tables.h"

namespace svcinst {

enum class Radix : std::uint8_t { decimal, hex_lower, hex_upper, binary };

/// The digits of `value`, not written yet.
struct Digits {
  std::uint64_t value;
  std::size_t length;  // bytes
  Radix radix;
  [[nodiscard]] std::size_t size() const { return length; }
};

/// No number has more digits, in bytes.
inline constexpr std::size_t kMostDigits = 64;

inline std::size_t decimal_length(std::uint64_t value) {
  for (std::size_t length = 1;; length += 4, value /= 10000) {
    if (value < 10) return length;
    if (value < 100) return length + 1;
    if (value < 1000) return length + 2;
    if (value < 10000) return length + 3;
  }
}

inline std::size_t hex_length(std::uint64_t value) {
  return static_cast<std::size_t>(std::bit_width(value | 1) + 3) / 4;
}

/// At least one digit, as few as possible.
inline Digits decimal_digits(std::uint64_t value) {
  return {value, decimal_length(value), Radix::decimal};
}
inline Digits hex_digits(std::uint64_t value) {
  return {value, hex_length(value), Radix::hex_lower};
}

/// Four digits for each hexadecimal digit of the value.
inline Digits binary_digits(std::uint64_t value) {
  return {value, 4 * hex_length(value), Radix::binary};
}

/// Puts the decimal digits of `value` directly in front of `end`, decimal_length() bytes. Returns
/// where the first one stands.
inline char* write_decimal(char* end, std::uint64_t value) {
  for (; value >= 100; value /= 100) {
    end -= 2;
    std::memcpy(end, &decimal_pairs[2 * (value % 100)], 2);
  }
  if (value < 10) {
    *--end = static_cast<char>('0' + value);
    return end;
  }
  end -= 2;
  std::memcpy(end, &decimal_pairs[2 * value], 2);
  return end;
}

/// Puts the last digits of `value` in front of `end`, `length` bytes.
inline void write_hex(char* end, std::uint64_t value, std::size_t length, TextView digits) {
  for (const char* const start = end - length; end != start; value >>= 4) {
    *--end = digits[value & 15];
  }
}
inline void write_binary(char* end, std::uint64_t value, std::size_t length) {
  for (const char* const start = end - length; end != start; value >>= 4) {
    end -= 4;
    nibble_bits[value & 15].copy(end, 4);
  }
}

/// Puts `digits` directly in front of `end`. No NUL is written.
inline void write(char* end, const Digits& digits) {
  switch (digits.radix) {
    case Radix::decimal:
      write_decimal(end, digits.value);
      return;
    case Radix::hex_lower:
      return write_hex(end, digits.value, digits.length, hex_digits_lower);
    case Radix::hex_upper:
      return write_hex(end, digits.value, digits.length, hex_digits_upper);
    case Radix::binary:
      return write_binary(end, digits.value, digits.length);
  }
}

/// The distance of a negative or positive value from zero.
inline std::uint64_t magnitude(std::int64_t value) {
  const auto bits = static_cast<std::uint64_t>(value);
  return value < 0 ? 0 - bits : bits;
}

}  // namespace svcinst
