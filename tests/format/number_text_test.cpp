#include "format/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace svcinst {
namespace {

TEST(NumberText, Decimal) {
  EXPECT_EQ(view(u64_to_dec(UINT64_MAX)), "18446744073709551615");
  EXPECT_EQ(view(i64_to_dec(0)), "0");
  EXPECT_EQ(view(i8_to_dec(-128)), "-128");
  for (std::uint64_t power = 1; power < UINT64_MAX / 10; power *= 10) {
    EXPECT_EQ(view(u64_to_dec(power)), std::to_string(power));
    EXPECT_EQ(view(u64_to_dec(power - 1)), std::to_string(power - 1));
  }
}

TEST(NumberText, HexadecimalAndBinary) {
  EXPECT_EQ(view(u64_to_hex(0, true, false)), "00");
  EXPECT_EQ(view(u64_to_hex(0xABC, true, true)), "0ABC");
  EXPECT_EQ(view(u64_to_hex(0xFEDCBA9876543210, true, true)), "FEDCBA9876543210");
  EXPECT_EQ(view(u32_to_hex(0xABC)), "abc");
  EXPECT_EQ(view(hex_to_bin(ByteString("09afAF"))), "000010011010111110101111");
  for (const char* text : {"/", ":", "@", "G", "`", "g", "1x2"})
    EXPECT_EQ(view(hex_to_bin(ByteString(text))), "");
}

TEST(NumberText, DoublesAreWhatTheCLibraryWrites) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 200'000; ++i) {
    // Below 2^64, with so few bits behind the point that some values are ties.
    const auto mantissa = static_cast<double>(random() >> random() % 64);
    const double value = std::ldexp(mantissa, -static_cast<int>(random() % 94));
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", value);
    ASSERT_EQ(view(double_to_text(value)), expected);
  }
}

}  // namespace
}  // namespace svcinst
