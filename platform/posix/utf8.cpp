#include "platform/posix/utf8.h"

#include <cstddef>

namespace svcinst {
namespace {

// The bytes of a code point that begins with `lead`; 0 when none does.
std::size_t sequence_length(char32_t lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC0 || lead > 0xF7) return 0;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

}  // namespace

char32_t take_code_point(std::string_view& text) {
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};  // by length: below is overlong
  const char32_t lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = sequence_length(lead);
  bool valid = length != 0 && length <= text.size();
  char32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; valid && i < length; ++i) {
    const char32_t next = static_cast<unsigned char>(text[i]);
    valid = (next & 0xC0) == 0x80;
    code = code << 6 | (next & 0x3F);
  }
  valid = valid && code >= kLeast[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  text.remove_prefix(valid ? length : 1);
  return valid ? code : lead | kNotUtf8;
}

}  // namespace svcinst
