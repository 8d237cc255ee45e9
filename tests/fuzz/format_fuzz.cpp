// Any format. The values are texts and doubles, which travel apart; an integer takes the address of
// a text. Formats that would take one as a precision, or more bytes than a text has, are left out.
#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdarg>
#include <memory>
#include <regex>

#include "format/format_text.h"

using namespace svcinst;

static std::uint64_t count_of(OutputBuffer output, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  format_text(1, output, format, arguments);
  va_end(arguments);
  return output.count;
}

static std::uint64_t stored(OutputBuffer output, const char* format) {
  static char t[1000] = "caf\xE9\t\x01";
  return count_of(output, format, t, t, t, t, t, t, t, t,  //
                  -0.0, 1.5, 1e300, 5e-7, 0.9999995, -1.0 / 3, 0x1p63, HUGE_VAL);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string format(reinterpret_cast<const char*>(data), size);
  static const std::regex left_out(R"(\*|255|511|767|\d{4})");
  if (std::count(format.begin(), format.end(), '%') > 8) return 0;
  if (std::regex_search(format, left_out)) return 0;
  const std::uint64_t counted = stored({}, format.c_str());
  for (const std::uint64_t room : {counted, counted / 2}) {
    const auto block = std::make_unique<char[]>(room);
    assert(stored({block.get(), room}, format.c_str()) == room);
  }
  return 0;
}
