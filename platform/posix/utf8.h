// Strict UTF-8, one code point at a time.
#pragma once

#include <string_view>

namespace svcinst {

/// Set in the value of a byte that belongs to no code point.
inline constexpr char32_t kNotUtf8 = 0x80000000;

/// Takes the code point at the front of `text`, which must not be empty. A byte that begins none
/// (an overlong form, a surrogate, a value above 0x10FFFF, a piece of one) is taken alone and comes
/// back with kNotUtf8 set.
char32_t take_code_point(std::string_view& text);

}  // namespace svcinst
