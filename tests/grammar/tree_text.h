// Trees written as one line of text.
#pragma once

#include <string>

#include "grammar/grammar.h"

namespace svcinst {

/// Leaves as their text, other nodes as kind(children), references as #number. An alternation or a
/// concatenation of one is left out.
inline std::string tree_text(const GrammarNode& node) {
  if (is_rule_reference(node.type)) return "#" + std::to_string(rule_number(node.type));
  std::string children;
  for (const auto& child : node.children) children += " " + tree_text(*child);
  if (children.empty()) return std::string(text_of(node));
  children.erase(0, 1);
  const bool is_list = node.type == NodeType::alternation || node.type == NodeType::concatenation;
  if (is_list && node.children.head == node.children.tail) return children;
  return std::string(node_type_name(node.type)) + "(" + children + ")";
}

/// Terminals as their text in quotes, other nodes as name(children) with the name of the rule, or
/// "..." where there is none.
inline std::string tree_text(const MatchNode& node, const Grammar& grammar) {
  if (node.type == kTerminalType) return "'" + std::string(text_of(node)) + "'";
  std::string children;
  for (const MatchNode* child : children_of(node)) children += " " + tree_text(*child, grammar);
  if (!children.empty()) children.erase(0, 1);
  TextView name = "...";
  for (std::uint16_t number = 0; const auto& rule : grammar.root->children)
    if (node.type == rule_result_type(number++)) name = text_of(first_child(*rule));
  return std::string(name) + "(" + children + ")";
}

}  // namespace svcinst
