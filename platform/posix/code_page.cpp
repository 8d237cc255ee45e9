#include <iconv.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/code_page_api.h"

namespace {

struct IconvCloser {
  void operator()(iconv_t converter) const { iconv_close(converter); }
};

// The units that `text` becomes, stored in `result` unless `size` is 0. 0: no text, or too long.
template <class From, class To>
int convert(const char* from, const char* to, const From* text, int length, To* result, int size) {
  iconv_t opened = iconv_open(to, from);
  if (reinterpret_cast<std::intptr_t>(opened) == -1) return 0;
  const std::unique_ptr<void, IconvCloser> converter(opened);
  std::vector<To> units(static_cast<std::size_t>(size != 0 ? size : 4L * length));
  auto* in = reinterpret_cast<char*>(const_cast<From*>(text));
  auto* out = reinterpret_cast<char*>(units.data());
  auto in_left = static_cast<std::size_t>(length) * sizeof(From);
  auto out_left = units.size() * sizeof(To);
  if (iconv(converter.get(), &in, &in_left, &out, &out_left) != 0) return 0;
  units.resize(units.size() - out_left / sizeof(To));
  if (size != 0) std::copy(units.begin(), units.end(), result);
  return static_cast<int>(units.size());
}

}  // namespace

BOOL AreFileApisANSI() {
  return TRUE;
}

UINT ___lc_codepage_func() {
  return CP_UTF8;
}

int MultiByteToWideChar(UINT /*code_page*/, DWORD /*flags*/, LPCSTR text, int text_length,
                        LPWSTR result, int result_size) {
  return convert("UTF-8", "WCHAR_T", text, text_length, result, result_size);
}

int WideCharToMultiByte(UINT /*code_page*/, DWORD /*flags*/, LPCWSTR text, int text_length,
                        LPSTR result, int result_size, LPCSTR /*default_char*/,
                        BOOL* /*used_default_char*/) {
  return convert("WCHAR_T", "UTF-8", text, text_length, result, result_size);
}
