// A grammar text and, behind a NUL, an input for it: results lie in the input, and children follow
// one another and fill their parent.
#include <cassert>
#include <string>

#include "grammar/matcher.h"

using namespace svcinst;

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
  // Nothing is remembered, so a match may take exponential time. Short ones show as much.
  if (text.size() > 128 || input.size() > 12) return 0;
  const Grammar grammar{TextView(text)};
  const std::uint64_t remaining = input.size();
  const auto result = match(grammar.start_rule, input.data(), remaining, *grammar.rules);
  if (!result) return 0;
  assert(result->start == input.data() && result->length <= remaining);
  check_node(*result);
  return 0;
}
