// Any bytes as a grammar text: through the reader, and through the resolution of its rule names.
#include "grammar/grammar.h"
#include "grammar/reader.h"
#include "tests/fuzz/fuzz_input.h"

using namespace svcinst;

namespace {

// Spans lie inside each other in order, and every reference leads to a rule of that name.
void check_node(const GrammarNode& node, const Grammar& grammar) {
  const std::uint16_t type = value_of(node.type);
  require(type < kNodeTypeCount || type >= kFirstRuleReference);
  if (type >= kFirstRuleReference)
    require(text_of(first_child(*grammar.rules->slots.at(type))) == text_of(node));
  const char* at = node.begin;
  for (const auto& child : node.children) {
    require(at <= child->begin);
    check_node(*child, grammar);
    at = child->end;
  }
  require(at <= node.end);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ExactText text(as_text(data, size));
  ReadError error;
  const GrammarNodePtr root = read_grammar(text.begin(), size, error);
  require(error.code <= ReadCode::definition_missing && text.begin() <= error.position &&
          error.position <= text.end());
  require(error.depth == 0);
  const Grammar grammar(text.view());
  require(!root == (grammar.start_rule == nullptr));
  if (!root) return 0;
  require(root->begin == text.begin() && root->end <= text.end());
  check_node(*grammar.root, grammar);
  return 0;
}
