#include <gtest/gtest.h>

#include "common/byte_string.h"

namespace svcinst {
namespace {

TEST(ByteString, GrowsToTheExactSizeFirstAndToTwiceTheSizeLater) {
  ByteString text("a");
  const auto block = [&text] { return TextView(text.data, text.capacity); };
  EXPECT_EQ(block(), TextView("a\0", 2));
  resize(text, 2, 'b');
  EXPECT_EQ(block(), TextView("ab\0bbb", 6));
  resize(text, 1, 'z');
  resize(text, 5, 'c');
  EXPECT_EQ(block(), TextView("acccc\0", 6));
  EXPECT_THROW(resize(text, UINT64_MAX / 2, 'x'), std::bad_alloc);
}

TEST(ByteString, CopiesMovesAndJoins) {
  ByteString text("a");
  ByteString moved(std::move(text));
  text = 'b' + moved;  // NOLINT(bugprone-use-after-move): it must be usable
  moved = text + ByteString("c");
  text = moved;
  text = *&text;
  EXPECT_STREQ(c_str("<" + text + ">"), "<bac>");
  release(moved);
  EXPECT_TRUE(is_absent(view(moved)) && moved.length + moved.capacity == 0 && !*c_str(moved));
}

}  // namespace
}  // namespace svcinst
