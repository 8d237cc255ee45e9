// Any format string, the first line of the input, with arguments of the kinds that it asks for,
// made from the rest. Directives are read by the formatter's own reader.
#include <cstdarg>
#include <cstring>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "format/directive.h"
#include "format/format_text.h"
#include "tests/fuzz/fuzz_input.h"

namespace svcinst {
namespace {

using Value = std::variant<std::uint32_t, std::uint64_t, double, const char*>;
constexpr std::size_t kMostValues = 4;
constexpr std::uint32_t kMostZeros = 3000;

template <class T>
T take(TextView& rest) {
  T taken{};
  const std::size_t size = std::min(sizeof taken, rest.size());
  std::memcpy(&taken, rest.data(), size);
  rest.remove_prefix(size);
  return taken;
}

// The values; none of them where the format is left out: too many arguments, or too long a text.
// An integer of 64 bits serves for a shorter one too. A text for a precision has as many bytes.
bool make_values(const char* at, TextView rest, std::vector<Value>& values,
                 std::vector<ExactText>& texts) {
  for (; (at = std::strchr(at, '%')) != nullptr; ++at) {
    DirectiveState directive;
    if (!read_directive(++at, directive) || *at == '\0') break;
    if (directive.width == kStar) values.emplace_back(take<std::uint32_t>(rest));
    if (directive.precision == kStar)
      values.emplace_back(directive.precision = take<std::uint8_t>(rest));
    if (directive.precision > kMostZeros) return false;
    if (std::strchr("diuxXbpc", *at) != nullptr) values.emplace_back(take<std::uint64_t>(rest));
    if (*at == 'f' || *at == 'F') values.emplace_back(take<double>(rest));
    if (*at != 's') continue;
    std::string bytes(rest.substr(0, rest.find('\0')));
    if (directive.precision > 0) bytes.resize(directive.precision - 1, '.');
    const bool none = directive.precision == 0 && bytes.starts_with('!');
    values.emplace_back(none ? nullptr : texts.emplace_back(TextView(bytes)).begin());
  }
  return values.size() <= kMostValues;
}

std::int32_t call(std::uint8_t with_hex, OutputBuffer* output, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::int32_t count = format_text(with_hex, *output, format, arguments);
  va_end(arguments);
  return count;
}

// Passes the values as what they are, each in its turn.
template <class... Passed>
std::int32_t pass(std::uint8_t with_hex, OutputBuffer& output, const char* format,
                  const std::vector<Value>& values, Passed... passed) {
  if (sizeof...(passed) == values.size()) return call(with_hex, &output, format, passed...);
  if constexpr (sizeof...(passed) < kMostValues) {
    const auto next = [&](auto value) {
      return pass(with_hex, output, format, values, passed..., value);
    };
    return std::visit(next, values[sizeof...(passed)]);
  }
  return 0;
}

void check(std::uint8_t with_hex, const char* format, const std::vector<Value>& values) {
  OutputBuffer counter;
  const std::int32_t count = pass(with_hex, counter, format, values);
  const std::uint64_t room = counter.count;
  require(count < 0 || static_cast<std::uint64_t>(count) == room);
  std::string whole;
  for (const std::uint64_t size : {room + 5, room, room / 2, std::uint64_t{1}}) {
    const auto block = std::make_unique<char[]>(size + 1);
    OutputBuffer output{block.get(), size};
    const std::int32_t stored = pass(with_hex, output, format, values);
    require(output.count == std::min(room, size) && block[size] == '\0');
    require(stored == (count < 0 ? count : static_cast<std::int32_t>(output.count)));
    if (size > room) whole.assign(block.get(), room);
    require(whole.starts_with(TextView(block.get(), output.count)));
  }
}

}  // namespace
}  // namespace svcinst

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextView rest = as_text(data, size);
  TextView line = take_until(rest, "\n");
  const ExactText format(take_until(line, TextView("", 1)));
  std::vector<Value> values;
  std::vector<ExactText> texts;
  if (!make_values(format.begin(), rest, values, texts)) return 0;
  for (const bool with_hex : {false, true}) check(with_hex ? 1 : 0, format.begin(), values);
  return 0;
}
