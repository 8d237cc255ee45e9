#include "common/linked_list.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace svcinst {
namespace {

// The values from head to tail, after checking that the links backwards are the same ones.
std::vector<int> values(const LinkedList<int>& list) {
  std::vector<int> found;
  const LinkedListEntry<int>* previous = nullptr;
  for (const auto* entry = list.head; entry != nullptr; entry = entry->next) {
    EXPECT_EQ(entry->previous, previous);
    previous = entry;
    found.push_back(entry->value);
  }
  EXPECT_EQ(list.tail, previous);
  return found;
}

TEST(LinkedList, KeepsItsOrderThroughEveryChange) {
  LinkedList<int> list;
  LinkedList<int> other;
  splice_back(list, other);
  EXPECT_EQ(values(list), std::vector<int>());
  append(other, 1);
  append(other, 2);
  splice_back(list, other);
  EXPECT_EQ(values(other), std::vector<int>());
  append(other, 3);
  splice_back(list, other);
  EXPECT_EQ(values(list), (std::vector<int>{1, 2, 3}));
  remove_head(list);
  LinkedList<int> moved(std::move(list));
  EXPECT_EQ(values(moved), (std::vector<int>{2, 3}));
  other = std::move(moved);
  remove_head(other);
  EXPECT_EQ(values(other), (std::vector<int>{3}));
  remove_head(other);
  EXPECT_EQ(values(other), std::vector<int>());
}

}  // namespace
}  // namespace svcinst
