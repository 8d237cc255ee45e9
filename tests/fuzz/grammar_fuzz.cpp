// Any bytes as a grammar text and, behind a NUL, an input for it. References lead to rules of their
// name; results follow one another and fill their parent.
#include <cassert>
#include <string>

#include "grammar/matcher.h"

using namespace svcinst;

static void check_node(const GrammarNode& node, const Grammar& grammar) {
  if (is_rule_reference(node.type)) {
    const GrammarNode* const rule = grammar.rules->slots.at(value_of(node.type));
    assert(text_of(first_child(*rule)) == text_of(node));
  }
  for (const auto& child : node.children) check_node(*child, grammar);
}

static void check_node(const MatchNode& node) {
  const char* at = node.start;
  for (const MatchNode* child : children_of(node)) {
    assert(child->start == at && child->type != kAnonymousType);
    check_node(*child);
    at += child->length;
  }
  assert(node.children == nullptr || at == node.start + node.length);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::string text = bytes.substr(0, bytes.find('\0'));
  const std::string input = bytes.substr(std::min(text.size() + 1, size));
  const Grammar grammar{TextView(text)};
  if (!grammar.root) return 0;
  check_node(*grammar.root, grammar);
  // Nothing is remembered, so a match may take exponential time. Short ones show as much.
  if (text.size() > 128 || input.size() > 12) return 0;
  const auto result = match(grammar.start_rule, input.data(), input.size(), *grammar.rules);
  if (result) check_node(*result);
  return 0;
}
