// A grammar text and, behind a line "%%", an input for it: the matcher against a few lines that say
// where a match ends, and the shape of the result tree.
#include "grammar/matcher.h"
#include "grammar/nesting.h"
#include "grammar/terminal_test.h"
#include "tests/fuzz/fuzz_input.h"

namespace svcinst {
namespace {

// Where a match ends, worked out without results. A hostile grammar takes exponential time, by
// design: `steps` bounds it, and an input that uses them up is not worth more.
struct Model {
  const RuleTable& rules;
  const char* input_end;
  int steps = 20'000;
  std::uint32_t level = 0;
  bool too_deep = false;

  const char* end_of(const GrammarNode* node, const char* at) {
    if (node == nullptr || too_deep || --steps < 0) return nullptr;
    const auto type = value_of(node->type);
    if (type >= kFirstRuleReference) return end_of(second_child(*rules.slots.at(type)), at);
    switch (node->type) {
      case NodeType::rule:
        return end_of(second_child(*node), at);
      case NodeType::group:
        return end_of(first_child(*node), at);
      case NodeType::alternation:
      case NodeType::option:
        return end_of_choice(*node, at);
      case NodeType::concatenation:
        for (auto* entry = node->children.head; entry != nullptr && at != nullptr;
             entry = entry->next)
          at = end_of(entry->value.get(), at);
        return at;
      case NodeType::repeat:
      case NodeType::repeat_at_least_once:
        return end_of_repeat(*node, at);
      default:
        return test_terminal(*node, at, input_end);
    }
  }

  const char* end_of_choice(const GrammarNode& node, const char* at) {
    const std::uint32_t own = node.type == NodeType::alternation ? 1 : 0;
    level += own;
    if (level > kMaxNesting) too_deep = true;
    const char* end = nullptr;
    for (auto* entry = node.children.head; entry != nullptr && end == nullptr; entry = entry->next)
      end = end_of(entry->value.get(), at);
    level -= own;
    return end != nullptr || node.type == NodeType::alternation ? end : at;
  }

  const char* end_of_repeat(const GrammarNode& node, const char* at) {
    std::uint64_t least = node.type == NodeType::repeat ? 0 : 1;
    std::uint64_t greatest = UINT64_MAX;
    const GrammarNode* body = nullptr;
    for (auto* entry = node.children.head; entry != nullptr; entry = entry->next) {
      if (entry->value->type == NodeType::alternation)
        body = entry->value.get();
      else
        (body == nullptr ? least : greatest) = integer_value(*entry->value);
    }
    std::uint64_t count = 0;
    for (const char* end = at; count < greatest && (end = end_of(body, at)) != nullptr;) {
      // Nothing again and again is as many times nothing as one likes, but not at the input's end.
      if (end == at && at != input_end) return at;
      ++count;
      at = end;
      if (at == input_end) break;
    }
    return count < least ? nullptr : at;
  }
};

void check_node(const MatchNode& node) {
  if (node.children == nullptr) {
    require(node.type == kTerminalType || node.length == 0);
    return;
  }
  require(node.type != kTerminalType && node.children->count > 0);
  require(node.children->count <= node.children->capacity);
  const char* at = node.start;
  for (std::uint64_t i = 0; i < node.children->count; ++i) {
    const MatchNode& child = *node.children->items[i];
    require(child.start == at && child.type != kAnonymousType);
    check_node(child);
    at += child.length;
  }
  require(at == node.start + node.length);
}

}  // namespace
}  // namespace svcinst

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextView rest = as_text(data, size);
  const ExactText text(take_until(rest, "\n%%\n"));
  const ExactText input(rest);
  const Grammar grammar(text.view());
  Model model{*grammar.rules, input.end()};
  const char* const end = model.end_of(grammar.start_rule, input.begin());
  if (model.steps < 0) return 0;
  furthest_failure = nullptr;
  const MatchNodePtr result =
      match(grammar.start_rule, input.begin(), input.view().size(), *grammar.rules);
  require(furthest_failure == nullptr ||
          (input.begin() <= furthest_failure && furthest_failure <= input.end()));
  require((result != nullptr) == (end != nullptr && !model.too_deep));
  if (!result) return 0;
  require(result->start == input.begin() && result->start + result->length == end);
  check_node(*result);
  return 0;
}
