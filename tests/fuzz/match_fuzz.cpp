// A grammar text and, behind a line "%%", an input for it: results lie in the input, and children
// follow one another and fill their parent.
#include "grammar/matcher.h"
#include "tests/fuzz/fuzz_input.h"

using namespace svcinst;

static void check_node(const MatchNode& node) {
  const auto children = children_of(node);
  require(children.empty() ? node.type == kTerminalType || node.length == 0
                           : node.type != kTerminalType);
  const char* at = node.start;
  for (const MatchNode* child : children) {
    require(child->start == at && child->type != kAnonymousType);
    check_node(*child);
    at += child->length;
  }
  require(children.empty() || at == node.start + node.length);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextView rest = as_text(data, size);
  const ExactText text(take_until(rest, "\n%%\n"));
  const ExactText input(rest);
  // Nothing is remembered, so a match may take exponential time. Short ones show as much.
  if (text.view().size() > 128 || rest.size() > 12) return 0;
  const Grammar grammar(text.view());
  furthest_failure = nullptr;
  const auto result = match(grammar.start_rule, input.begin(), rest.size(), *grammar.rules);
  require(furthest_failure == nullptr || furthest_failure >= input.begin());
  require(furthest_failure <= input.end());
  if (!result) return 0;
  require(result->start == input.begin() && result->length <= rest.size());
  check_node(*result);
  return 0;
}
