#include "tests/grammar/tree_text.h"

namespace svcinst {
namespace {

bool is_exact_leaf(NodeType type) {
  return type == NodeType::sort_string || type == NodeType::quote_string ||
         type == NodeType::dquote_string || type == NodeType::any_char ||
         type == NodeType::integer_dec || type == NodeType::integer_hex;
}

// Every sequence and choice has a wrapper of each kind; the trees are readable without the words.
const char* short_name(NodeType type) {
  switch (type) {
    case NodeType::alternation:
      return "|";
    case NodeType::concatenation:
      return ",";
    case NodeType::except_terminal_string:
      return "!";
    case NodeType::range_string:
      return "~";
    default:
      return node_type_name(type);
  }
}

}  // namespace

std::string tree_text(const GrammarNode* node) {
  if (node == nullptr) return "none";
  std::string text(node->begin, node->end);
  if (node->type >= static_cast<NodeType>(kFirstRuleReference)) {
    return "#" + std::to_string(value_of(node->type) - kFirstRuleReference);
  }
  if (node->type == NodeType::identifier) return ":" + text;
  if (is_exact_leaf(node->type)) return text;
  std::string shown = short_name(node->type);
  if (node->type == NodeType::whitespace || node->type == NodeType::comment) {
    return shown + "[" + text + "]";
  }
  shown += "(";
  for (const auto* entry = node->children.head; entry != nullptr; entry = entry->next) {
    if (entry != node->children.head) shown += " ";
    shown += tree_text(entry->value.get());
  }
  return shown + ")";
}

std::string tree_text(const MatchNode* node) {
  if (node == nullptr) return "none";
  const std::string text(node->start, node->length);
  if (node->type == kTerminalType) return "'" + text + "'";
  std::string shown = std::to_string(node->type) + "(";
  for (std::uint64_t i = 0; node->children != nullptr && i < node->children->count; ++i) {
    if (i > 0) shown += " ";
    shown += tree_text(node->children->items[i]);
  }
  return shown + ")";
}

}  // namespace svcinst
