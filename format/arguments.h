// The argument cursor of a format: values are taken strictly in order, each by one call.
#pragma once

#include <cstdarg>
#include <cstdint>

namespace svcinst {

// Never defined. A template would drop the attributes that make a Windows va_list one.
auto as_passed(std::va_list list = nullptr) -> decltype(list);

/// What a va_list is once it was passed to a function: where it is an array, a pointer to the
/// caller's. Unlike a va_list it can be handed on by reference everywhere, and needs no copy.
using Arguments = decltype(as_passed());

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
