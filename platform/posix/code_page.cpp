#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <string_view>

#include "platform/code_page_api.h"
#include "platform/posix/utf8.h"

namespace {

bool is_code_page(UINT code_page) {
  return code_page == CP_ACP || code_page == CP_OEMCP || code_page == CP_UTF8;
}

// Collects units in a result of `size`; with size 0 it only counts them.
template <class Unit>
class Result {
 public:
  Result(Unit* units, int size) : units_(units), size_(static_cast<std::size_t>(size)) {}
  bool append(const Unit* units, std::size_t count) {
    if (size_ != 0 && count > size_ - used_) return false;
    if (size_ != 0) std::copy_n(units, count, units_ + used_);
    used_ += count;
    return used_ <= INT_MAX;
  }
  [[nodiscard]] int count() const { return static_cast<int>(used_); }

 private:
  Unit* units_;
  std::size_t size_;
  std::size_t used_ = 0;
};

// Writes the UTF-8 form of `code` and returns its bytes; 0 when it has none.
std::size_t encode(char32_t code, char (&bytes)[4]) {
  if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
  if (code < 0x80) {
    bytes[0] = static_cast<char>(code);
    return 1;
  }
  const std::size_t length = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  for (std::size_t i = length - 1; i > 0; --i, code >>= 6)
    bytes[i] = static_cast<char>(0x80 | (code & 0x3F));
  bytes[0] = static_cast<char>((0xF00U >> length) | code);
  return length;
}

}  // namespace

BOOL AreFileApisANSI() {
  return TRUE;
}

UINT ___lc_codepage_func() {
  return CP_UTF8;
}

int MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR text, int text_length, LPWSTR result,
                        int result_size) {
  if (!is_code_page(code_page) || (flags & ~MB_ERR_INVALID_CHARS) != 0) return 0;
  if (text == nullptr || result_size < 0 || (result == nullptr && result_size != 0)) return 0;
  std::string_view left(
      text, text_length < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(text_length));
  Result<WCHAR> wide(result, result_size);
  while (!left.empty()) {
    const char32_t code = svcinst::take_code_point(left);
    const auto unit = static_cast<WCHAR>(code);
    if ((code & svcinst::kNotUtf8) != 0 || !wide.append(&unit, 1)) return 0;
  }
  return wide.count();
}

int WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR text, int text_length, LPSTR result,
                        int result_size, LPCSTR default_char, BOOL* used_default_char) {
  if (!is_code_page(code_page) || flags != 0) return 0;
  if (default_char != nullptr || used_default_char != nullptr) return 0;
  if (text == nullptr || result_size < 0 || (result == nullptr && result_size != 0)) return 0;
  const std::wstring_view wide(
      text, text_length < 0 ? std::wcslen(text) + 1 : static_cast<std::size_t>(text_length));
  Result<char> narrow(result, result_size);
  for (const WCHAR unit : wide) {
    char bytes[4];
    const std::size_t length = encode(static_cast<char32_t>(unit), bytes);
    if (length == 0 || !narrow.append(bytes, length)) return 0;
  }
  return narrow.count();
}
