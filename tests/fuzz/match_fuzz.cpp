// A grammar text and, behind a line "%%", an input for it: where the match ends, and the shape of
// the result tree.
#include "grammar/matcher.h"
#include "tests/fuzz/fuzz_input.h"

using namespace svcinst;

namespace {

const char* terminal_end(const GrammarNode& node, const char* at, const char* input_end) {
  if (node.type == NodeType::sort_string) return sort_string_end(node, at, input_end);
  if (node.type == NodeType::range_string) return range_end(node, at, input_end);
  if (node.type == NodeType::any_char) return any_char_end(node, at, input_end);
  if (node.type == NodeType::identifier) return nullptr;
  if (node.type != NodeType::except_terminal_string) return literal_end(node, at, input_end);
  const bool matches = terminal_end(first_child(node), at, input_end) != nullptr;
  return matches ? nullptr : any_char_end(node, at, input_end);
}

// Where a match ends, worked out without results. A hostile grammar takes exponential time, by
// design: `steps` bounds it, and an input that uses them up is not worth more. They are too few to
// come to the nesting limit, of which the model knows nothing.
struct Model {
  const RuleTable& rules;
  const char* input_end;
  int steps = 4'000;

  const char* end_of(const GrammarNode& node, const char* at) {
    if (--steps < 0) return nullptr;
    const std::uint16_t type = value_of(node.type);
    if (type >= kFirstRuleReference) return end_of(second_child(*rules.slots.at(type)), at);
    if (node.type == NodeType::repeat) return end_of_repeat(node, 0, at);
    if (node.type == NodeType::repeat_at_least_once) return end_of_repeat(node, 1, at);
    if (type > value_of(NodeType::option)) return terminal_end(node, at, input_end);
    const bool sequence = node.type == NodeType::concatenation;
    for (const auto& child : node.children) {
      const char* const end = end_of(*child, at);
      if ((end != nullptr) != sequence) return end;
      if (sequence) at = end;
    }
    return sequence || node.type == NodeType::option ? at : nullptr;
  }

  const char* end_of_repeat(const GrammarNode& node, std::uint64_t least, const char* at) {
    std::uint64_t greatest = UINT64_MAX;
    const GrammarNode* body = nullptr;
    for (const auto& child : node.children) {
      if (child->type == NodeType::alternation)
        body = child.get();
      else
        (body == nullptr ? least : greatest) = integer_value(*child);
    }
    std::uint64_t count = 0;
    for (const char* end = at; count < greatest && (end = end_of(*body, at)) != nullptr; at = end) {
      if (end == at && at != input_end) return at;  // nothing, as many times as one likes
      ++count;
      if (end == input_end) greatest = count;
    }
    return count < least ? nullptr : at;
  }
};

void check_node(const MatchNode& node) {
  const bool leaf = node.children == nullptr;
  require(leaf ? node.type == kTerminalType || node.length == 0 : node.type != kTerminalType);
  const char* at = node.start;
  for (std::uint64_t i = 0; !leaf && i < node.children->count; ++i) {
    const MatchNode& child = *node.children->items[i];
    require(child.start == at && child.type != kAnonymousType);
    check_node(child);
    at += child.length;
  }
  require(leaf || at == node.start + node.length);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextView rest = as_text(data, size);
  const ExactText text(take_until(rest, "\n%%\n"));
  const ExactText input(rest);
  const Grammar grammar(text.view());
  if (grammar.start_rule == nullptr) return 0;
  Model model{*grammar.rules, input.end()};
  const char* const end = model.end_of(second_child(*grammar.start_rule), input.begin());
  if (model.steps < 0) return 0;
  furthest_failure = nullptr;
  const MatchNodePtr result =
      match(grammar.start_rule, input.begin(), input.view().size(), *grammar.rules);
  require(furthest_failure == nullptr || furthest_failure >= input.begin());
  require(furthest_failure <= input.end());
  require((result == nullptr) == (end == nullptr));
  if (!result) return 0;
  require(result->start == input.begin() && result->start + result->length == end);
  check_node(*result);
  return 0;
}
