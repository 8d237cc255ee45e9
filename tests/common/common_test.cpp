#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "common/byte_string.h"
#include "common/linked_list.h"

namespace svcinst {
namespace {

// The block whole, as far as it is allocated, with '0' for NUL.
std::string block(const ByteString& text) {
  std::string bytes(text.data, text.capacity);
  std::replace(bytes.begin(), bytes.end(), '\0', '0');
  return bytes;
}

TEST(ByteString, GrowsToTheExactSizeFirstAndToTwiceTheSizeLater) {
  using Step = std::pair<std::uint64_t, char>;
  ByteString text;
  std::string blocks;
  for (const auto& [length, fill] : {Step(0, 'x'), {1, 'a'}, {3, 'b'}, {1, 'z'}, {4, 'c'}}) {
    resize(text, length, fill);
    blocks += block(text) + " ";
  }
  EXPECT_EQ(blocks, "0 a0aa abb0 a0b0 accc0ccccc ");
  for (const std::uint64_t length : {UINT64_MAX, UINT64_MAX / 2})
    EXPECT_THROW(resize(text, length, 'x'), std::bad_alloc);
  EXPECT_EQ(view(text), "accc");
}

TEST(ByteString, CopiesIntoItsBlockMovesWithoutCopyingAndJoins) {
  ByteString target("a long text");
  const char* const old_block = target.data;
  const ByteString nul(TextView("\0b", 2));
  target = nul;
  target = *&target;
  ByteString moved(std::move(target));
  EXPECT_STREQ(c_str(target), "");  // NOLINT(bugprone-use-after-move): it must be usable
  resize(target, 1, 'n');
  EXPECT_EQ(block(target), "n0");
  target = std::move(moved);
  EXPECT_EQ(target.data, old_block);
  EXPECT_EQ(moved.length + moved.capacity, 0U);  // NOLINT(bugprone-use-after-move)
  append(target, "");
  append(target, view('c' + nul));
  EXPECT_EQ(view(ByteString("d") + target + "e"), TextView("d\0bc\0be", 7));
  EXPECT_EQ(block("c" + nul), "c0b0");
  release(target);
  EXPECT_TRUE(is_absent(view(target)) && !is_absent("") && target.length + target.capacity == 0);
}

// The values from head to tail, after checking that they are the same ones backwards.
std::string values(const LinkedList<char>& list) {
  std::string forwards;
  std::string backwards;
  for (const char letter : list) forwards += letter;
  for (auto* entry = list.tail; entry != nullptr; entry = entry->previous)
    backwards.insert(0, 1, entry->value);
  EXPECT_EQ(forwards, backwards);
  return forwards;
}

TEST(LinkedList, KeepsItsOrderThroughEveryChange) {
  LinkedList<char> list;
  LinkedList<char> other;
  for (const char* letters : {"", "bc", "a"}) {
    for (; *letters != '\0'; ++letters) append(other, *letters);
    splice_front(list, other);
    EXPECT_EQ(values(other), "");
  }
  LinkedList<char> moved(std::move(list));
  EXPECT_EQ(values(list) + values(moved), "abc");  // NOLINT(bugprone-use-after-move)
  other = std::move(moved);
  for (const char* left : {"bc", "c", ""}) {
    remove_head(other);
    EXPECT_EQ(values(other), left);
  }
}

}  // namespace
}  // namespace svcinst
