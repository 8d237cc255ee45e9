#include "format/number_conversions.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "format/digits.h"
#include "format/double_digits.h"

namespace svcinst {
namespace {

constexpr std::size_t kPointerDigits = 16;

// What a precision puts behind a number's text.
struct Fraction {
  bool point = false;
  std::uint32_t zeros = 0;
};

// What stands in front of a number's text.
struct Frame {
  TextView front;         // sign and prefix, in front of the fill
  bool minus;             // a '-', behind the fill
  char fill;              // that on the left
  std::uint64_t columns;  // that fill, '-', text and fraction take at least
};

bool is_wide(LengthModifier length) {
  switch (length) {
    case LengthModifier::ll:
    case LengthModifier::j:
    case LengthModifier::z:
    case LengthModifier::t:
      return true;
    default:
      return false;
  }
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

std::size_t length_of(TextView text) {
  return text.size();
}

std::size_t length_of(const Digits& digits) {
  return digits.length;
}

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

Fraction zeros_behind_point(std::uint32_t precision) {
  return {precision > 0, precision};
}

// Cuts the digits behind the point to the precision's number, without rounding. Returns what is
// missing when there are fewer.
Fraction fit_fraction(TextView& text, std::uint32_t precision) {
  const std::size_t point = text.find('.');
  if (precision == 0 || point == TextView::npos) return zeros_behind_point(precision);
  const std::size_t wanted = point + 1 + precision;
  if (wanted > text.size()) return {false, static_cast<std::uint32_t>(wanted - text.size())};
  text = text.substr(0, wanted);
  return {};
}

// Of every number but a binary one. Columns are kept free for sign and prefix. Under '+' a '-' is a
// sign like the other.
Frame number_frame(const DirectiveState& directive, bool negative, TextView prefix) {
  const bool sign = has(directive, kSignFlag);
  const char fill = sign || has(directive, kZeroFlag) ? '0' : ' ';
  if (sign) prefix = negative ? "-" : "+";
  const std::uint64_t kept = std::min<std::uint64_t>(directive.width, prefix.size());
  return {prefix, negative && !sign, fill, directive.width - kept};
}

// Sign and prefix of a binary number stand outside its width, and there is always a column for a
// sign.
Frame binary_frame(const DirectiveState& directive) {
  if (has(directive, kSignFlag)) return {"+", false, ' ', directive.width};
  if (has(directive, kZeroFlag)) return {"0", false, '0', directive.width};
  return {has(directive, kAlternateFlag) ? "0b " : " ", false, ' ', directive.width};
}

template <class Text>
void store_number(OutputBuffer& output, const Frame& frame, const Text& text, Fraction fraction,
                  bool left) {
  const std::uint64_t length =
      length_of(text) + (frame.minus ? 1U : 0U) + (fraction.point ? 1U : 0U) + fraction.zeros;
  const std::uint64_t missing = frame.columns > length ? frame.columns - length : 0;
  if (!frame.front.empty()) store(output, frame.front);
  if (missing > 0 && !left) store_fill(output, frame.fill, missing);
  if (frame.minus) store_byte(output, '-');
  store(output, text);
  if (fraction.point) store_byte(output, '.');
  if (fraction.zeros > 0) store_fill(output, '0', fraction.zeros);
  if (missing > 0 && left) store_fill(output, ' ', missing);
}

// The digits of the value that an integer's or pointer's letter takes, without sign.
Digits take_digits(char letter, LengthModifier length, Arguments& arguments, bool& negative) {
  negative = false;
  switch (letter) {
    case 'p':
      return {take_u64(arguments), kPointerDigits, Radix::hex_upper};
    case 'b':
      return binary_digits(take_unsigned(arguments, length));
    case 'u':
      return decimal_digits(take_unsigned(arguments, length));
    case 'x':
    case 'X':
      return hex_digits(take_unsigned(arguments, length));
    default:
      break;
  }
  const std::int64_t value = take_signed(arguments, length);
  negative = value < 0;
  return decimal_digits(magnitude(value));
}

}  // namespace

void store_signed(OutputBuffer& output, std::int32_t value) {
  if (value < 0) store_byte(output, '-');
  store(output, decimal_digits(magnitude(value)));
}

void store_unsigned(OutputBuffer& output, std::uint32_t value) {
  store(output, decimal_digits(value));
}

void store_hex(OutputBuffer& output, std::uint32_t value) {
  store(output, hex_digits(value));
}

void convert_integer(OutputBuffer& output, char letter, const DirectiveState& directive,
                     Arguments& arguments) {
  bool negative = false;
  const Digits digits = take_digits(letter, directive.length, arguments, negative);
  const bool hex = letter == 'x' || letter == 'X';
  const TextView prefix = hex && has(directive, kAlternateFlag) ? "0x" : "";
  store_number(output,
               letter == 'b' ? binary_frame(directive) : number_frame(directive, negative, prefix),
               digits, zeros_behind_point(directive.precision), has(directive, kLeftFlag));
}

void convert_double(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments) {
  DoubleBuffer buffer;
  TextView text = write_double(buffer, take_double(arguments));
  const bool negative = text.front() == '-';
  if (negative) text.remove_prefix(1);
  const Fraction missing = fit_fraction(text, directive.precision);
  store_number(output, number_frame(directive, negative, ""), text, missing,
               has(directive, kLeftFlag));
}

}  // namespace svcinst
