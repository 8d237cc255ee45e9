// Any bytes as a grammar text: spans lie inside each other, references lead to rules of their name.
#include "grammar/grammar.h"
#include "grammar/reader.h"
#include "tests/fuzz/fuzz_input.h"

using namespace svcinst;

static void check_node(const GrammarNode& node, const Grammar& grammar) {
  if (is_rule_reference(node.type)) {
    const GrammarNode* const rule = grammar.rules->slots.at(value_of(node.type));
    require(text_of(first_child(*rule)) == text_of(node));
  }
  const char* at = node.begin;
  for (const auto& child : node.children) {
    require(at <= child->begin);
    check_node(*child, grammar);
    at = child->end;
  }
  require(at <= node.end);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ExactText text(as_text(data, size));
  ReadError error;
  read_grammar(text.begin(), size, error);
  require(text.begin() <= error.position && error.position <= text.end() && error.depth == 0);
  const Grammar grammar(text.view());
  if (!grammar.root) return 0;
  require(grammar.root->begin == text.begin() && grammar.root->end <= text.end());
  check_node(*grammar.root, grammar);
  return 0;
}
