// The argument cursor of a format: values are taken strictly in order, each by one call.
#pragma once

#include <cstdarg>
#include <cstdint>

namespace svcinst {

// Neither is ever defined. A template would drop the attributes that make a Windows va_list one.
extern std::va_list any_list;
auto as_passed(std::va_list list) -> decltype(list);

/// What a va_list is once it was passed to a function: a pointer to the caller's where it is an
/// array, and itself elsewhere. Unlike a va_list it can be handed on by reference everywhere, and
/// needs no copy, which a short format would wait for.
using Arguments = decltype(as_passed(any_list));

/// Narrow integers arrive promoted to 32 bits. A `long` of 64 bits may be taken as one of 32 where
/// every integer has an argument slot of 64 bits and the low half comes first, as on x86-64.
inline std::uint32_t take_u32(Arguments& arguments) {
  return va_arg(arguments, std::uint32_t);
}
inline std::uint64_t take_u64(Arguments& arguments) {
  return va_arg(arguments, std::uint64_t);
}
inline double take_double(Arguments& arguments) {
  return va_arg(arguments, double);
}
inline const char* take_text(Arguments& arguments) {
  return va_arg(arguments, const char*);
}

}  // namespace svcinst
