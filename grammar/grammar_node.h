// One node of a grammar tree. It looks into the grammar text, which must outlive the tree and stay
// as it is, and it owns its children: destroying the root frees the whole tree, however deep.
#pragma once

#include <memory>

#include "common/linked_list.h"
#include "common/text_view.h"
#include "grammar/node_type.h"

namespace svcinst {

struct GrammarNode {
  NodeType type;
  const char* begin;  // first byte of the text that the node was read from
  const char* end;    // one past its last byte
  LinkedList<std::unique_ptr<GrammarNode>> children;  // in text order

  GrammarNode(NodeType node_type, const char* text_begin, const char* text_end)
      : type(node_type), begin(text_begin), end(text_end) {}
  GrammarNode(const GrammarNode&) = delete;
  GrammarNode& operator=(const GrammarNode&) = delete;
  ~GrammarNode();
};

using GrammarNodeList = LinkedList<std::unique_ptr<GrammarNode>>;

/// A node without children over the text from `begin` up to `end`. Throws std::bad_alloc.
std::unique_ptr<GrammarNode> make_node(NodeType type, const char* begin, const char* end);

/// Gives `child` to `parent`, as its last child. Throws std::bad_alloc; `child` is then freed.
void append_child(GrammarNode& parent, std::unique_ptr<GrammarNode> child);

/// The first, second and last child; null when there is no such child.
GrammarNode* first_child(const GrammarNode& node);
GrammarNode* second_child(const GrammarNode& node);
GrammarNode* last_child(const GrammarNode& node);

/// The text of a node whose span is exact: the quoted kinds, integers and identifiers.
inline TextView text_of(const GrammarNode& node) {
  return {node.begin, node.end};
}

}  // namespace svcinst
