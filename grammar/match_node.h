// One node of a result tree: which stretch of the input a rule or a terminal matched. It looks into
// the input, which must outlive the tree, and it owns its children.
//
// The children of a node stand in the block of its vector: only a root is made and freed by itself,
// and children are given to a node by adopt only.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace svcinst {

struct MatchNode;

/// The children of a node, in input order.
struct NodeVector {
  MatchNode** items;  // slots from `count` up to `capacity` are null
  std::uint64_t count;
  std::uint64_t capacity;
};

struct MatchNode {
  std::uint16_t type;    // kAnonymousType, kTerminalType or the type of a rule's result
  const char* start;     // where the matched text begins in the input
  std::uint64_t length;  // bytes matched; 0 for an empty match
  NodeVector* children;  // owned; none in a leaf
};

/// A sequence or repetition of several results, or an empty match.
inline constexpr std::uint16_t kAnonymousType = 0;
/// Text that a terminal matched.
inline constexpr std::uint16_t kTerminalType = 1;

/// The type of the results of rule number n.
constexpr std::uint16_t rule_result_type(std::uint16_t rule_number) {
  return static_cast<std::uint16_t>(2 + rule_number);
}

struct MatchNodeDeleter {
  void operator()(MatchNode* node) const noexcept;
};

/// Owns a root. Every other node is owned by its parent, with whose vector it shares a block.
using MatchNodePtr = std::unique_ptr<MatchNode, MatchNodeDeleter>;

/// Makes copies of `children`, which take over what those own, the children of `node`, which must
/// have none. Throws std::bad_alloc; nothing is then taken over.
void adopt(MatchNode& node, std::span<const MatchNode> children);

/// Frees the children of `node`, from the last to the first, and empties it. The node itself stays.
void clear(MatchNode& node) noexcept;

}  // namespace svcinst
