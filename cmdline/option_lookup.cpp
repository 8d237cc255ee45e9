#include "cmdline/option_lookup.h"

#include <algorithm>

#include "cmdline/command_line_grammar.h"

namespace svcinst {
namespace {

// The name of an option node without its dashes; absent when the node has none.
TextView option_name(const MatchNode& option) {
  const auto parts = children_of(option);
  if (parts.empty()) return {};
  const auto name_parts = children_of(*parts[0]);
  if (name_parts.empty()) return {};
  const std::uint64_t dashes = name_parts[0]->length == 1 ? 1 : 2;
  const TextView name = text_of(*parts[0]);
  return name.substr(std::min(dashes, name.size()));
}

const MatchNode* find_option(const Grammar& grammar, TextView name) {
  if (!grammar.result) return nullptr;
  LinkedList<const MatchNode*> options;
  collect_nodes_of_type(*grammar.result, kParamAndValueType, options);
  for (const MatchNode* option : options) {
    const TextView found = option_name(*option);
    if (!is_absent(found) && found == name) return option;
  }
  return nullptr;
}

// The node that holds the option's value; null when it has none. One `=` or one space may stand
// between name and value; what follows that, unless it is an option itself, is the value.
const MatchNode* value_node(const MatchNode& option) {
  auto candidates = children_of(option);
  if (candidates.size() < 2) return nullptr;
  candidates = candidates.subspan(1);
  const TextView separator = text_of(*candidates[0]);
  if (separator == "=" || separator == " ") candidates = candidates.subspan(1);
  const auto value = std::find_if(candidates.begin(), candidates.end(), [](const MatchNode* node) {
    return node->type != kParamAndValueType;
  });
  return value != candidates.end() ? *value : nullptr;
}

}  // namespace

void collect_nodes_of_type(const MatchNode& node, std::uint16_t type,
                           LinkedList<const MatchNode*>& list) {
  for (const MatchNode* child : children_of(node)) {
    if (child->type == type) append(list, child);
    collect_nodes_of_type(*child, type, list);
  }
}

bool has_option(const Grammar& grammar, TextView name) {
  return find_option(grammar, name) != nullptr;
}

bool get_option_value(const Grammar& grammar, TextView name, TextView& value) {
  const MatchNode* const option = find_option(grammar, name);
  if (option == nullptr) return false;
  const MatchNode* const node = value_node(*option);
  if (node == nullptr) return true;
  const TextView text = text_of(*node);
  value = text.substr(std::min(text.find_first_not_of(' '), text.size()));
  return true;
}

}  // namespace svcinst
