#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>

#include "format/double_digits.h"
#include "format/number_text.h"

namespace svcinst {
namespace {

TEST(DoubleText, RoundsTheExactValueAndATieToTheEvenDigit) {
  const struct {
    double value;
    const char* text;
  } rows[] = {{0.0, "0.000000"},
              {-0.0, "-0.000000"},
              {0.0078125, "0.007812"},
              {0.0234375, "0.023438"},
              {-2.0078125, "-2.007812"},
              {0.9999995, "1.000000"},
              {41.9999999, "42.000000"},
              {5e-7, "0.000000"},
              {5.0000001e-7, "0.000001"},
              {1e-300, "0.000000"},
              {9007199254740993.0, "9007199254740992.000000"},
              {9223372036854774784.0, "9223372036854774784.000000"},
              {9223372036854775808.0, "9223372036854775808.000000"},
              {-1e22, "-10000000000000000000000.000000"},
              {-std::numeric_limits<double>::infinity(), "-inf"}};
  for (const auto& row : rows) EXPECT_STREQ(c_str(double_to_text(row.value)), row.text);
  EXPECT_EQ(double_to_text(std::numeric_limits<double>::lowest()).length, 317U);
}

// Bit patterns as they come; every other one is moved to where the text has digits of both kinds.
TEST(DoubleText, IsTheCLibrarysForAMillionBitPatterns) {
  constexpr int kPatterns = 1'000'000;
  constexpr std::uint64_t kExponentBits = std::uint64_t{0x7FF} << 52;
  std::mt19937_64 random(5);
  for (int i = 0; i < kPatterns; ++i) {
    std::uint64_t bits = random();
    if (i % 2 == 0) {
      const std::uint64_t exponent = 1023 - 30 + bits % 97;
      bits = (bits & ~kExponentBits) | exponent << 52;
      if (i % 4 == 0) bits &= ~std::uint64_t{0} << (20 + bits % 32);  // ties are that short
    }
    const auto value = std::bit_cast<double>(bits);
    std::array<char, 400> expected;
    const int length = std::snprintf(expected.data(), expected.size(), "%f", value);
    DoubleBuffer buffer;
    ASSERT_EQ(write_double(buffer, value),
              TextView(expected.data(), static_cast<std::size_t>(length)));
  }
}

}  // namespace
}  // namespace svcinst
