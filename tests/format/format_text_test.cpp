// The formatter's limits; its rules are the examples of docs/format-strings.md, which tests/docs
// runs.
#include "format/format_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <string>

namespace svcinst {
namespace {

using namespace std::string_literals;

constexpr char kUntouched = '~';

std::int32_t format_to(OutputBuffer& output, int with_hex, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const auto flag = static_cast<std::uint8_t>(with_hex);
  const std::int32_t result = format_text(flag, output, format, arguments);
  va_end(arguments);
  return result;
}

// The text, with "error at N" behind it when the result is -N. Fails when counting alone gives
// another length, or a buffer of any size gets other bytes than the text's first, or one too many.
template <class... Values>
std::string format_with(int with_hex, const std::string& format, Values... values) {
  OutputBuffer counter;
  const std::int32_t result = format_to(counter, with_hex, format.c_str(), values...);
  std::string text(counter.count, '\0');
  OutputBuffer exact{text.data(), text.size()};
  format_to(exact, with_hex, format.c_str(), values...);
  for (std::size_t size = 0; size <= text.size() + 9; ++size) {
    std::string bytes(size + 9, kUntouched);
    OutputBuffer output{bytes.data(), size};
    const std::int32_t stored = format_to(output, with_hex, format.c_str(), values...);
    const std::string cut = text.substr(0, size);
    EXPECT_EQ(stored, result < 0 ? result : static_cast<std::int32_t>(cut.size())) << format;
    EXPECT_EQ(bytes, cut + std::string(bytes.size() - cut.size(), kUntouched)) << format;
  }
  return result < 0 ? text + "error at " + std::to_string(-result) : text;
}

template <class... Values>
std::string formatted(const std::string& format, Values... values) {
  return format_with(0, format, values...);
}

template <class... Values>
std::string with_codes(const std::string& format, Values... values) {
  return format_with(1, format, values...);
}

std::string zeros(std::size_t count) {
  return std::string(count, '0');
}

TEST(Directive, WidthHas8BitsAndPrecision32) {
  EXPECT_EQ(formatted("%0254d", 1), zeros(253) + "1");
  EXPECT_EQ(formatted("%0*d", -5, 7), zeros(250) + "7");
  EXPECT_EQ(formatted("%.256d", 1), "1." + zeros(256));
  EXPECT_EQ(formatted("%.*d", 258, 1), "1." + zeros(258));
  EXPECT_EQ(formatted("%.255d", 2, 1), "1.00");
  EXPECT_EQ(formatted("%*.*d", 6, 2, 1), "  1.00");
}

TEST(Directive, LengthThatTheLetterDoesNotAllowIsAnError) {
  for (const char letter : "diuxXb"s) EXPECT_EQ(formatted("a%L"s + letter, 1), "aerror at 3");
  for (const char letter : "fF"s) EXPECT_EQ(formatted("a%h"s + letter, 1.5), "aerror at 3");
  for (const char length : "zjt"s) EXPECT_EQ(formatted("a%"s + length + "f", 1.5), "aerror at 3");
  EXPECT_EQ(formatted("%llf", 1.5), "error at 3");
}

TEST(Directive, WithoutALetterOrWithAnUnknownOnePrintsNothing) {
  for (const char* end : {"", "-", "+", " ", "#", "0", "*", ".", "5.", ".*", "hh", "L", "z"})
    EXPECT_EQ(formatted("a%"s + end), "a") << end;
  for (const char letter : "oeEaAgGnCS\x80"s) EXPECT_EQ(formatted("%"s + letter + "%d", 8), "8");
  EXPECT_EQ(formatted("%*.*o%d", 1, 2, 8), "8");
  EXPECT_EQ(formatted("%*.*%", 1, 2), "%");
}

TEST(FormatText, CopiesLiteralTextUpToTheDirective) {
  // The neighbours of '%' and bytes that are no ASCII, at every distance from the start of a word.
  for (const std::string text : {"$&$&$&$&$&$&$&$&$&", "a b\x80\xA5\xFFgh\xA4\xA5i"})
    for (std::size_t length = 0; length <= text.size(); ++length) {
      const std::string part = text.substr(0, length);
      EXPECT_EQ(formatted(part + "%u" + part, 5), part + "5" + part);
    }
}

TEST(FormatText, Numbers) {
  EXPECT_EQ(formatted("%d", INT32_MIN), "-2147483648");
  EXPECT_EQ(formatted("%lld", INT64_MIN), "-9223372036854775808");
  EXPECT_EQ(formatted("%llu", UINT64_MAX), "18446744073709551615");
  EXPECT_EQ(formatted("%llb", UINT64_MAX), " " + std::string(64, '1'));
  EXPECT_EQ(formatted("%x", 0), "0");
  EXPECT_EQ(formatted("%+1d", 12), "+12");
  EXPECT_EQ(formatted("%+f", -0.0), "-0.000000");
  EXPECT_EQ(formatted("%+7f", -HUGE_VAL), "-000inf");
  EXPECT_EQ(formatted("%.2f", HUGE_VAL), "inf.00");
}

TEST(FormatText, TextsAndCharacters) {
  const char* const none = nullptr;
  EXPECT_EQ(formatted("<%s>", none), "<>");
  EXPECT_EQ(formatted("<%.0s>", none), "<>");
  EXPECT_EQ(formatted("%.4s", "ab\0c"), "ab\0c"s);
  EXPECT_EQ(formatted("%c", 0x100), "\0"s);
  EXPECT_EQ(formatted("%s", "\x01\xFF"), "\x01\xFF");
}

TEST(FormatText, ShowsTheCodesOfUnprintableBytes) {
  EXPECT_EQ(with_codes("%s", "\t\n\v\f\r ~"), "\t\n\v\f\r ~");
  EXPECT_EQ(with_codes("%s", "a\x01\xAB"), "a..(6101AB)");
  EXPECT_EQ(with_codes("%s", "\x08\x0E\x1F\x7F"), "....(080E1F7F)");
  EXPECT_EQ(with_codes("%.3s", "a\0b"), "a.b(610062)");
  EXPECT_EQ(with_codes("%c", 'A'), "A");
  EXPECT_EQ(with_codes("%c", 1), "\x01(1)");
  EXPECT_EQ(with_codes("%lc", 0x80), "\x80(-128)");
}

TEST(FormatText, GoesBehindWhatTheBufferHolds) {
  std::string bytes(8, kUntouched);
  OutputBuffer output{bytes.data(), 7};
  EXPECT_EQ(format_to(output, 0, "ab%d", 12), 4);
  EXPECT_EQ(format_to(output, 0, "c%5"), -2);
  EXPECT_EQ(format_to(output, 0, "%.1000000000d", 3), 7);
  EXPECT_EQ(bytes, "ab12c3.~");
}

TEST(FormatText, IntoABufferWithoutLimitOrNone) {
  std::string bytes(5000, kUntouched);
  EXPECT_EQ(format_into(bytes.data(), "%.4900d%c", 12, '\x01'), 4904);
  EXPECT_EQ(bytes.substr(0, 4905), "12." + zeros(4900) + "\x01~");
  EXPECT_EQ(format_into(nullptr, "%.1000000000u", 5), 1'000'000'002);
}

}  // namespace
}  // namespace svcinst
