// One node of a result tree: which stretch of the input a rule or a terminal matched. It looks into
// the input, which must outlive the tree, and it owns its children.
//
// A node with children is one block of memory: the node, its vector and the vector's items. Nodes
// are therefore made by make_match_node only and held by a MatchNodePtr, which frees a tree of any
// depth without recursion.
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

using MatchNodePtr = std::unique_ptr<MatchNode, MatchNodeDeleter>;

/// A node that owns `children`, or a leaf when there are none. Throws std::bad_alloc; the children
/// then still belong to the caller.
MatchNodePtr make_match_node(std::uint16_t type, const char* start, std::uint64_t length,
                             std::span<MatchNode* const> children);

/// Frees the children of `node`, from the last to the first, and empties it. The node itself stays.
void clear(MatchNode& node) noexcept;

}  // namespace svcinst
