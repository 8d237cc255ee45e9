#include "grammar/match_node.h"

#include <algorithm>
#include <new>

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

}  // namespace

// One block for the vector, its slots and, behind them, the children: most nodes are leaves, and a
// block for each would take longer than the match.
void adopt(MatchNode& node, std::span<const MatchNode> children) {
  if (children.empty()) return;
  const std::uint64_t capacity = capacity_for(children.size());
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

// Results are nested as deep as a match may go, and no deeper.
void clear(MatchNode& node) noexcept {
  if (node.children != nullptr) {
    for (std::uint64_t i = node.children->count; i > 0; --i) clear(*node.children->items[i - 1]);
    ::operator delete(node.children);
  }
  node.children = nullptr;
  node.start = nullptr;
  node.length = 0;
}

}  // namespace svcinst
