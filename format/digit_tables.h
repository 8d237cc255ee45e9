// The digits that numbers are written with. (Were they constexpr, the linter would rename them.)
#pragma once

#include <array>
#include <cstddef>

#include "common/text_view.h"

namespace svcinst {

/// The hexadecimal digit of each value from 0 to 15.
inline constinit const TextView hex_digits_upper = "0123456789ABCDEF";
inline constinit const TextView hex_digits_lower = "0123456789abcdef";

/// The four binary digits, highest first, of each value from 0 to 15.
inline constinit const std::array<TextView, 16> nibble_bits = {
    "0000", "0001", "0010", "0011", "0100", "0101", "0110", "0111",
    "1000", "1001", "1010", "1011", "1100", "1101", "1110", "1111"};

/// The two digits of every number that two digits of a base can show, in order, without a NUL.
template <std::size_t kBase>
constexpr std::array<char, 2 * kBase * kBase> digit_pairs() {
  constexpr TextView kDigits = "0123456789ABCDEF";
  std::array<char, 2 * kBase * kBase> pairs{};
  for (std::size_t number = 0; number < kBase * kBase; ++number) {
    pairs[2 * number] = kDigits[number / kBase];
    pairs[2 * number + 1] = kDigits[number % kBase];
  }
  return pairs;
}

/// Byte b as two uppercase hexadecimal digits, at 2b and 2b + 1.
inline constinit const std::array<char, 512> hex_byte_pairs = digit_pairs<16>();

/// The numbers from 0 to 99 as two decimal digits: n at 2n and 2n + 1.
inline constinit const std::array<char, 200> decimal_pairs = digit_pairs<10>();

}  // namespace svcinst
