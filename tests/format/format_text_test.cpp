#include "format/format_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace svcinst {
namespace {

constexpr char kUntouched = '\x7E';

// Formats into a buffer of `size` bytes with some room behind; the result goes to `count`.
std::string stored(std::uint8_t with_hex, std::size_t size, std::int32_t& count, const char* format,
                   std::va_list arguments) {
  std::va_list copy;
  va_copy(copy, arguments);
  std::string bytes(size + 16, kUntouched);
  count = format_text(with_hex, bytes.data(), size, format, copy);
  va_end(copy);
  return bytes;
}

// The formatted text, behind it '!' and the result when that is negative. Fails the test when a
// smaller buffer cuts the text wrongly, when a byte behind it is touched, or when counting gives
// another result.
std::string checked(std::uint8_t with_hex, const char* format, std::va_list arguments) {
  std::va_list copy;
  va_copy(copy, arguments);
  OutputBuffer counter;
  const std::int32_t result = format_text(with_hex, counter, format, copy);
  va_end(copy);
  std::int32_t count = 0;
  const std::string whole = stored(with_hex, counter.count, count, format, arguments);
  const std::string text = whole.substr(0, counter.count);
  for (std::size_t size = 0; size <= text.size() + 9; ++size) {
    const std::size_t cut = std::min(size, text.size());
    const std::string bytes = stored(with_hex, size, count, format, arguments);
    EXPECT_EQ(count, result < 0 ? result : static_cast<std::int32_t>(cut)) << format;
    EXPECT_EQ(bytes, text.substr(0, cut) + std::string(size + 16 - cut, kUntouched)) << format;
  }
  return result < 0 ? text + '!' + std::to_string(result) : text;
}

std::string printed(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::string text = checked(0, format, arguments);
  va_end(arguments);
  return text;
}

std::string printed_with_hex(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::string text = checked(1, format, arguments);
  va_end(arguments);
  return text;
}

struct Row {
  std::string text;
  std::string expected;
};

void expect_rows(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(row.text, row.expected);
}

TEST(Directive, TakesOneFlagAndReadsTheNextAsWidthOrLetter) {
  expect_rows({{printed("%-08d|", 42), "42      |"},
               {printed("%0-8d", 42), "8d"},
               {printed("%+-3d", 42), "3d"},
               {printed("%  d", 42), "d"},
               {printed("%##x", 42), "x"},
               {printed("%00007d", 42), "0000042"},
               {printed("% 5d", 42), "   42"},
               {printed("%-5d|% d|%#d", 1, 2, 3), "1    |2|3"}});
}

TEST(Directive, WidthHasEightBitsAnd255MeansAnArgument) {
  const std::string spaces(300, ' ');
  expect_rows({{printed("%254d", 1), spaces.substr(0, 253) + "1"},
               {printed("%256d", 1), "1"},
               {printed("%300d", 1), spaces.substr(0, 43) + "1"},
               {printed("%2550d", 1), spaces.substr(0, 245) + "1"},
               {printed("%*d", 5, 7), "    7"},
               {printed("%255d", 5, 7), "    7"},
               {printed("%511d", 5, 7), "    7"},
               {printed("%*d", 255, 7), spaces.substr(0, 254) + "7"},
               {printed("%*d", -1, 7), spaces.substr(0, 254) + "7"},
               {printed("%*d", -5, 7), spaces.substr(0, 250) + "7"},
               {printed("%*d", 258, 7), " 7"},
               {printed("%-*d|", 3, 7), "7  |"},
               {printed("%*5d", 3), "d"}});
}

TEST(Directive, PrecisionHas32BitsAnd255MeansAnArgument) {
  const std::string zeros(300, '0');
  expect_rows({{printed("%.3d", 42), "42.000"},
               {printed("%.0d|%.d|%.00d", 1, 2, 3), "1|2|3"},
               {printed("%.12d", 1), "1.000000000000"},
               {printed("%.254d", 1), "1." + zeros.substr(0, 254)},
               {printed("%.256d", 1), "1." + zeros.substr(0, 256)},
               {printed("%.*d", 2, 7), "7.00"},
               {printed("%.*d", 0, 7), "7"},
               {printed("%.*d", 255, 7), "7." + zeros.substr(0, 255)},
               {printed("%.*d", 258, 7), "7." + zeros.substr(0, 258)},
               {printed("%.255d", 2, 7), "7.00"},
               {printed("%.4294967551d", 2, 7), "7.00"},
               {printed("%.4294967298d", 7), "7.00"},
               {printed("%*.*d", 8, 2, 7), "    7.00"},
               {printed("%255.255d", 8, 2, 7), "    7.00"},
               {printed("%.-3d", 7), "3d"},
               {printed("%..3d", 7), "3d"}});
}

TEST(Directive, LengthModifierNarrows) {
  constexpr std::int64_t kWide = 0x1'2345'8081'82FF;
  constexpr std::int64_t kLow = std::numeric_limits<std::int64_t>::min();
  expect_rows(
      {{printed("%hhd %hd %d %ld", kWide, kWide, kWide, kWide),
        "-1 -32001 -2138995969 -2138995969"},
       {printed("%hhu %hu %u %lu", kWide, kWide, kWide, kWide), "255 33535 2155971327 2155971327"},
       {printed("%hhx %hX %x %lx", kWide, kWide, kWide, kWide), "ff 82ff 808182ff 808182ff"},
       {printed("%lld %ji %zd %ti", kWide, kWide, kLow, kLow),
        "320256392397567 320256392397567 -9223372036854775808 -9223372036854775808"},
       {printed("%llu %ju %zx %tX", kLow, kLow, kWide, kWide),
        "9223372036854775808 9223372036854775808 12345808182ff 12345808182ff"},
       {printed("%hhb %hb", kWide, 0x8001), " 11111111  1000000000000001"},
       {printed("%lb", std::int64_t{0x1'0000'000F}), " 1111"},
       {printed("%llb", std::int64_t{1} << 32), " 000100000000000000000000000000000000"},
       {printed("%f %lf %LF", 0.5, 1.5, -2.5), "0.500000 1.500000 -2.500000"},
       {printed("%hs %Lc %lls %tp %L%", "a", 'b', "c", kWide), "a b c 00012345808182FF %"},
       {printed("%lhd %hld", 5), "d d"}});
}

TEST(Directive, NegatedOffsetOfTheCharacterWhereReadingStopped) {
  expect_rows({{printed("%5"), "!-1"},
               {printed("ab%12"), "ab!-4"},
               {printed("ab%-7"), "ab!-4"},
               {printed("%d%.5", 7), "7!-4"},
               {printed("%*.27"), "!-4"},
               {printed("%h"), "!-1"},
               {printed("x%5l"), "x!-3"},
               {printed("%Ld", 1), "!-2"},
               {printed("a%Li", 1), "a!-3"},
               {printed("%*Lu", 1, 1), "!-3"},
               {printed("%Lx", 1), "!-2"},
               {printed("%LX", 1), "!-2"},
               {printed("%Lb", 1), "!-2"},
               {printed("%hf", 1.0), "!-2"},
               {printed("%hhF", 1.0), "!-3"},
               {printed("%llf", 1.0), "!-3"},
               {printed("%jf", 1.0), "!-2"},
               {printed("%zf", 1.0), "!-2"},
               {printed("12345678%tf", 1.0), "12345678!-10"}});
}

TEST(Directive, UnfinishedAtTheEndIsDropped) {
  for (const char* format : {"a%", "a%-", "a%+", "a%0", "a%#", "a% ", "a%*", "a%.", "a%.*", "a%5.",
                             "a%hh", "a%ll", "a%L", "a%z", "a%j", "a%t", "a%*.*ll"}) {
    EXPECT_EQ(printed(format), "a") << format;
  }
}

TEST(Directive, OtherLettersPrintNothingAndTakeNoArgument) {
  for (const char* format : {"%o%d", "%e%d", "%E%d", "%a%d", "%A%d", "%g%d", "%G%d", "%n%d", "%w%d",
                             "%D%d", "%5.2o%d", "%Le%d", "%hg%d", "%\x80%d"}) {
    EXPECT_EQ(printed(format, 8, 9), "8") << format;
  }
  expect_rows({{printed("%*o%d", 8, 9), "9"},
               {printed("%.*q%d", 8, 9), "9"},
               {printed("%*.*%%d", 7, 8, 9), "%9"},
               {printed("%e%f", 1.5), "1.500000"}});
}

constexpr int kLowest = std::numeric_limits<int>::min();

TEST(FormatText, LiteralTextIsCopiedToTheNextDirective) {
  // The neighbours of '%', and bytes that are no ASCII.
  for (const std::string bytes : {"$&", "a b", "\x80\xA5\xFF", "aaaaaaa\xA4"}) {
    std::string text;
    for (int length = 0; length < 27; ++length, text += bytes[text.size() % bytes.size()]) {
      std::string format = text;
      format.append("%%").append(text).append("%u").append(text);
      std::string expected = text;
      expected.append("%").append(text).append("5").append(text);
      EXPECT_EQ(printed(format.c_str(), 5U), expected);
    }
  }
  expect_rows({{printed(""), ""}, {printed("100%"), "100"}, {printed("%d%%%s", 5, "x"), "5%x"}});
}

TEST(FormatText, IntegersWithoutFlags) {
  expect_rows(
      {{printed("%d %d %d %d", 0, 42, -42, kLowest), "0 42 -42 -2147483648"},
       {printed("%i %i %1d %1d", 0, -42, 2147483647, kLowest), "0 -42 2147483647 -2147483648"},
       {printed("%u %u %1u", 0U, 4294967295U, 4294967295U), "0 4294967295 4294967295"},
       {printed("%x %x %X %1x", 0, 255, 0xABCDEF01U, 0x10), "0 ff abcdef01 10"},
       {printed("%b %b %b", 0, 5, 0x1F), " 0000  0101  00011111"},
       {printed("%p %p", std::uint64_t{0}, std::uint64_t{0x12AB}),
        "0000000000000000 00000000000012AB"},
       {printed("%p", ~std::uint64_t{0}), "FFFFFFFFFFFFFFFF"}});
}

TEST(FormatText, WidthAndFlagsOfNumbers) {
  expect_rows(
      {{printed("%5d|%-5d|%05d|%2d", 42, 42, 42, 421), "   42|42   |00042|421"},
       {printed("%5d|%-5d|%05d|%3d|%4d", -42, -42, -42, -42, -42), "  -42|-42  |00-42|-42| -42"},
       {printed("%+d|%+5d|%+1d|%+3d|%+4d", 42, 42, 42, 42, 42), "+42|+0042|+42|+42|+042"},
       {printed("%+d|%+5d|%+1d|%+3d|%+4d", -42, -42, -42, -42, -42), "-42|-0042|-42|-42|-042"},
       {printed("%+i|%+u|%+4u|%+x|%+5X", 0, 7, 7, 255, 255), "+0|+7|+007|+ff|+00ff"},
       {printed("%5u|%-3u|%03u|%#u", 7, 7, 7, 7), "    7|7  |007|7"},
       {printed("%#x|%#6x|%#X|%#0x|%#1x|%#4x|%#5x", 255, 255, 0, 0, 255, 255, 255),
        "0xff|0x  ff|0x0|0x0|0xff|0xff|0x ff"},
       {printed("%08x|%-4x|%4X", 255, 255, 255), "000000ff|ff  |  ff"},
       {printed("%18p|%-18p|%+p|%+18p|%018p|%#p", 1LL, 1LL, 1LL, 1LL, 1LL, 1LL),
        "  0000000000000001|0000000000000001  |+0000000000000001|+00000000000000001|"
        "000000000000000001|0000000000000001"}});
}

TEST(FormatText, SignAndPrefixOfBinaryNumbersStandOutsideTheWidth) {
  expect_rows(
      {{printed("%+b|%0b|%#b|% b|%-b", 5, 5, 5, 5, 5), "+0101|00101|0b 0101| 0101| 0101"},
       {printed("%6b|%-6b|%06b|%+6b|%#6b", 5, 5, 5, 5, 5),
        "   0101| 0101  |0000101|+  0101|0b   0101"},
       {printed("%.2b|%8.2b|%-8.2b|%+08b", 5, 5, 5, 5), " 0101.00|  0101.00| 0101.00 |+    0101"}});
}

TEST(FormatText, PrecisionAppendsAFractionOfZeros) {
  expect_rows({{printed("%.2d|%8.2d|%-8.2d|%08.2d", -42, -42, -42, -42),
                "-42.00|  -42.00|-42.00  |00-42.00"},
               {printed("%+8.2d|%+8.2d|%+.1d", -42, 42, -42), "-0042.00|+0042.00|-42.0"},
               {printed("%.1u|%5.1x|%#7.1X|%.1p", 7, 255, 255, 1LL),
                "7.0| ff.0|0x ff.0|0000000000000001.0"}});
}

TEST(FormatText, FloatingPoint) {
  const double infinity = std::numeric_limits<double>::infinity();
  expect_rows(
      {{printed("%f|%F|%f", 1.5, -0.25, -0.0), "1.500000|-0.250000|-0.000000"},
       {printed("%.2f|%.2f|%.0f|%.f", 3.14159, 2.999, 2.5, 2.5), "3.14|2.99|2.500000|2.500000"},
       {printed("%.5f|%.6f|%.7f|%.8f", 1.5, 1.5, 1.5, -1.5),
        "1.50000|1.500000|1.5000000|-1.50000000"},
       {printed("%8.1f|%-8.1f|%08.1f|%08.1f|%8.1f", 1.5, 1.5, 1.5, -1.5, -1.5),
        "     1.5|1.5     |000001.5|0000-1.5|    -1.5"},
       {printed("%+f|%+f|%+f", 1.5, -1.5, -0.0), "+1.500000|-1.500000|-0.000000"},
       {printed("%+10f|%+10f|%+10f|%+1f", 1.5, -1.5, -0.0, 1.5),
        "+01.500000|-01.500000|-00.000000|+1.500000"},
       {printed("%f|%.2f|%+7f|%-5F|", infinity, -infinity, -infinity, infinity),
        "inf|-inf.00|-000inf|inf  |"},
       {printed("%+f|%+.1f|%5f|%.1f", std::abs(std::nan("")), std::abs(std::nan("")),
                std::abs(std::nan("")), 1e18),
        "+nan|+nan.0|  nan|1000000000000000000.0"}});
}

TEST(FormatText, TextsAndCharacters) {
  const char* const none = nullptr;
  expect_rows(
      {{printed("%s|%s|%.s|%.0s|%5s", "ab", none, "cd", none, none), "ab||cd||"},
       {printed("%.3s|%.*s", "abcdef", 2, "xyz"), "abc|xy"},
       {printed("%.*s", 4, "ab\0c"), std::string("ab\0c", 4)},
       {printed("%5s|%-5s|%05s|%+s|%5.1s", "ab", "ab", "ab", "ab", "ab"), "ab|ab|ab|ab|a"},
       {printed("%c%c|%5c|%-5.3c|%lc", 'A', 0, 'B', 'C', 0x144), std::string("A\0|B|C|D", 8)},
       {printed("%s\x01%c", "\x01\xFF", 0x80), "\x01\xFF\x01\x80"}});
}

TEST(FormatText, UnprintableBytesWithTheirCodes) {
  expect_rows({{printed_with_hex("%s",
                                 "a\x01"
                                 "b"),
                "a.b(610162)"},
               {printed_with_hex("%s|%s", "a\t~ \n\v\f\r", ""), "a\t~ \n\v\f\r|"},
               {printed_with_hex("%s|%1.2s|%5s", "\x08", "\x0E.", "\x1F"), ".(08)|..(0E2E)|.(1F)"},
               {printed_with_hex("%s|%.1s", "\x7F\x80\xAB\xFF", "\x7Fq"), "....(7F80ABFF)|.(7F)"},
               {printed_with_hex("%.*s", 3, "a\0b"), "a.b(610062)"},
               {printed_with_hex("%c%c%c%c%c", 'A', ' ', '~', '\t', '\r'), "A ~\t\r"},
               {printed_with_hex("%c|%c|%5c|%hc", 1, 0xFF, 0x7F, 0x80),
                "\x01(1)|\xFF(-1)|\x7F(127)|\x80(-128)"},
               {printed_with_hex("%c%c", 8, 14), "\x08(8)\x0E(14)"},
               {printed_with_hex("\x01%d%%", 5),
                "\x01"
                "5%"}});
}

TEST(FormatInto, HasNoLimitAndOnlyCountsWithoutABuffer) {
  std::array<char, 8> buffer{};
  buffer.fill('.');
  EXPECT_EQ(format_into(buffer.data(), "%s %d", "abc", 12), 6);
  EXPECT_EQ(std::string(buffer.data(), buffer.size()), "abc 12..");
  EXPECT_EQ(format_into(nullptr, "%s %d%c", "abc", 12, '\x01'), 7);
  EXPECT_EQ(format_into(nullptr, "%.1000000000u", 5U), 1000000002);
}

std::int32_t format_behind(OutputBuffer& output, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const std::int32_t result = format_text(0, output, format, arguments);
  va_end(arguments);
  return result;
}

TEST(FormatText, GoesBehindWhatTheBufferHolds) {
  std::array<char, 12> buffer{};
  OutputBuffer output{buffer.data(), buffer.size(), 0};
  EXPECT_EQ(format_behind(output, "ab%d", 12), 4);
  EXPECT_EQ(format_behind(output, "cd%5", 12), -3);
  EXPECT_EQ(output.count, 6U);
  EXPECT_EQ(format_behind(output, "%.1000000000d", 42), 12);
  EXPECT_EQ(std::string(buffer.data(), output.count), "ab12cd42.000");
}

}  // namespace
}  // namespace svcinst
