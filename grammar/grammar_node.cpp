#include "grammar/grammar_node.h"

#include <utility>

namespace svcinst {

// Children go before their node, first to last. Taking them over first spares a deep tree the deep
// stack.
GrammarNode::~GrammarNode() {
  while (children.head != nullptr) {
    GrammarNodeList& below = children.head->value->children;
    if (below.head != nullptr) {
      splice_front(children, below);
    } else {
      remove_head(children);
    }
  }
}

std::unique_ptr<GrammarNode> make_node(NodeType type, const char* begin, const char* end) {
  return std::make_unique<GrammarNode>(type, begin, end);
}

void append_child(GrammarNode& parent, std::unique_ptr<GrammarNode> child) {
  append(parent.children, std::move(child));
}

GrammarNode* first_child(const GrammarNode& node) {
  return node.children.head != nullptr ? node.children.head->value.get() : nullptr;
}

GrammarNode* second_child(const GrammarNode& node) {
  const bool has_two = node.children.head != node.children.tail;
  return has_two ? node.children.head->next->value.get() : nullptr;
}

GrammarNode* last_child(const GrammarNode& node) {
  return node.children.tail != nullptr ? node.children.tail->value.get() : nullptr;
}

}  // namespace svcinst
