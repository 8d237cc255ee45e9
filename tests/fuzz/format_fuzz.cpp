// Any format. The values are texts and doubles, which travel apart; an integer takes the address of
// a text. Formats that would take one as a precision, or more bytes than a text has, are left out.
#include <cmath>
#include <cstdarg>
#include <memory>
#include <regex>

#include "format/format_text.h"
#include "tests/fuzz/fuzz_input.h"

using namespace svcinst;

static std::uint64_t count_of(OutputBuffer output, int with_hex, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  format_text(static_cast<std::uint8_t>(with_hex), output, format, arguments);
  va_end(arguments);
  return output.count;
}

static std::uint64_t stored(OutputBuffer output, int with_hex, const char* format) {
  static char t[1000] = "caf\xE9\t\x01";
  return count_of(output, with_hex, format, t, t, t, t, t, t, t, t,  //
                  -0.0, 1.5, 1e300, 5e-7, 0.9999995, -1.0 / 3, 0x1p63, HUGE_VAL);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ExactText format(as_text(data, size));
  static const std::regex left_out(R"(\*|255|511|767|\d{4})");
  if (std::count(format.begin(), format.end(), '%') > 8) return 0;
  if (std::regex_search(format.begin(), left_out)) return 0;
  for (const int with_hex : {0, 1}) {
    const std::uint64_t counted = stored({}, with_hex, format.begin());
    for (const std::uint64_t room : {counted, counted / 2}) {
      const auto block = std::make_unique<char[]>(room);
      require(stored({block.get(), room}, with_hex, format.begin()) == room);
    }
  }
  return 0;
}
