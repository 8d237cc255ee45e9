#include <iconv.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/code_page_api.h"

namespace {

struct IconvCloser {
  void operator()(iconv_t converter) const { iconv_close(converter); }
};

// The units that `length` units of `text` become; 0 when they don't fit into `size` of them. They
// are stored in `result` unless `size` is 0.
template <class From, class To>
int convert(const char* from, const char* to, const From* text, int length, To* result, int size) {
  iconv_t opened = iconv_open(to, from);
  if (reinterpret_cast<std::intptr_t>(opened) == -1) return 0;
  const std::unique_ptr<void, IconvCloser> converter(opened);
  std::vector<To> counted(size == 0 ? static_cast<std::size_t>(length) * 4 : 0);
  auto* in = reinterpret_cast<char*>(const_cast<From*>(text));
  auto* out = reinterpret_cast<char*>(size == 0 ? counted.data() : result);
  const auto most = (size == 0 ? counted.size() : static_cast<std::size_t>(size)) * sizeof(To);
  auto in_left = static_cast<std::size_t>(length) * sizeof(From);
  auto out_left = most;
  const std::size_t failed = iconv(converter.get(), &in, &in_left, &out, &out_left);
  return failed != 0 ? 0 : static_cast<int>((most - out_left) / sizeof(To));
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
