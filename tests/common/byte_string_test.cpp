#include "common/byte_string.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <string>
#include <utility>

namespace svcinst {
namespace {

// The block whole, as far as it is allocated, with '0' for NUL.
std::string block(const ByteString& text) {
  std::string bytes(text.data, text.capacity);
  for (char& c : bytes) c = c == '\0' ? '0' : c;
  return bytes;
}

TEST(ByteString, GrowsToTheExactSizeFirstAndToTwiceTheSizeLater) {
  ByteString text;
  EXPECT_EQ(text.data, nullptr);
  resize(text, 0, 'x');
  EXPECT_EQ(block(text), "0");
  resize(text, 1, 'a');
  EXPECT_EQ(block(text), "a0aa");
  resize(text, 3, 'b');
  EXPECT_EQ(block(text), "abb0");
  resize(text, 1, 'z');
  EXPECT_EQ(block(text), "a0b0");
  resize(text, 4, 'c');
  EXPECT_EQ(block(text), "accc0ccccc");
  EXPECT_EQ(text.length, 4U);
}

TEST(ByteString, RefusesLengthsThatNoBlockCanHave) {
  ByteString text("abc");
  for (const std::uint64_t length :
       {std::numeric_limits<std::uint64_t>::max(), std::numeric_limits<std::uint64_t>::max() / 2}) {
    EXPECT_THROW(resize(text, length, 'x'), std::bad_alloc);
  }
  EXPECT_EQ(view(text), "abc");
}

TEST(ByteString, CopiesIntoItsBlockWhenTheyFitAndMovesWithoutCopying) {
  ByteString target("a long text");
  const char* const old_block = target.data;
  const ByteString source("short");
  target = source;
  EXPECT_EQ(view(target), "short");
  EXPECT_EQ(target.data, old_block);
  target = *&target;
  EXPECT_EQ(view(target), "short");

  ByteString moved(std::move(target));
  EXPECT_EQ(moved.data, old_block);
  EXPECT_STREQ(c_str(target), "");  // NOLINT(bugprone-use-after-move): it must be usable
  target = std::move(moved);
  EXPECT_EQ(target.data, old_block);
  release(target);
  EXPECT_EQ(target.data, nullptr);
  resize(target, 1, 'n');
  EXPECT_EQ(block(target), "n0");
  const ByteString copy(target);
  EXPECT_EQ(block(copy), "n0");
}

TEST(ByteString, JoinsPiecesWithTheirNuls) {
  const ByteString nul(TextView("\0b", 2));
  EXPECT_EQ(view(ByteString("a") + nul), TextView("a\0b", 3));
  EXPECT_EQ(view('a' + nul), TextView("a\0b", 3));
  EXPECT_EQ(view(nul + "c"), TextView("\0bc", 3));
  EXPECT_EQ(view("c" + nul), TextView("c\0b", 3));
  ByteString text("x");
  append(text, view(nul));
  append(text, "");
  EXPECT_EQ(view(text), TextView("x\0b", 3));
  EXPECT_EQ(text.data[3], '\0');
  EXPECT_TRUE(is_absent(TextView()));
  EXPECT_FALSE(is_absent(TextView("")));
}

}  // namespace
}  // namespace svcinst
