#include "format/number_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "format/digit_tables.h"

namespace svcinst {
namespace {

struct Row {
  ByteString text;
  TextView expected;
};

template <class Number>
constexpr Number kLowest = std::numeric_limits<Number>::min();
template <class Number>
constexpr Number kHighest = std::numeric_limits<Number>::max();

void expect_texts(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(view(row.text), row.expected);
    EXPECT_EQ(c_str(row.text)[row.text.length], '\0');
  }
}

TEST(NumberText, Decimal) {
  for (std::string digits = "9"; digits.size() < 20; digits += '7') {
    const std::uint64_t value = std::stoull(digits);
    EXPECT_EQ(view(u64_to_dec(value)), digits);
    const std::string power = "1" + std::string(digits.size() - 1, '0');
    EXPECT_EQ(view(u64_to_dec(std::stoull(power))), power);
    const std::string nines(digits.size(), '9');
    EXPECT_EQ(view(u64_to_dec(std::stoull(nines))), nines);
  }
  expect_texts({{u64_to_dec(0), "0"},
                {u64_to_dec(kHighest<std::uint64_t>), "18446744073709551615"},
                {u32_to_dec(kHighest<std::uint32_t>), "4294967295"},
                {u16_to_dec(65535), "65535"},
                {u8_to_dec(255), "255"},
                {i64_to_dec(kLowest<std::int64_t>), "-9223372036854775808"},
                {i64_to_dec(kHighest<std::int64_t>), "9223372036854775807"},
                {i32_to_dec(kLowest<std::int32_t>), "-2147483648"},
                {i32_to_dec(0), "0"},
                {i16_to_dec(-1), "-1"},
                {i16_to_dec(-32768), "-32768"},
                {i8_to_dec(-128), "-128"},
                {i8_to_dec(7), "7"}});
}

TEST(NumberText, Hexadecimal) {
  expect_texts({{u64_to_hex(0, false, false), "0"},
                {u64_to_hex(0, true, true), "00"},
                {u64_to_hex(0xABC, true, true), "0ABC"},
                {u64_to_hex(0xABC, true, false), "0abc"},
                {u64_to_hex(0xABC, false, true), "ABC"},
                {u64_to_hex(0xABCD, true, false), "abcd"},
                {u64_to_hex(0x10, true, false), "10"},
                {u64_to_hex(0x1A2C, true, false), "1a2c"},
                {u64_to_hex(0x0123456789ABCDEF, true, false), "0123456789abcdef"},
                {u64_to_hex(0xFEDCBA9876543210, false, true), "FEDCBA9876543210"},
                {u32_to_hex(0), "0"},
                {u32_to_hex(0xFFFFFFFF), "ffffffff"},
                {u16_to_hex(0x8000), "8000"},
                {u8_to_hex(255), "ff"}});
}

TEST(NumberText, BinaryAndZerosInFront) {
  expect_texts(
      {{hex_to_bin(ByteString("1f")), "00011111"},
       {hex_to_bin(ByteString("0123456789")), "0000000100100011010001010110011110001001"},
       {hex_to_bin(ByteString("abcdefABCDEF")), "101010111100110111101111101010111100110111101111"},
       {hex_to_bin(ByteString("")), ""}});
  for (const char* text : {"G", "g", "/", ":", "@", "`", "1x2", "12 ", "\xB1"}) {
    EXPECT_EQ(view(hex_to_bin(ByteString(text))), "") << text;
  }
  ByteString padded("AB");
  pad_left_zeros(padded, 0);
  EXPECT_EQ(view(padded), "AB");
  pad_left_zeros(padded, 3);
  EXPECT_STREQ(c_str(padded), "000AB");
  EXPECT_THROW(pad_left_zeros(padded, kHighest<std::uint64_t> - 2), std::bad_alloc);
  EXPECT_EQ(view(padded), "000AB");
}

TEST(DigitTables, BytePairs) {
  const TextView pairs(hex_byte_pairs.data(), hex_byte_pairs.size());
  EXPECT_EQ(pairs.substr(0, 6), "000102");
  EXPECT_EQ(pairs.substr(std::size_t{2} * 0x9A, 6), "9A9B9C");
  EXPECT_EQ(pairs.substr(506), "FDFEFF");
}

}  // namespace
}  // namespace svcinst
