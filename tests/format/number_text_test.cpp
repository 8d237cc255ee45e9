#include "format/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace svcinst {
namespace {

std::string text_of(const ByteString& text) {
  return c_str(text);
}

TEST(NumberText, Decimal) {
  EXPECT_EQ(text_of(u64_to_dec(UINT64_MAX)), "18446744073709551615");
  EXPECT_EQ(text_of(u32_to_dec(UINT32_MAX)), "4294967295");
  EXPECT_EQ(text_of(u16_to_dec(65535)), "65535");
  EXPECT_EQ(text_of(u8_to_dec(255)), "255");
  EXPECT_EQ(text_of(i64_to_dec(INT64_MIN)), "-9223372036854775808");
  EXPECT_EQ(text_of(i32_to_dec(INT32_MAX)), "2147483647");
  EXPECT_EQ(text_of(i16_to_dec(-1)), "-1");
  EXPECT_EQ(text_of(i8_to_dec(-128)), "-128");
  for (std::uint64_t power = 1; power < UINT64_MAX / 10; power *= 10) {
    EXPECT_EQ(text_of(u64_to_dec(power)), std::to_string(power));
    EXPECT_EQ(text_of(u64_to_dec(power - 1)), std::to_string(power - 1));
  }
}

TEST(NumberText, Hexadecimal) {
  EXPECT_EQ(text_of(u64_to_hex(0, false, false)), "0");
  EXPECT_EQ(text_of(u64_to_hex(0, true, false)), "00");
  EXPECT_EQ(text_of(u64_to_hex(0xABC, true, true)), "0ABC");
  EXPECT_EQ(text_of(u64_to_hex(0x123456789ABCDEF, false, false)), "123456789abcdef");
  EXPECT_EQ(text_of(u64_to_hex(0xFEDCBA9876543210, true, true)), "FEDCBA9876543210");
  EXPECT_EQ(text_of(u32_to_hex(0x10)), "10");
  EXPECT_EQ(text_of(u16_to_hex(0xF)), "f");
  EXPECT_EQ(text_of(u8_to_hex(255)), "ff");
}

TEST(NumberText, Binary) {
  EXPECT_EQ(text_of(hex_to_bin(ByteString("09af"))), "0000100110101111");
  EXPECT_EQ(text_of(hex_to_bin(ByteString("AF"))), "10101111");
  for (const char* text : {"/", ":", "@", "G", "`", "g", "1x2"})
    EXPECT_EQ(text_of(hex_to_bin(ByteString(text))), "") << text;
}

TEST(NumberText, ZerosInFront) {
  ByteString text("AB");
  pad_left_zeros(text, 3);
  EXPECT_EQ(text_of(text), "000AB");
  EXPECT_THROW(pad_left_zeros(text, UINT64_MAX - 2), std::bad_alloc);
}

TEST(NumberText, DoublesAreWhatTheCLibraryWrites) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 200'000; ++i) {
    // Below 2^64, with so few bits behind the point that some values are ties.
    const auto mantissa = static_cast<double>(random() >> random() % 64);
    const double size = std::ldexp(mantissa, -static_cast<int>(random() % 94));
    const double value = random() % 2 == 0 ? size : -size;
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", value);
    ASSERT_EQ(text_of(double_to_text(value)), expected);
  }
}

}  // namespace
}  // namespace svcinst
