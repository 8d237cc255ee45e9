// Any format string, the first line of the input, with arguments of the kinds that it asks for,
// made from the rest. What a format asks for and where one can't be read is worked out here once
// more.
#include <cctype>
#include <cstdarg>
#include <cstring>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "format/format_text.h"
#include "tests/fuzz/fuzz_input.h"

namespace svcinst {
namespace {

using Value = std::variant<std::uint32_t, std::uint64_t, double, const char*>;
constexpr std::size_t kMostValues = 4;
constexpr std::uint32_t kMostZeros = 3000;

class Plan {
 public:
  explicit Plan(TextView values) : rest_(values) {}

  std::vector<Value> values;
  std::size_t fault = 0;  // offset at which the format can't be read; 0 for none

  // False for a format that is left out: too many arguments, or too long a text.
  bool make(TextView format) {
    format_ = format;
    for (at_ = 0; at_ < format_.size(); ++at_)
      if (format_[at_] == '%' && !directive()) break;
    return values.size() <= kMostValues && !too_long_;
  }

 private:
  char now() const { return at_ < format_.size() ? format_[at_] : '\0'; }
  bool one_of(const char* set) const { return now() != '\0' && std::strchr(set, now()) != nullptr; }
  bool fail() { return fault = at_, false; }

  // False when the format ends with a digit.
  template <class Unsigned>
  bool number(Unsigned& number) {
    if (now() == '*') return number = 255, ++at_, true;
    for (; std::isdigit(static_cast<unsigned char>(now())) != 0; ++at_) {
      number = static_cast<Unsigned>(number * 10U + static_cast<unsigned>(now() - '0'));
      if (at_ + 1 == format_.size()) return fail();
    }
    return true;
  }

  // False when nothing more is to be read.
  bool directive() {
    ++at_;
    std::uint8_t width = 0;
    std::uint32_t precision = 0;
    if (one_of("-+ #0")) ++at_;
    if (!number(width)) return false;
    if (now() == '.' && (++at_, !number(precision))) return false;
    std::string length;
    if (one_of("hl") && at_ + 1 == format_.size()) return fail();
    if (one_of("hlLzjt")) length = format_[at_++];
    if ((length == "h" || length == "l") && now() == length[0]) length += format_[at_++];
    if (now() == '\0') return true;
    if (width == 255) values.emplace_back(take<std::uint32_t>());
    if (precision == 255) values.emplace_back(precision = take<std::uint8_t>());
    too_long_ |= precision > kMostZeros;
    return value(length, precision);
  }

  bool value(const std::string& length, std::uint32_t precision) {
    if (one_of("diuxXb")) {
      if (length == "L") return fail();
      const bool wide = length == "ll" || length == "j" || length == "z" || length == "t";
      wide ? values.emplace_back(take<std::uint64_t>())
           : values.emplace_back(take<std::uint32_t>());
    } else if (one_of("fF")) {
      if (!length.empty() && length != "l" && length != "L") return fail();
      values.emplace_back(take<double>());
    } else if (one_of("c")) {
      values.emplace_back(take<std::uint32_t>());
    } else if (one_of("p")) {
      values.emplace_back(take<std::uint64_t>());
    } else if (one_of("s")) {
      values.emplace_back(too_long_ ? nullptr : text(precision));
    }
    return true;
  }

  // A text with a NUL, or of `precision` bytes and without one; or none.
  const char* text(std::uint32_t precision) {
    std::string bytes(rest_.substr(0, precision != 0 ? precision : rest_.find('\0')));
    if (precision == 0 && bytes.starts_with('!')) return nullptr;
    if (precision != 0) bytes.resize(precision - 1, '.');
    if (precision != 0) return texts_.emplace_back(bytes + "\1").begin();
    return texts_.emplace_back(bytes).begin();
  }

  template <class T>
  T take() {
    T taken{};
    const std::size_t size = std::min(sizeof taken, rest_.size());
    std::memcpy(&taken, rest_.data(), size);
    rest_.remove_prefix(size);
    return taken;
  }

  TextView rest_;
  TextView format_;
  std::size_t at_ = 0;
  bool too_long_ = false;
  std::vector<ExactText> texts_;
};

struct Call {
  std::uint8_t with_hex;
  char* buffer;
  std::uint64_t size;
  const char* format;
};

std::int32_t format_call(const Call* call, ...) {
  std::va_list arguments;
  va_start(arguments, call);
  const std::int32_t count =
      format_text(call->with_hex, call->buffer, call->size, call->format, arguments);
  va_end(arguments);
  return count;
}

// Passes the values as what they are, each in its turn.
template <class... Passed>
std::int32_t pass(const Call& call, const std::vector<Value>& values, Passed... passed) {
  if (sizeof...(passed) == values.size()) return format_call(&call, passed...);
  if constexpr (sizeof...(passed) < kMostValues) {
    return std::visit([&](auto value) { return pass(call, values, passed..., value); },
                      values[sizeof...(passed)]);
  }
  return 0;
}

void check(const Plan& plan, const char* format, std::uint8_t with_hex) {
  const std::int32_t count = pass({with_hex, nullptr, 0, format}, plan.values);
  require(plan.fault == 0 ? count >= 0 : count == -static_cast<std::int32_t>(plan.fault));
  constexpr std::size_t kAll = 8192;
  std::string whole(kAll, '\xAA');
  require(pass({with_hex, whole.data(), kAll, format}, plan.values) ==
          (count < 0 ? count : std::min<std::int32_t>(count, kAll)));
  const auto room = static_cast<std::size_t>(std::max(count, 0));
  for (std::size_t size : {room, room / 2, std::size_t{1}, room + 5}) {
    if (size == 0 || size > kAll) continue;
    const auto block = std::make_unique<char[]>(size);
    std::memset(block.get(), '\xAA', size);
    const std::int32_t stored = pass({with_hex, block.get(), size, format}, plan.values);
    if (count >= 0) require(static_cast<std::size_t>(stored) == std::min(room, size));
    require(count >= 0 || stored == count);
    require(std::memcmp(block.get(), whole.data(), size) == 0);
  }
}

}  // namespace
}  // namespace svcinst

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextView rest = as_text(data, size);
  TextView line = take_until(rest, "\n");
  const ExactText format(take_until(line, TextView("", 1)));
  Plan plan(rest);
  if (!plan.make(format.view())) return 0;
  for (const bool with_hex : {false, true}) check(plan, format.begin(), with_hex ? 1 : 0);
  return 0;
}
