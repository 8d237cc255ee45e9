#include "format/text_conversions.h"

#include <algorithm>
#include <cstddef>

#include "common/text_view.h"
#include "format/digit_tables.h"
#include "format/number_conversions.h"

namespace svcinst {
namespace {

bool is_printable(char byte) {
  return (byte >= ' ' && byte <= '~') || (byte >= '\t' && byte <= '\r');
}

}  // namespace

void store_annotated(OutputBuffer& output, TextView text) {
  if (std::all_of(text.begin(), text.end(), is_printable)) return store(output, text);
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

}  // namespace svcinst
