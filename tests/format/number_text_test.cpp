#include "format/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

#include "format/digit_tables.h"
#include "format/double_digits.h"

namespace svcinst {
namespace {

template <class... Texts>
std::string joined(const Texts&... texts) {
  std::string all;
  (all.append(c_str(texts)).append(" "), ...);
  return all;
}

TEST(NumberText, Integers) {
  std::string power = "1";
  for (std::string nines = "9"; nines.size() < 20; nines += '9') {
    EXPECT_EQ(view(u64_to_dec(std::stoull(power))), power);
    EXPECT_EQ(view(u64_to_dec(std::stoull(nines))), nines);
    power += '0';
  }
  EXPECT_EQ(
      joined(u64_to_dec(0), u64_to_dec(UINT64_MAX), u32_to_dec(UINT32_MAX), u16_to_dec(65535),
             u8_to_dec(255), i64_to_dec(INT64_MIN), i64_to_dec(INT64_MAX), i32_to_dec(INT32_MIN),
             i32_to_dec(0), i16_to_dec(-32768), i16_to_dec(-1), i8_to_dec(-128)),
      "0 18446744073709551615 4294967295 65535 255 -9223372036854775808 9223372036854775807 "
      "-2147483648 0 -32768 -1 -128 ");
  EXPECT_EQ(joined(u64_to_hex(0, false, false), u64_to_hex(0, true, true),
                   u64_to_hex(0xABC, true, true), u64_to_hex(0xABC, false, true),
                   u64_to_hex(0x1A2C, true, false), u64_to_hex(0x0123456789ABCDEF, true, false),
                   u64_to_hex(0xFEDCBA9876543210, false, true), u32_to_hex(0xFFFFFFF),
                   u16_to_hex(0x800), u8_to_hex(8)),
            "0 00 0ABC ABC 1a2c 0123456789abcdef FEDCBA9876543210 fffffff 800 8 ");
  EXPECT_EQ(joined(hex_to_bin(ByteString("0123456789")), hex_to_bin(ByteString("abcdefAF")),
                   hex_to_bin(ByteString(""))),
            "0000000100100011010001010110011110001001 10101011110011011110111110101111  ");
  for (const char* text : {"G", "g", "/", ":", "@", "`", "1x2", "12 ", "\xB1"})
    EXPECT_EQ(view(hex_to_bin(ByteString(text))), "") << text;
  const TextView pairs(hex_byte_pairs.data(), hex_byte_pairs.size());
  EXPECT_EQ(pairs.find("9A9B9C"), 2U * 0x9A);
  EXPECT_EQ(pairs.substr(506), "FDFEFF");
}

TEST(NumberText, ZerosInFront) {
  ByteString text("AB");
  pad_left_zeros(text, 0);
  pad_left_zeros(text, 3);
  EXPECT_THROW(pad_left_zeros(text, UINT64_MAX - 2), std::bad_alloc);
  EXPECT_STREQ(c_str(text), "000AB");
}

// The exact value is rounded, and a tie to the even digit.
TEST(NumberText, Doubles) {
  std::string texts;
  for (const double value :
       {0.0078125, 0.0234375, 0.9999995, 5e-7, 5.0000001e-7, 1e-300, 0x1p53 + 2, -0x1p63})
    texts += joined(double_to_text(value));
  EXPECT_EQ(texts,
            "0.007812 0.023438 1.000000 0.000000 0.000001 0.000000 9007199254740994.000000 "
            "-9223372036854775808.000000 ");
  // Bit patterns as they come; every other one is moved to where the text has digits of both kinds.
  std::mt19937_64 random(5);
  for (int i = 0; i < 1'000'000; ++i) {
    std::uint64_t bits = random();
    if (i % 2 == 0) {
      bits = (bits & ~(std::uint64_t{0x7FF} << 52)) | (1023 - 30 + bits % 97) << 52;
      if (i % 4 == 0) bits &= ~std::uint64_t{0} << (20 + bits % 32);  // ties are that short
    }
    const auto value = std::bit_cast<double>(bits);
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", value);
    DoubleBuffer buffer;
    ASSERT_EQ(write_double(buffer, value), expected);
  }
}

}  // namespace
}  // namespace svcinst
