// Any format. The values are texts and doubles, which travel apart; an integer takes the address of
// a text.
#include <cmath>
#include <cstdarg>
#include <memory>
#include <regex>

#include "format/format_text.h"
#include "tests/fuzz/fuzz_input.h"

using namespace svcinst;

static std::int32_t format_list(OutputBuffer& output, int with_hex, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const auto flag = static_cast<std::uint8_t>(with_hex);
  const std::int32_t result = format_text(flag, output, format, arguments);
  va_end(arguments);
  return result;
}

static std::int32_t format_values(OutputBuffer& output, int with_hex, const char* format) {
  static char t[1000] = "caf\xE9\t\x01";
  return format_list(output, with_hex, format, t, t, t, t, t, t, t, t, -0.0, 1.5, -2.5e-6, 1e300,
                     1e-300, 9999999.9999995, -1.0 / 3, HUGE_VAL);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ExactText format(as_text(data, size));
  // Not with more values than there are, an address as a precision, or bytes behind a text's block.
  static const std::regex left_out(R"(\*|255|\d{4})");
  if (std::count(format.begin(), format.end(), '%') > 8) return 0;
  if (std::regex_search(format.begin(), left_out)) return 0;
  for (const int with_hex : {0, 1}) {
    OutputBuffer counter;
    const std::int32_t count = format_values(counter, with_hex, format.begin());
    require(count < 0 || static_cast<std::uint64_t>(count) == counter.count);
    for (const std::uint64_t room : {counter.count, counter.count / 2}) {
      const auto block = std::make_unique<char[]>(room);
      OutputBuffer output{block.get(), room};
      const std::int32_t stored = format_values(output, with_hex, format.begin());
      require(output.count == room && stored == (count < 0 ? count : static_cast<int>(room)));
    }
  }
  return 0;
}
