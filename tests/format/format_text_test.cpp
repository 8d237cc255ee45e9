#include "format/format_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <string>

namespace svcinst {
namespace {

using namespace std::string_literals;

constexpr char kUntouched = '~';

std::int32_t format_to(OutputBuffer& output, std::uint8_t with_hex, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::int32_t result = format_text(with_hex, output, format, arguments);
  va_end(arguments);
  return result;
}

// expected: the formatted text, behind it '!' and the result when that is negative. Also fails when
// a smaller buffer cuts the text wrongly, a byte behind it is touched, or counting differs.
template <std::uint8_t kWithHex = 0, class... Values>
void expects(const std::string& expected, const std::string& format, Values... values) {
  OutputBuffer counter;
  const std::int32_t result = format_to(counter, kWithHex, format.c_str(), values...);
  std::string text(counter.count, kUntouched);
  OutputBuffer whole{text.data(), text.size()};
  format_to(whole, kWithHex, format.c_str(), values...);
  EXPECT_EQ(result < 0 ? text + '!' + std::to_string(result) : text, expected) << format;
  for (std::size_t size = 0; size <= text.size() + 9; ++size) {
    const std::size_t cut = std::min(size, text.size());
    std::string bytes(size + 16, kUntouched);
    OutputBuffer output{bytes.data(), size};
    EXPECT_EQ(format_to(output, kWithHex, format.c_str(), values...),
              result < 0 ? result : static_cast<std::int32_t>(cut));
    EXPECT_EQ(bytes, text.substr(0, cut) + std::string(size + 16 - cut, kUntouched)) << format;
  }
}

// The format's first ten values are all `value`.
template <class Value>
void expects_of(Value value, const std::string& expected, const char* format) {
  expects(expected, format, value, value, value, value, value, value, value, value, value, value);
}

std::string many(std::size_t length, const char* byte, const char* text) {
  std::string result(length, *byte);
  return result + text;
}

TEST(Directive, OneFlagAnEightBitWidthAndA32BitPrecision) {
  expects_of(1, "1       |8d|3d|d|x|0000001|    1|1    |1|3d|3d",
             "%-08d|%0-8d|%+-3d|%  d|%##x|%00007d|% 5d|%-5d|% d|%.-3d|%..3d");
  expects_of(1, "1.000|1|1|1|1.000000000000|1.00", "%.3d|%.0d|%.d|%.00d|%.12d|%.4294967298d");
  expects_of(1, many(253, " ", "1|1") + many(43, " ", "1") + many(245, " ", "1"),
             "%254d|%256d%300d%2550d");
  expects_of(1, "1." + many(254, "0", "|1.") + many(256, "0", ""), "%.254d|%.256d");
  expects_of(2, " 2| 2| 2|2 |d", "%*d|%255d|%511d|%-*d|%*5d");
  expects_of(2, "2.00|2.00|2.00", "%.*d|%.255d|%.4294967551d");
  expects(" 7" + many(254, " ", "7") + many(254, " ", "7") + many(250, " ", "7"), "%*d%*d%*d%*d",
          258, 7, 255, 7, -1, 7, -5, 7);
  expects("7." + many(255, "0", "|7.") + many(258, "0", "|8|    7.00"), "%.*d|%.*d|%.*d|%*.*d", 255,
          7, 258, 7, 0, 8, 8, 2, 7);
}

TEST(Directive, LengthModifierNarrows) {
  constexpr std::int64_t kWide = 0x1'2345'8081'82FF;
  expects_of(kWide, "-1|-32001|-2138995969|-2138995969|255|33535|2155971327|2155971327",
             "%hhd|%hd|%d|%ld|%hhu|%hu|%u|%lu");
  expects_of(kWide, "ff|82ff|808182ff|808182ff| 11111111| 1000001011111111|00012345808182FF|%|d|d",
             "%hhx|%hX|%x|%lx|%hhb|%hb|%tp|%L%|%lhd|%hld");
  expects_of(kWide, "320256392397567|320256392397567|12345808182ff|12345808182ff",
             "%lld|%ji|%zx|%tX");
  expects_of(INT64_MIN, "-9223372036854775808|-9223372036854775808|9223372036854775808 0000|0",
             "%zd|%ti|%ju%lb|%lu");
  expects(" 000100000000000000000000000000000000|0.5|1.5|-2.5|a|b|c",
          "%llb|%.1f|%.1lf|%.1LF|%hs|%Lc|%lls", std::int64_t{1} << 32, 0.5, 1.5, -2.5, "a", 'b',
          "c");
}

TEST(Directive, ThatCannotBeReadGivesTheNegatedOffsetWhereReadingStopped) {
  const struct {
    const char *format, *expected;
  } rows[] = {{"%5", "!-1"},     {"ab%12", "ab!-4"}, {"ab%-7", "ab!-4"}, {"%d%.5", "7!-4"},
              {"%*.27", "!-4"},  {"%h", "!-1"},      {"x%5l", "x!-3"},   {"%Ld", "!-2"},
              {"a%Li", "a!-3"},  {"%*Lu", "!-3"},    {"%Lx", "!-2"},     {"%LX", "!-2"},
              {"%Lb", "!-2"},    {"%hf", "!-2"},     {"%hhF", "!-3"},    {"%llf", "!-3"},
              {"%d%jf", "7!-4"}, {"%zf", "!-2"},     {"a%tf", "a!-3"}};
  for (const auto& row : rows) expects_of(7, row.expected, row.format);
}

TEST(Directive, UnfinishedOrUnknownPrintsNothingAndTakesNothing) {
  for (const char* const rest :
       {"", "-", "+", "0", "#", " ", "*", ".", ".*", "5.", "hh", "ll", "L", "z", "j", "t", "*.*ll"})
    expects("a", "a%"s + rest);
  expects("8", "%o%e%E%a%A%g%G%n%w%D%5.2o%5:%.5:%Le%hg%\x80%d", 8, 9);
  expects("|%9|1.500000", "%*o%.*q|%*.*%%d|%e%f", 7, 8, 7, 8, 9, 1.5);
}

TEST(FormatText, LiteralTextIsCopiedToTheNextDirective) {
  // The neighbours of '%', and bytes that are no ASCII.
  for (const std::string bytes : {"$&", "a b", "\x80\xA5\xFF", "aaaaaaa\xA4"}) {
    std::string text;
    for (int length = 0; length < 27; ++length, text += bytes[text.size() % bytes.size()])
      expects(text + "%" + text + "5" + text, text + "%%" + text + "%u" + text, 5U);
  }
}

TEST(FormatText, Integers) {
  expects_of(0, "0|+0|0|0|0|0x0|0x0| 0000", "%d|%+i|%1d|%u|%x|%#X|%#0x|%b");
  expects_of(std::uint64_t{0x12AB},
             "00000000000012AB|  00000000000012AB|00000000000012AB  |+00000000000012AB|"
             "+000000000000012AB|0000000000000012AB|00000000000012AB|00000000000012AB.0",
             "%p|%18p|%-18p|%+p|%+18p|%018p|%#p|%.1p");
  expects_of(-1, "-1|4294967295|4294967295|ffffffff", "%d|%u|%1u|%X");
  expects_of(INT32_MIN, "-2147483648|-2147483648|80000000", "%i|%1d|%x");
  expects_of(42, "   42|42   |00042|42|+42|+0042|+42|+42|+042|+0042.00",
             "%5d|%-5d|%05d|%2d|%+d|%+5d|%+1d|%+3d|%+4d|%+8.2d");
  expects_of(-42, "  -42|-42  |00-42|-42| -42|-42|-0042|-42|-42|-042",
             "%5d|%-5d|%05d|%3d|%4d|%+d|%+5d|%+1d|%+3d|%+4i");
  expects_of(-42, "-42.00|  -42.00|-42.00  |00-42.00|-0042.00|-42.0",
             "%.2d|%8.2d|%-8.2d|%08.2d|%+8.2d|%+.1d");
  expects_of(255, "0xff|0x  ff|0xff|0xff|0x ff|+ff|+00ff|  ff|0x ff.0| ff.0",
             "%#x|%#6x|%#1x|%#4x|%#5X|%+x|%+5X|%4X|%#7.1X|%5.1x");
  expects_of(16, "10|000010|10  |+16|+016|   16|16 |016|16|16.0",
             "%1x|%06x|%-4x|%+u|%+4u|%5u|%-3u|%03u|%#u|%.1u");
  expects_of(~0xEDLL, "  FFFFFFFFFFFFFF12|FFFFFFFFFFFFFF12  |+FFFFFFFFFFFFFF12|+0FFFFFFFFFFFFFF12",
             "%18p|%-18p|%+p|%+18p");
  expects_of(0x12ABLL, "0000000000000012AB|00000000000012AB|00000000000012AB.0", "%018p|%#p|%.1p");
  // Sign and prefix of binary numbers stand outside the width.
  expects_of(5, " 0101|+0101|00101|0b 0101| 0101| 0101|   0101| 0101  |0000101",
             "%b|%+b|%0b|%#b|% b|%-b|%6b|%-6b|%06b");
  expects_of(0x1F, "+  00011111|0b   00011111| 00011111.00|  00011111.00| 00011111.00 ",
             "%+10b|%#10b|%.2b|%12.2b|%-12.2b");
}

TEST(FormatText, FloatingPoint) {
  expects("3.14|2.99|2.500000|-0.250000", "%.2f|%.2f|%.0f|%.F", 3.14159, 2.999, 2.5, -0.25);
  expects_of(1.5,
             "1.50000|1.500000|1.5000000|     1.5|1.5     |000001.5|+1.500000|+01.500000|+1.500000",
             "%.5f|%.6f|%.7f|%8.1f|%-8.1f|%08.1f|%+f|%+10f|%+1f");
  expects_of(-1.5, "-1.50000000|0000-1.5|    -1.5|-1.500000|-01.500000",
             "%.8f|%08.1f|%8.1f|%+f|%+10f");
  expects_of(-0.0, "-0.000000|-0.000000|-00.000000", "%f|%+f|%+10f");
  expects_of(-HUGE_VAL, "-inf|-inf.00|-000inf|-inf  ", "%f|%.2f|%+7f|%-6F");
  expects_of(std::abs(NAN), "+nan|+nan.0|  nan", "%+f|%+.1f|%5f");
}

TEST(FormatText, TextsAndCharacters) {
  const char* const none = nullptr;
  expects_of(none, "||||", "%s|%.s|%.0s|%5s|%-s");
  expects_of("abc", "abc|abc|abc|abc|abc|a|ab", "%s|%5s|%-5s|%05s|%+s|%5.1s|%.2s");
  expects("ab\0c|A\0|B|C|D\x01\xFF\x01\x80"s, "%.*s|%c%c|%5c|%-5.3c|%lc%s\x01%c", 4, "ab\0c", 'A',
          0, 'B', 'C', 0x144, "\x01\xFF", 0x80);
  // With the codes of unprintable bytes.
  expects<1>("a.b(610162)|a\t~ \n\v\f\r||.(08)|..(0E2E)|.(1F)|a.b(610062)|\x01",
             "%s|%s|%s|%s|%1.2s|%5s|%.*s|\x01", "a\1b", "a\t~ \n\v\f\r", "", "\x08", "\x0E.",
             "\x1F", 3, "a\0b");
  expects<1>("....(7F80ABFF)|.(7F)|A ~\t\r", "%s|%.1s|%c%c%c%c%c", "\x7F\x80\xAB\xFF", "\x7Fq", 'A',
             ' ', '~', '\t', '\r');
  expects<1>("\x01(1)|\xFF(-1)|\x7F(127)|\x80(-128)|\x08(8)\x0E(14)", "%c|%c|%5c|%hc|%c%c", 1, 0xFF,
             0x7F, 0x80, 8, 14);
}

TEST(FormatText, GoesBehindWhatTheBufferHoldsAndNeedsNoLimitNorBuffer) {
  std::string bytes(5000, kUntouched);
  OutputBuffer output{bytes.data(), 12};
  EXPECT_EQ(format_to(output, 0, "ab%d", 12), 4);
  EXPECT_EQ(format_to(output, 0, "cd%5"), -3);
  EXPECT_EQ(output.count, 6U);
  EXPECT_EQ(format_to(output, 0, "%.1000000000d", 42), 12);
  EXPECT_EQ(bytes.substr(0, 13), "ab12cd42.000~");
  EXPECT_EQ(format_into(bytes.data(), "%4s%.4900d%c", "abc", 12, '\x01'), 4907);
  EXPECT_EQ(bytes.substr(0, 4908), "abc12." + many(4900, "0", "\x01~"));
  EXPECT_EQ(format_into(nullptr, "%.1000000000u", 5U), 1000000002);
}

}  // namespace
}  // namespace svcinst
