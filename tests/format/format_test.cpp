// docs/format-strings.md, limits, and numbers as texts.
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <random>
#include <variant>

#include "format/format_text.h"
#include "format/number_text.h"
#include "tests/support/examples.h"

using namespace svcinst;
using namespace std::string_literals;

constexpr std::uint8_t kShowCodes = 1;

std::int32_t format_to(OutputBuffer& output, std::uint8_t with_hex, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::int32_t result = format_text(with_hex, output, format, arguments);
  va_end(arguments);
  return result;
}

// The text, with "error at N" behind it when the result is -N. Fails when counting alone gives
// another length, or a buffer of any size gets other bytes than the text's first, or one too many.
template <std::uint8_t kWithHex = 0, class... Values>
std::string formatted(const std::string& format, Values... values) {
  OutputBuffer counter;
  const std::int32_t result = format_to(counter, kWithHex, format.c_str(), values...);
  std::string text(counter.count, '\0');
  OutputBuffer exact{text.data(), text.size()};
  format_to(exact, kWithHex, format.c_str(), values...);
  for (std::size_t size = 0; size <= text.size() + 9; ++size) {
    std::string bytes(size + 9, '~');
    OutputBuffer output{bytes.data(), size};
    const std::int32_t stored = format_to(output, kWithHex, format.c_str(), values...);
    const std::string cut = text.substr(0, size);
    EXPECT_EQ(stored, result < 0 ? result : static_cast<std::int32_t>(cut.size())) << format;
    EXPECT_EQ(bytes, cut + std::string(bytes.size() - cut.size(), '~')) << format;
  }
  return result < 0 ? text + "error at " + std::to_string(-result) : text;
}

std::variant<int, long long, double, const char*> argument_of(std::string& text) {
  if (text.ends_with('"')) {
    text.back() = '\0';
    return text.c_str() + 1;
  }
  if (text.find('.') != std::string::npos) return std::stod(text);
  if (text.ends_with("LL")) return std::stoll(text);
  return std::stoi(text);
}

std::string example(const std::string& format, const std::string& arguments) {
  std::vector<std::string> texts = texts_of(arguments);
  texts.resize(2, "0");  // more than the format asks for do no harm
  const auto call = [&format](const auto& first, const auto& second) {
    return formatted(text_of(format), first, second);
  };
  const std::string text = std::visit(call, argument_of(texts[0]), argument_of(texts[1]));
  const std::size_t error = text.find("error at");
  return error == std::string::npos ? text : text.substr(error);
}

TEST(FormatText, DoesWhatThePageShows) {
  check_examples("format-strings.md", "format", example);
}

TEST(Directive, WidthHas8BitsAndPrecision32) {
  EXPECT_EQ(formatted("%0254d", 1), std::string(253, '0') + "1");
  EXPECT_EQ(formatted("%0*d", -5, 7), std::string(250, '0') + "7");
  EXPECT_EQ(formatted("%.256d", 1), "1." + std::string(256, '0'));
  EXPECT_EQ(formatted("%*.*d", 6, 258, 1), "1." + std::string(258, '0'));
}

TEST(FormatText, CopiesLiteralTextUpToTheDirective) {
  // The neighbours of '%' and bytes that are no ASCII, at every place of a word and every length.
  std::string text = "$&$&$&$&$&$&$&$&a b\x80\xA5\xFFgh\xA4\xA5i$&$&$&$&$&";
  for (; !text.empty(); text.pop_back())
    EXPECT_EQ(formatted(text + "%u" + text, 5), text + "5" + text);
}

TEST(FormatText, TakesTextsByTheirPointerAndLength) {
  EXPECT_EQ(formatted("<%s>", static_cast<const char*>(nullptr)), "<>");
  EXPECT_EQ(formatted("%.4s", "ab\0c"), "ab\0c"s);
  EXPECT_EQ(formatted("%c", 0x100), "\0"s);
}

TEST(FormatText, ShowsTheCodesOfUnprintableBytes) {
  EXPECT_EQ(formatted<kShowCodes>("%s", "\t\n\v\f\r ~"), "\t\n\v\f\r ~");
  EXPECT_EQ(formatted<kShowCodes>("%s", "a\x08\x0E\x1F\x7F\xCD"), "a.....(61080E1F7FCD)");
  EXPECT_EQ(formatted<kShowCodes>("%c", 1), "\x01(1)");
  EXPECT_EQ(formatted<kShowCodes>("%lc", 0x80), "\x80(-128)");
}

TEST(NumberText, IntegersOfEachWidthInEachRadix) {
  const std::pair<ByteString, TextView> rows[] = {
      {u64_to_dec(UINT64_MAX), "18446744073709551615"},
      {u32_to_dec(UINT32_MAX), "4294967295"},
      {u16_to_dec(UINT16_MAX), "65535"},
      {u8_to_dec(UINT8_MAX), "255"},
      {i64_to_dec(INT64_MIN), "-9223372036854775808"},
      {i32_to_dec(INT32_MIN), "-2147483648"},
      {i16_to_dec(INT16_MIN), "-32768"},
      {i8_to_dec(INT8_MIN), "-128"},
      {u64_to_hex(0, true, false), "00"},
      {u64_to_hex(0xABC, true, true), "0ABC"},
      {u64_to_hex(0xFEDCBA9876543210, true, true), "FEDCBA9876543210"},
      {u32_to_hex(0xABCDEF01), "abcdef01"},
      {u16_to_hex(0xAB), "ab"},
      {u8_to_hex(0), "0"},
      {hex_to_bin(ByteString("09afAF")), "000010011010111110101111"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(c_str(text), expected);
  for (std::uint64_t power = 1; power < UINT64_MAX / 10; power *= 10) {
    EXPECT_EQ(view(u64_to_dec(power)), std::to_string(power));
    EXPECT_EQ(view(u64_to_dec(power - 1)), std::to_string(power - 1));
  }
  for (const char* text : {"/", ":", "@", "G", "`", "g", "1x2"})
    EXPECT_EQ(view(hex_to_bin(ByteString(text))), "");
  ByteString padded("ABCD");
  pad_left_zeros(padded, 3);
  EXPECT_EQ(view(padded), "000ABCD");
}

TEST(NumberText, DoublesAreWhatTheCLibraryWrites) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 200'000; ++i) {
    // With so few bits behind the point that some values are ties.
    const auto mantissa = static_cast<double>(random() >> random() % 64);
    const double value = std::ldexp(mantissa, 20 - static_cast<int>(random() % 114));
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", value);
    ASSERT_EQ(view(double_to_text(value)), expected);
  }
}
