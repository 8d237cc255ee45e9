#include "platform/posix/service_names.h"

#include <clocale>
#include <cstddef>
#include <cstring>
#include <cwctype>
#include <string_view>

#include "platform/posix/utf8.h"

namespace svcinst {
namespace {

constexpr std::size_t kLongestName = 256;

std::size_t length_in_utf16(std::string_view name) {
  std::size_t length = 0;
  for (; !name.empty(); ++length) {
    const char32_t code = take_code_point(name);
    if (code > 0xFFFF && code <= 0x10FFFF) ++length;
  }
  return length;
}

// The upper-case form of `code`, whatever locale the program has set.
char32_t fold(char32_t code) {
  if (code < 0x80) return code >= 'a' && code <= 'z' ? code - ('a' - 'A') : code;
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return unicode == nullptr ? code : towupper_l(code, unicode);
}

}  // namespace

bool is_service_name(const char* name) {
  return name != nullptr && name[0] != '\0' && std::strpbrk(name, "/\\") == nullptr &&
         length_in_utf16(name) <= kLongestName;
}

bool is_display_name(const char* name) {
  return name == nullptr || length_in_utf16(name) <= kLongestName;
}

int compare_names(void* /*unused*/, int left_length, const void* left, int right_length,
                  const void* right) {
  std::string_view a(static_cast<const char*>(left), static_cast<std::size_t>(left_length));
  std::string_view b(static_cast<const char*>(right), static_cast<std::size_t>(right_length));
  while (!a.empty() && !b.empty()) {
    const char32_t in_a = fold(take_code_point(a));
    const char32_t in_b = fold(take_code_point(b));
    if (in_a != in_b) return in_a < in_b ? -1 : 1;
  }
  return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

}  // namespace svcinst
