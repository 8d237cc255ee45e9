#include "grammar/grammar_node.h"

#include <cstdlib>
#include <utility>

namespace svcinst {

// Children go before their node, first to last. Taking over the children of one that has any spares
// a deep tree the deep stack.
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

GrammarNodePtr make_node(NodeType type, const char* begin, const char* end,
                         GrammarNodeList children) {
  auto node = std::make_unique<GrammarNode>(type, begin, end);
  node->children = std::move(children);
  return node;
}

std::uint64_t integer_value(const GrammarNode& node) {
  return std::strtoul(node.begin, nullptr, node.type == NodeType::integer_hex ? 16 : 10);
}

}  // namespace svcinst
