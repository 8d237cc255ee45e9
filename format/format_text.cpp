#include "format/format_text.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <limits>

#include "format/arguments.h"
#include "format/directive.h"
#include "format/number_conversions.h"
#include "format/text_conversions.h"

namespace svcinst {
namespace {

// False when none of the bytes in the word at `at` is '%'. True when one is, or one is above 0x7F:
// less work than to be exact. A '%' is a zero byte after the XOR, and the subtraction sets its
// highest bit.
template <class Word>
bool may_hold_percent(const char* at) {
  constexpr Word kOneInEachByte = std::numeric_limits<Word>::max() / 0xFF;
  Word bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  return (((bytes ^ kOneInEachByte * '%') - kOneInEachByte) & kOneInEachByte * 0x80) != 0;
}

// Copies the literal text at the start of `format` to `next`, in words as long as it can, and
// returns how many bytes that were: those before the first '%', or all `length`. Its runs are
// short: a search and a copy of their own would cost more.
std::size_t copy_literal(char* next, const char* format, std::size_t length) {
  std::size_t i = 0;
  for (; i + 8 <= length && !may_hold_percent<std::uint64_t>(format + i); i += 8) {
    std::memcpy(next + i, format + i, 8);
  }
  if (i + 4 <= length && !may_hold_percent<std::uint32_t>(format + i)) {
    std::memcpy(next + i, format + i, 4);
    i += 4;
  }
  for (; i < length && format[i] != '%'; ++i) next[i] = format[i];
  return i;
}

// Stores what stands before the next '%', or before `end`, and moves `at` there.
void store_literal(OutputBuffer& output, const char*& at, const char* end) {
  const auto length = static_cast<std::size_t>(end - at);
  if (has_room(output, length)) {
    const std::size_t copied = copy_literal(output.bytes + output.count, at, length);
    output.count += copied;
    at += copied;
    return;
  }
  const char* const start = at;
  at = std::find(start, end, '%');
  store(output, {start, at});
}

// The straight road for the usual directives, with nothing between '%' and letter. False for any
// other.
bool convert_bare(OutputBuffer& output, char letter, Arguments& arguments, bool with_hex) {
  switch (letter) {
    case 's':
      store_text(output, take_text(arguments), 0, with_hex);
      return true;
    case 'd':
      store_signed(output, static_cast<std::int32_t>(take_u32(arguments)));
      return true;
    case 'u':
      store(output, decimal_digits(take_u32(arguments)));
      return true;
    case 'x':
      store(output, hex_digits(take_u32(arguments)));
      return true;
    case 'c':
      store_character(output, static_cast<char>(take_u32(arguments)), with_hex);
      return true;
    default:
      return false;
  }
}

void fetch_stars(DirectiveState& directive, Arguments& arguments) {
  if (directive.width == kStar) directive.width = static_cast<std::uint8_t>(take_u32(arguments));
  if (directive.precision == kStar) directive.precision = take_u32(arguments);
}

// False when the letter does not go with the length modifier.
bool convert(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments,
             bool with_hex) {
  const LengthModifier length = directive.length;
  switch (directive.letter) {
    case '%':
      store_byte(output, '%');
      return true;
    case 'c':
      store_character(output, static_cast<char>(take_u32(arguments)), with_hex);
      return true;
    case 's':
      store_text(output, take_text(arguments), directive.precision, with_hex);
      return true;
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'b':
    case 'p':
      if (length == LengthModifier::L && directive.letter != 'p') return false;
      convert_integer(output, directive, arguments);
      return true;
    case 'f':
    case 'F':
      if (length != LengthModifier::none && length != LengthModifier::l &&
          length != LengthModifier::L) {
        return false;
      }
      convert_double(output, directive, arguments);
      return true;
    default:
      return true;  // prints nothing and takes nothing
  }
}

// `at` stands behind the '%' of a directive. It is moved behind its letter, or to the NUL of a
// format that ends before it. False for a directive that cannot be read: `at` is where reading
// stopped.
bool convert_directive(OutputBuffer& output, const char*& at, Arguments& arguments, bool with_hex) {
  if (!convert_bare(output, *at, arguments, with_hex)) {
    DirectiveState directive;
    if (!read_directive(at, directive)) return false;
    if (directive.letter == '\0') return true;
    fetch_stars(directive, arguments);
    if (!convert(output, directive, arguments, with_hex)) return false;
  }
  ++at;
  return true;
}

}  // namespace

std::int32_t format_text(std::uint8_t with_hex, OutputBuffer& output, const char* format,
                         std::va_list arguments) {
  assert(format != nullptr && (output.bytes != nullptr || output.size == 0));
  const char* const end = format + std::strlen(format);
  const bool hex = with_hex != 0;
  for (const char* at = format;;) {
    store_literal(output, at, end);
    if (at == end) return static_cast<std::int32_t>(output.count);
    ++at;
    if (!convert_directive(output, at, arguments, hex)) {
      return static_cast<std::int32_t>(format - at);
    }
  }
}

std::int32_t format_text(std::uint8_t with_hex, char* buffer, std::uint64_t size,
                         const char* format, std::va_list arguments) {
  OutputBuffer output{buffer, size, 0};
  return format_text(with_hex, output, format, arguments);
}

std::int32_t format_into(char* buffer, const char* format, ...) {
  const std::uint64_t size = buffer != nullptr ? std::numeric_limits<std::uint64_t>::max() : 0;
  std::va_list arguments;
  va_start(arguments, format);
  const std::int32_t count = format_text(0, buffer, size, format, arguments);
  va_end(arguments);
  return count;
}

}  // namespace svcinst
