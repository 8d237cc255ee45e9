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

// The block of a node with children, in front of its items.
struct ParentNode {
  MatchNode node;
  NodeVector children;
};

static_assert(sizeof(ParentNode) % alignof(MatchNode*) == 0, "the items stand right behind");

MatchNode*& last_slot(MatchNode& node) {
  return node.children->items[node.children->count - 1];
}

bool has_children(const MatchNode& node) {
  return node.children != nullptr && node.children->count > 0;
}

}  // namespace

MatchNodePtr make_match_node(std::uint16_t type, const char* start, std::uint64_t length,
                             std::span<MatchNode* const> children) {
  if (children.empty()) {
    return MatchNodePtr(new (::operator new(sizeof(MatchNode)))
                            MatchNode{type, start, length, nullptr});
  }
  const std::uint64_t capacity = capacity_for(children.size());
  void* const block = ::operator new(sizeof(ParentNode) + capacity * sizeof(MatchNode*));
  auto* const parent = new (block) ParentNode{{type, start, length, nullptr}, {}};
  auto** const items = new (parent + 1) MatchNode*[capacity];
  std::fill(std::copy(children.begin(), children.end(), items), items + capacity, nullptr);
  parent->children = {items, children.size(), capacity};
  parent->node.children = &parent->children;
  return MatchNodePtr(&parent->node);
}

// On the way down, the slot of the child that is entered keeps the parent's own parent, so that the
// way back up needs no stack.
void MatchNodeDeleter::operator()(MatchNode* node) const noexcept {
  MatchNode* parent = nullptr;
  for (;;) {
    if (has_children(*node)) {
      MatchNode* const child = std::exchange(last_slot(*node), parent);
      parent = std::exchange(node, child);
      continue;
    }
    ::operator delete(node);
    if (parent == nullptr) return;
    node = parent;
    parent = last_slot(*node);
    --node->children->count;
  }
}

void clear(MatchNode& node) noexcept {
  while (has_children(node)) {
    MatchNodeDeleter()(last_slot(node));
    --node.children->count;
  }
  node.children = nullptr;
  node.start = nullptr;
  node.length = 0;
}

}  // namespace svcinst
