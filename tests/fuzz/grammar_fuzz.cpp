// Any bytes as a grammar text and, behind a NUL, an input for it. Spans of both trees lie inside
// each other; references lead to rules of their name; results follow one another and fill their
// parent.
#include <cassert>
#include <string>

#include "grammar/matcher.h"

using namespace svcinst;

static void check_node(const GrammarNode& node, const Grammar& grammar) {
  if (is_rule_reference(node.type)) {
    const GrammarNode* const rule = grammar.rules->slots.at(value_of(node.type));
    assert(text_of(first_child(*rule)) == text_of(node));
  }
  const char* at = node.begin;
  for (const auto& child : node.children) {
    assert(at <= child->begin);
    check_node(*child, grammar);
    at = child->end;
  }
  assert(at <= node.end);
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
  assert(grammar.root->begin == text.data() && grammar.root->end <= text.data() + text.size());
  check_node(*grammar.root, grammar);
  // Nothing is remembered, so a match may take exponential time. Short ones show as much.
  if (text.size() > 128 || input.size() > 12) return 0;
  const std::uint64_t remaining = input.size();
  const auto result = match(grammar.start_rule, input.data(), remaining, *grammar.rules);
  if (!result) return 0;
  assert(result->start == input.data() && result->length <= remaining);
  check_node(*result);
  return 0;
}
