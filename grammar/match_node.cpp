#include "grammar/match_node.h"

#include <algorithm>
#include <new>
#include <utility>

namespace svcinst {
namespace {

constexpr std::uint64_t kGrowthFactor = 16;

// The capacity at which a vector arrives by `count` appends: when the count asked for is above the
// capacity, the capacity becomes sixteen times that count.
std::uint64_t capacity_for(std::uint64_t count) {
  std::uint64_t capacity = 0;
  while (capacity < count) capacity = kGrowthFactor * (capacity + 1);
  return capacity;
}

MatchNode*& last_slot(NodeVector& vector) {
  return vector.items[vector.count - 1];
}

}  // namespace

// One block for the vector, its slots and, behind them, the children: most nodes are leaves, and a
// block for each would take longer than the match.
void adopt(MatchNode& node, std::span<const MatchNode> children) {
  if (children.empty()) return;
  const std::uint64_t capacity = capacity_for(children.size());
  // NOLINTNEXTLINE(bugprone-sizeof-expression): a slot is a pointer.
  const std::uint64_t slots_size = capacity * sizeof(MatchNode*);
  void* const block = ::operator new(sizeof(NodeVector) + slots_size + children.size_bytes());
  auto* const vector = new (block) NodeVector{nullptr, children.size(), capacity};
  vector->items = new (vector + 1) MatchNode*[capacity];
  auto* copy = new (vector->items + capacity) MatchNode[children.size()];
  std::copy(children.begin(), children.end(), copy);
  for (std::uint64_t i = 0; i < children.size(); ++i) vector->items[i] = copy + i;
  std::fill(vector->items + children.size(), vector->items + capacity, nullptr);
  node.children = vector;
}

void MatchNodeDeleter::operator()(MatchNode* node) const noexcept {
  clear(*node);
  delete node;
}

// The slot of a child that is entered keeps the parent's own parent, so that the way back up needs
// no stack.
void clear(MatchNode& node) noexcept {
  MatchNode* parent = nullptr;
  for (MatchNode* current = &node;;) {
    NodeVector* const vector = current->children;
    while (vector != nullptr && vector->count > 0 && last_slot(*vector)->children == nullptr) {
      --vector->count;
    }
    if (vector != nullptr && vector->count > 0) {
      MatchNode* const child = std::exchange(last_slot(*vector), parent);
      parent = std::exchange(current, child);
      continue;
    }
    ::operator delete(vector);
    current->children = nullptr;
    if (parent == nullptr) break;
    current = parent;
    parent = last_slot(*current->children);
    --current->children->count;
  }
  node.start = nullptr;
  node.length = 0;
}

}  // namespace svcinst
