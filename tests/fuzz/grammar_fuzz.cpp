// Any bytes as a grammar text: spans lie inside each other, references lead to rules of their name.
#include <cassert>
#include <string>

#include "grammar/grammar.h"
#include "grammar/reader.h"

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const Grammar grammar{TextView(text)};
  if (!grammar.root) return 0;
  assert(grammar.root->begin == text.data() && grammar.root->end <= text.data() + size);
  check_node(*grammar.root, grammar);
  return 0;
}
