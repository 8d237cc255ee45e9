#include "grammar/match_node.h"

#include <algorithm>
#include <cassert>
#include <new>

namespace svcinst {
namespace {

// The capacity at which a vector arrives by `count` appends: when the count asked for is above the
// capacity, the capacity becomes sixteen times that count.
std::uint64_t capacity_for(std::uint64_t count) {
  std::uint64_t capacity = 0;
  while (capacity < count) capacity = 16 * (capacity + 1);
  return capacity;
}

}  // namespace

// One block, since a block for each child, mostly a leaf, would take longer than the match:
//   NodeVector | pointers to the children, capacity - count nulls | child 0 .. child count - 1
void adopt(MatchNode& node, std::vector<MatchNode>& stack, std::uint64_t count) {
  assert(node.children == nullptr && count <= stack.size());
  if (count == 0) return;
  const std::uint64_t capacity = capacity_for(count);
  void* const block =
      ::operator new(sizeof(NodeVector) + capacity * sizeof(void*) + count * sizeof(MatchNode));
  auto* const vector = new (block) NodeVector{nullptr, count, capacity};
  vector->items = new (vector + 1) MatchNode*[capacity];
  std::fill(vector->items + count, vector->items + capacity, nullptr);
  void* const places = vector->items + capacity;
  for (std::uint64_t i = count; i-- > 0; stack.pop_back())
    vector->items[i] = new (static_cast<MatchNode*>(places) + i) MatchNode(std::move(stack.back()));
  node.children = vector;
}

// A result is no deeper than the matcher went, so this may recurse.
void clear(MatchNode& node) noexcept {
  NodeVector* const vector = std::exchange(node.children, nullptr);
  while (vector != nullptr && vector->count > 0) std::destroy_at(vector->items[--vector->count]);
  ::operator delete(vector);
  node.start = nullptr;
  node.length = 0;
}

}  // namespace svcinst
