#include "format/number_conversions.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "format/digits.h"
#include "format/double_digits.h"

namespace svcinst {
namespace {

constexpr std::size_t kPointerDigits = 16;

// The value of an integer's or pointer's letter.
struct Integer {
  Digits digits;
  bool negative = false;
};

// What stands behind a number's digits.
struct Fraction {
  bool point;
  std::uint32_t zeros;
};

// 64 bits: ll, j, z and t.
bool is_wide(LengthModifier length) {
  return length >= LengthModifier::ll && length <= LengthModifier::t;
}

std::uint64_t take_unsigned(Arguments& arguments, LengthModifier length) {
  if (is_wide(length)) return take_u64(arguments);
  const std::uint32_t value = take_u32(arguments);
  if (length == LengthModifier::h) return static_cast<std::uint16_t>(value);
  if (length == LengthModifier::hh) return static_cast<std::uint8_t>(value);
  return value;
}

std::int64_t take_signed(Arguments& arguments, LengthModifier length) {
  if (is_wide(length)) return static_cast<std::int64_t>(take_u64(arguments));
  const std::uint32_t value = take_u32(arguments);
  if (length == LengthModifier::h) return static_cast<std::int16_t>(value);
  if (length == LengthModifier::hh) return static_cast<std::int8_t>(value);
  return static_cast<std::int32_t>(value);
}

Integer take_integer(const DirectiveState& directive, Arguments& arguments) {
  const LengthModifier length = directive.length;
  switch (directive.letter) {
    case 'p':
      return {{take_u64(arguments), kPointerDigits, Radix::hex_upper}};
    case 'b':
      return {binary_digits(take_unsigned(arguments, length))};
    case 'u':
      return {decimal_digits(take_unsigned(arguments, length))};
    case 'x':
    case 'X':
      return {hex_digits(take_unsigned(arguments, length))};
    default:
      break;
  }
  const std::int64_t value = take_signed(arguments, length);
  return {decimal_digits(magnitude(value)), value < 0};
}

// The sign under '+', or a prefix. A binary number always has a column for a sign.
inline TextView front_of(const DirectiveState& directive, bool negative) {
  if (has(directive, kSignFlag)) return negative ? "-" : "+";
  const bool alternate = has(directive, kAlternateFlag);
  switch (directive.letter) {
    case 'x':
    case 'X':
      return alternate ? "0x" : "";
    case 'b':
      if (has(directive, kZeroFlag)) return "0";
      return alternate ? "0b " : " ";
    default:
      return "";
  }
}

// From left to right: front, fill, '-', digits, fraction, fill. digits: Digits or the text of a
// double. The front of a binary number stands outside its width, and '+' does not change its fill.
template <class Text>
void store_number(OutputBuffer& output, const DirectiveState& directive, bool negative,
                  const Text& digits, Fraction fraction) {
  const bool binary = directive.letter == 'b';
  const bool sign = has(directive, kSignFlag);
  const bool left = has(directive, kLeftFlag);
  const bool minus = negative && !sign;
  const char fill = has(directive, kZeroFlag) || (sign && !binary) ? '0' : ' ';
  const TextView front = front_of(directive, negative);
  const std::uint64_t length = (binary ? 0 : front.size()) + (minus ? 1U : 0U) + digits.size() +
                               (fraction.point ? 1U : 0U) + fraction.zeros;
  const std::uint64_t missing = directive.width > length ? directive.width - length : 0;

  if (!front.empty()) store(output, front);
  if (missing > 0 && !left) store_fill(output, fill, missing);
  if (minus) store_byte(output, '-');
  store(output, digits);
  if (fraction.point) store_byte(output, '.');
  if (fraction.zeros > 0) store_fill(output, '0', fraction.zeros);
  if (missing > 0 && left) store_fill(output, ' ', missing);
}

}  // namespace

// Digits are written where they are to stand; in an array of their own only when they must be cut.
void store(OutputBuffer& output, const Digits& digits) {
  if (has_room(output, digits.length)) {
    output.count += digits.length;
    write(output.bytes + output.count, digits);
    return;
  }
  std::array<char, kMostDigits> scratch;
  write(scratch.data() + digits.length, digits);
  store(output, TextView(scratch.data(), digits.length));
}

void store_signed(OutputBuffer& output, std::int32_t value) {
  if (value < 0) store_byte(output, '-');
  store(output, decimal_digits(magnitude(value)));
}

void convert_integer(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments) {
  const Integer integer = take_integer(directive, arguments);
  store_number(output, directive, integer.negative, integer.digits,
               {directive.precision > 0, directive.precision});
}

void convert_double(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments) {
  DoubleBuffer buffer;
  TextView text = write_double(buffer, take_double(arguments));
  const bool negative = text.front() == '-';
  if (negative) text.remove_prefix(1);
  Fraction fraction{directive.precision > 0, directive.precision};
  const std::size_t point = text.find('.');
  if (fraction.point && point != TextView::npos) {
    const std::size_t wanted = point + 1 + directive.precision;
    text = text.substr(0, wanted);
    fraction = {.point = false, .zeros = static_cast<std::uint32_t>(wanted - text.size())};
  }
  store_number(output, directive, negative, text, fraction);
}

}  // namespace svcinst
