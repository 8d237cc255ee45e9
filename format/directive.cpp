#include "format/directive.h"

namespace svcinst {
namespace {

std::uint8_t flag_of(char character) {
  switch (character) {
    case '-':
      return kLeftFlag;
    case '+':
      return kSignFlag;
    case ' ':
      return kSpaceFlag;
    case '#':
      return kAlternateFlag;
    case '0':
      return kZeroFlag;
    default:
      return 0;
  }
}

void read_flag(const char*& at, DirectiveState& directive) {
  const std::uint8_t flag = flag_of(*at);
  if (flag == 0) return;
  directive.flags |= flag;
  ++at;
}

// Reads digits, as many as there are, behind those that `number` was made of; what does not fit is
// lost as in any unsigned arithmetic. False when the format ends with one.
template <class Unsigned>
bool read_digits(const char*& at, Unsigned& number) {
  for (; *at >= '0' && *at <= '9'; ++at) {
    number = static_cast<Unsigned>(number * 10U + static_cast<unsigned>(*at - '0'));
    if (at[1] == '\0') return false;
  }
  return true;
}

bool read_width(const char*& at, DirectiveState& directive) {
  if (*at != '*') return read_digits(at, directive.width);
  directive.width = kStar;
  ++at;
  return true;
}

bool read_precision(const char*& at, DirectiveState& directive) {
  if (*at != '.') return true;
  ++at;
  if (*at != '*') return read_digits(at, directive.precision);
  directive.precision = kStar;
  ++at;
  return true;
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

bool read_single(const char*& at, LengthModifier length, DirectiveState& directive) {
  directive.length = length;
  ++at;
  return true;
}

bool read_length(const char*& at, DirectiveState& directive) {
  switch (*at) {
    case 'h':
      return read_doubled(at, LengthModifier::h, LengthModifier::hh, directive);
    case 'l':
      return read_doubled(at, LengthModifier::l, LengthModifier::ll, directive);
    case 'L':
      return read_single(at, LengthModifier::L, directive);
    case 'z':
      return read_single(at, LengthModifier::z, directive);
    case 'j':
      return read_single(at, LengthModifier::j, directive);
    case 't':
      return read_single(at, LengthModifier::t, directive);
    default:
      return true;
  }
}

}  // namespace

bool read_directive(const char*& at, DirectiveState& directive) {
  read_flag(at, directive);
  return read_width(at, directive) && read_precision(at, directive) && read_length(at, directive);
}

}  // namespace svcinst
