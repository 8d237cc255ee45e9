#include "format/directive.h"

#include <algorithm>

#include "common/text_view.h"

namespace svcinst {
namespace {

// In the order of their bits.
constexpr TextView kFlagCharacters = "-+ #0";

void read_flag(const char*& at, DirectiveState& directive) {
  const auto* const flag = std::find(kFlagCharacters.begin(), kFlagCharacters.end(), *at);
  if (flag == kFlagCharacters.end()) return;
  const auto bit = flag - kFlagCharacters.begin();
  directive.flags = static_cast<std::uint8_t>(directive.flags | 1U << bit);
  ++at;
}

// Reads a '*' or digits, as many as there are; what does not fit is lost as in any unsigned
// arithmetic. False when the format ends with a digit.
template <class Unsigned>
bool read_number(const char*& at, Unsigned& number) {
  if (*at == '*') {
    number = kStar;
    ++at;
    return true;
  }
  for (; *at >= '0' && *at <= '9'; ++at) {
    number = static_cast<Unsigned>(number * 10U + static_cast<unsigned>(*at - '0'));
    if (at[1] == '\0') return false;
  }
  return true;
}

bool read_precision(const char*& at, DirectiveState& directive) {
  if (*at != '.') return true;
  ++at;
  return read_number(at, directive.precision);
}

// 'h' or 'l', once or twice.
bool read_doubled(const char*& at, LengthModifier once, LengthModifier twice,
                  DirectiveState& directive) {
  if (at[1] == '\0') return false;
  const bool doubled = at[1] == *at;
  directive.length = doubled ? twice : once;
  at += doubled ? 2 : 1;
  return true;
}

bool read_length(const char*& at, DirectiveState& directive) {
  switch (*at) {
    case 'h':
      return read_doubled(at, LengthModifier::h, LengthModifier::hh, directive);
    case 'l':
      return read_doubled(at, LengthModifier::l, LengthModifier::ll, directive);
    case 'L':
      directive.length = LengthModifier::L;
      break;
    case 'z':
      directive.length = LengthModifier::z;
      break;
    case 'j':
      directive.length = LengthModifier::j;
      break;
    case 't':
      directive.length = LengthModifier::t;
      break;
    default:
      return true;
  }
  ++at;
  return true;
}

}  // namespace

bool read_directive(const char*& at, DirectiveState& directive) {
  read_flag(at, directive);
  if (!read_number(at, directive.width) || !read_precision(at, directive)) return false;
  if (!read_length(at, directive)) return false;
  directive.letter = *at;
  return true;
}

}  // namespace svcinst
