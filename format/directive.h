// What stands behind the '%' of a directive, and how it is read.
#pragma once

#include <cstdint>

namespace svcinst {

/// One flag can be written in a directive; kSpaceFlag is set in every one. The bits are in the
/// order of the characters "-+ #0".
enum DirectiveFlag : std::uint8_t {
  kLeftFlag = 1,
  kSignFlag = 2,
  kSpaceFlag = 4,
  kAlternateFlag = 8,
  kZeroFlag = 16,
};

enum class LengthModifier : std::uint8_t {
  none = 0,
  l = 1,
  ll = 2,
  j = 3,
  z = 4,
  t = 5,
  L = 6,
  h = 7,
  hh = 8,
};

/// The width and the precision that mean "take it from the arguments": what '*' stands for, and
/// what the digits "255" give too.
inline constexpr std::uint8_t kStar = 255;

struct DirectiveState {
  std::uint8_t flags = kSpaceFlag;
  std::uint8_t width = 0;       // columns, modulo 256
  std::uint32_t precision = 0;  // 0: none
  LengthModifier length = LengthModifier::none;
  char letter = '\0';  // of the conversion; NUL when the format ends before it
};

inline bool has(const DirectiveState& directive, DirectiveFlag flag) {
  return (directive.flags & flag) != 0;
}

/// Reads a directive. `at` stands behind its '%'; it is moved to the letter, or to the NUL where
/// there is none. False for a format that may not end where it does; `at` is then at the last
/// character before the NUL.
bool read_directive(const char*& at, DirectiveState& directive);

}  // namespace svcinst
