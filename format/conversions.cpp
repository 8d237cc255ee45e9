#include "format/conversions.h"

#include <algorithm>
#include <cstddef>

#include "format/digit_tables.h"
#include "format/number_conversions.h"

namespace svcinst {
namespace {

bool is_printable(char byte) {
  return (byte >= ' ' && byte <= '~') || (byte >= '\t' && byte <= '\r');
}

void convert_text(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments,
                  bool with_hex) {
  const char* text = take_text(arguments);
  if (directive.precision > 0) {
    store_text(output, {text, directive.precision}, with_hex);
  } else if (text != nullptr) {
    store_text(output, text, with_hex);
  }
}

}  // namespace

void store_annotated(OutputBuffer& output, TextView text) {
  if (std::all_of(text.begin(), text.end(), is_printable)) {
    store(output, text);
    return;
  }
  for (const char byte : text) store_byte(output, is_printable(byte) ? byte : '.');
  store_byte(output, '(');
  for (const char byte : text) {
    const std::size_t code = static_cast<unsigned char>(byte);
    store(output, {&hex_byte_pairs[2 * code], 2});
  }
  store_byte(output, ')');
}

void store_character(OutputBuffer& output, char byte, bool with_hex) {
  store_byte(output, byte);
  if (!with_hex || is_printable(byte)) return;
  store_byte(output, '(');
  store_signed(output, static_cast<std::int8_t>(byte));
  store_byte(output, ')');
}

bool convert(OutputBuffer& output, char letter, const DirectiveState& directive,
             Arguments& arguments, bool with_hex) {
  const LengthModifier length = directive.length;
  switch (letter) {
    case '%':
      store_byte(output, '%');
      break;
    case 'c':
      store_character(output, static_cast<char>(take_u32(arguments)), with_hex);
      break;
    case 's':
      convert_text(output, directive, arguments, with_hex);
      break;
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'b':
      if (length == LengthModifier::L) return false;
      convert_integer(output, letter, directive, arguments);
      break;
    case 'p':
      convert_integer(output, letter, directive, arguments);
      break;
    case 'f':
    case 'F':
      if (length != LengthModifier::none && length != LengthModifier::l &&
          length != LengthModifier::L) {
        return false;
      }
      convert_double(output, directive, arguments);
      break;
    default:
      break;  // prints nothing and takes nothing
  }
  return true;
}

}  // namespace svcinst
