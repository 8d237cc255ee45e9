// Trees written as one line of text.
#pragma once

#include <string>

#include "grammar/grammar_node.h"
#include "grammar/match_node.h"

namespace svcinst {

/// Leaves as their text, references as #n, others as TYPE(children).
inline std::string tree_text(const GrammarNode* node) {
  if (node == nullptr) return "none";
  const std::uint16_t type = value_of(node->type);
  if (is_rule_reference(node->type)) return "#" + std::to_string(rule_number(node->type));
  if (node->children.head == nullptr) return {node->begin, node->end};
  std::string children;
  for (const auto& child : node->children)
    children += (children.empty() ? "" : " ") + tree_text(child.get());
  return std::to_string(type) + "(" + children + ")";
}

/// Terminals as their text in quotes, others as TYPE(children); an empty match as TYPE().
inline std::string tree_text(const MatchNode* node) {
  if (node == nullptr) return "none";
  if (node->type == kTerminalType) return "'" + std::string(node->start, node->length) + "'";
  std::string children;
  for (std::uint64_t i = 0; node->children != nullptr && i < node->children->count; ++i)
    children += (i > 0 ? " " : "") + tree_text(node->children->items[i]);
  return std::to_string(node->type) + "(" + children + ")";
}

}  // namespace svcinst
