// One node of a grammar tree. It looks into the grammar text, which must outlive the tree and stay
// as it is, and it owns its children: destroying the root frees the whole tree, however deep.
#pragma once

#include <cassert>
#include <cstdint>
#include <memory>

#include "common/linked_list.h"
#include "common/text_view.h"
#include "grammar/node_type.h"

namespace svcinst {

struct GrammarNode;

using GrammarNodePtr = std::unique_ptr<GrammarNode>;
using GrammarNodeList = LinkedList<GrammarNodePtr>;

struct GrammarNode {
  NodeType type;
  const char* begin;         // first byte of the text that the node was read from
  const char* end;           // one past its last byte
  GrammarNodeList children;  // in text order

  GrammarNode(NodeType node_type, const char* text_begin, const char* text_end)
      : type(node_type), begin(text_begin), end(text_end) {}
  ~GrammarNode();
};

/// A node over the text from `begin` up to `end`, which takes over `children`. Throws
/// std::bad_alloc.
GrammarNodePtr make_node(NodeType type, const char* begin, const char* end,
                         GrammarNodeList children = {});

/// The first, second and last child, which must be there: the second of at least two.
inline GrammarNode& first_child(const GrammarNode& node) {
  assert(node.children.head != nullptr);
  return *node.children.head->value;
}
inline GrammarNode& second_child(const GrammarNode& node) {
  assert(node.children.head != node.children.tail);
  return *node.children.head->next->value;
}
inline GrammarNode& last_child(const GrammarNode& node) {
  assert(node.children.tail != nullptr);
  return *node.children.tail->value;
}

/// The text of a node whose span is exact: the quoted kinds, integers and identifiers.
inline TextView text_of(const GrammarNode& node) {
  return {node.begin, node.end};
}

inline bool is_integer(const GrammarNode& node) {
  return node.type == NodeType::integer_dec || node.type == NodeType::integer_hex;
}

/// The value of a decimal or hexadecimal integer node.
std::uint64_t integer_value(const GrammarNode& node);

}  // namespace svcinst
