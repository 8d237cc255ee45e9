// One node of a result tree: which stretch of the input a rule or a terminal matched. It looks into
// the input, which must outlive the tree, and it owns its children.
//
// The children of a node stand in the block of its vector: they are given to it by adopt only.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "common/text_view.h"

namespace svcinst {

struct MatchNode;

/// The children of a node, in input order.
struct NodeVector {
  MatchNode** items;  // slots from `count` up to `capacity` are null
  std::uint64_t count;
  std::uint64_t capacity;
};

struct MatchNode {
  std::uint16_t type;              // kAnonymousType, kTerminalType or the type of a rule's result
  const char* start;               // where the matched text begins in the input
  std::uint64_t length;            // bytes matched; 0 for an empty match
  NodeVector* children = nullptr;  // owned; none in a leaf

  MatchNode(std::uint16_t node_type, const char* begin, const char* end)
      : type(node_type), start(begin), length(static_cast<std::uint64_t>(end - begin)) {}
  MatchNode(MatchNode&& other) noexcept
      : type(other.type),
        start(other.start),
        length(other.length),
        children(std::exchange(other.children, nullptr)) {}
  ~MatchNode();
};

/// Owns a root. Every other node is owned by its parent.
using MatchNodePtr = std::unique_ptr<MatchNode>;

/// A sequence or repetition of several results, or an empty match.
inline constexpr std::uint16_t kAnonymousType = 0;
/// Text that a terminal matched.
inline constexpr std::uint16_t kTerminalType = 1;

/// The type of the results of rule number n.
constexpr std::uint16_t rule_result_type(std::uint16_t rule_number) {
  return static_cast<std::uint16_t>(2 + rule_number);
}

inline TextView text_of(const MatchNode& node) {
  return {node.start, node.length};
}

inline std::span<MatchNode* const> children_of(const MatchNode& node) {
  if (node.children == nullptr) return {};
  return {node.children->items, node.children->count};
}

/// Moves the last `count` nodes of `stack` into `node`, which must have no children. Throws
/// std::bad_alloc; nothing is then moved.
void adopt(MatchNode& node, std::vector<MatchNode>& stack, std::uint64_t count);

/// Frees the children of `node`, from the last to the first, and empties it. The node itself stays.
void clear(MatchNode& node) noexcept;

inline MatchNode::~MatchNode() {
  if (children != nullptr) clear(*this);
}

}  // namespace svcinst
