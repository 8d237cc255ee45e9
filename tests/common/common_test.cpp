#include <gtest/gtest.h>

#include "common/byte_string.h"
#include "common/linked_list.h"

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
  EXPECT_EQ(view(text), "acccc");
}

TEST(ByteString, CopiesMovesAndJoins) {
  ByteString text("a");
  const char* const block = text.data;
  ByteString moved(std::move(text));
  EXPECT_EQ(moved.data, block);
  text = 'b' + moved;  // NOLINT(bugprone-use-after-move): it must be usable
  moved = text + ByteString("c");
  append(moved, "d");
  moved = *&moved;
  EXPECT_STREQ(c_str("<" + moved + ">"), "<bacd>");
  moved = text;
  EXPECT_EQ(view(moved), "ba");
  release(moved);
  EXPECT_TRUE(moved.length + moved.capacity == 0 && is_absent(view(moved)) && !*c_str(moved));
}

TEST(LinkedList, KeepsItsOrderThroughEveryChange) {
  LinkedList<char> list;
  LinkedList<char> front;
  append(list, 'c');
  for (const char letter : {'x', 'a', 'b'}) append(front, letter);
  splice_front(list, front);
  splice_front(list, front);
  remove_head(list);
  append(list, 'd');
  front = LinkedList<char>(std::move(list));
  std::string letters;
  for (const char letter : front) letters += letter;
  for (auto* entry = front.tail; entry != nullptr; entry = entry->previous) letters += entry->value;
  EXPECT_EQ(letters, "abcddcba");
}

}  // namespace
}  // namespace svcinst
