#include "grammar/matcher.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <span>
#include <vector>

#include "grammar/nesting.h"
#include "grammar/terminal_test.h"

namespace svcinst {

const char* furthest_failure = nullptr;

namespace {

std::uint64_t length_between(const char* begin, const char* end) {
  return static_cast<std::uint64_t>(end - begin);
}

// The longest command line that a Windows process gets (CreateProcess). Up to it, the stack of
// results never moves: hardly a node is shorter than a byte.
constexpr std::uint64_t kLongestLine = 32767;

// One match. Results wait on `pending` until the rule that they belong to takes them: a handler
// leaves one node there, or the children of an anonymous result (none for an empty one), and a
// handler that fails leaves `pending` as it was.
struct Matcher {
  const RuleTable& rules;
  const char* input_end;
  std::vector<MatchNode> pending{};
  std::uint32_t depth = 0;
  bool too_deep = false;  // nothing more is matched

  Matcher(const RuleTable& rule_table, const char* begin, const char* end)
      : rules(rule_table), input_end(end) {
    pending.reserve(std::min(length_between(begin, end), kLongestLine));
  }
  Matcher(const Matcher&) = delete;
  Matcher& operator=(const Matcher&) = delete;
  ~Matcher() { drop(0); }

  void collect(std::uint16_t type, const char* begin, const char* end, std::uint64_t mark);
  void drop(std::uint64_t mark) noexcept;
  MatchNodePtr take_result(const char* begin, const char* end);

  // Past the limit the whole match fails: trying what is left could take forever.
  const char* give_up() {
    too_deep = true;
    return nullptr;
  }
};

// Puts the nodes from `mark` on into one new node over the text from `begin` up to `end`.
void Matcher::collect(std::uint16_t type, const char* begin, const char* end, std::uint64_t mark) {
  MatchNode node{type, begin, length_between(begin, end), nullptr};
  adopt(node, std::span<const MatchNode>(pending).subspan(mark));
  pending.resize(mark);
  pending.push_back(node);  // finds room where a child was
}

void Matcher::drop(std::uint64_t mark) noexcept {
  for (; pending.size() > mark; pending.pop_back()) clear(pending.back());
}

// The whole result, once the match has succeeded from `begin` to `end`.
MatchNodePtr Matcher::take_result(const char* begin, const char* end) {
  if (too_deep) return nullptr;
  if (pending.size() != 1) collect(kAnonymousType, begin, end, 0);
  MatchNodePtr result(new MatchNode(pending.back()));
  pending.pop_back();
  return result;
}

// Where the match of `node` at `position` ends; null when it fails.
using MatchHandler = const char*(Matcher& matcher, const GrammarNode& node, const char* position);

MatchHandler match_node;

using TerminalTest = const char*(const GrammarNode& node, const char* position,
                                 const char* input_end);

template <TerminalTest test>
const char* match_terminal(Matcher& matcher, const GrammarNode& node, const char* position) {
  const char* const end = test(node, position, matcher.input_end);
  if (end != nullptr)
    matcher.pending.push_back({kTerminalType, position, length_between(position, end), nullptr});
  return end;
}

// Children that nodes of the kind have, by the reader's making.
const GrammarNode& first_of(const GrammarNode& node) {
  return *node.children.head->value;
}
const GrammarNode& second_of(const GrammarNode& node) {
  return *node.children.head->next->value;
}

// The kinds whose empty results leave no trace in a sequence.
bool is_structure(NodeType type) {
  return type == NodeType::concatenation || type == NodeType::group || type == NodeType::option ||
         type == NodeType::repeat || type == NodeType::repeat_at_least_once;
}

bool is_integer(const GrammarNode& node) {
  return node.type == NodeType::integer_dec || node.type == NodeType::integer_hex;
}

const char* match_rule_reference(Matcher& matcher, const GrammarNode& node, const char* position) {
  const std::uint16_t type = value_of(node.type);
  const GrammarNode* const rule = type < matcher.rules.count ? matcher.rules.slots[type] : nullptr;
  if (rule == nullptr) return nullptr;
  const std::uint64_t mark = matcher.pending.size();
  const char* const end = match_node(matcher, second_of(*rule), position);
  if (end == nullptr) return nullptr;
  const int rule_number = value_of(first_of(*rule).type) - kFirstRuleReference;
  matcher.collect(rule_result_type(static_cast<std::uint16_t>(rule_number)), position, end, mark);
  return end;
}

const char* match_rule(Matcher& matcher, const GrammarNode& node, const char* position) {
  return match_node(matcher, second_of(node), position);
}

const char* match_alternation(Matcher& matcher, const GrammarNode& node, const char* position) {
  const NestingLevel level(matcher.depth);
  if (!level.allowed()) return matcher.give_up();
  for (const auto& child : node.children) {
    if (const char* end = match_node(matcher, *child, position)) return end;
  }
  return nullptr;
}

const char* match_concatenation(Matcher& matcher, const GrammarNode& node, const char* position) {
  const std::uint64_t mark = matcher.pending.size();
  for (const auto& child : node.children) {
    const std::uint64_t child_mark = matcher.pending.size();
    const char* const end = match_node(matcher, *child, position);
    if (end == nullptr) {
      matcher.drop(mark);
      return nullptr;
    }
    if (end == position && is_structure(child->type)) matcher.drop(child_mark);
    position = end;
  }
  return position;
}

const char* match_group(Matcher& matcher, const GrammarNode& node, const char* position) {
  return match_node(matcher, first_of(node), position);
}

const char* match_option(Matcher& matcher, const GrammarNode& node, const char* position) {
  for (const auto& child : node.children) {
    if (const char* end = match_node(matcher, *child, position)) return end;
  }
  return position;
}

// An iteration that consumes nothing ends the loop. Before the end of the input it counts for as
// many as are wanted, since each further one would match the same nothing.
const char* match_times(Matcher& matcher, const GrammarNode& body, std::uint64_t least,
                        std::uint64_t greatest, const char* position) {
  const std::uint64_t mark = matcher.pending.size();
  std::uint64_t count = 0;
  while (count < greatest) {
    const char* const end = match_node(matcher, body, position);
    if (end == nullptr) break;
    ++count;
    const bool at_input_end = end == matcher.input_end;
    if (end == position && !at_input_end) return end;
    position = end;
    if (at_input_end) break;
  }
  if (count >= least) return position;
  matcher.drop(mark);
  return nullptr;
}

const char* match_repeat(Matcher& matcher, const GrammarNode& node, const char* position) {
  std::uint64_t least = 0;
  std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();
  const GrammarNode* body = first_child(node);
  if (is_integer(*body)) {
    least = integer_value(*body);
    body = second_child(node);
  }
  const GrammarNode* const last = last_child(node);
  if (last != body && is_integer(*last)) greatest = integer_value(*last);
  return match_times(matcher, *body, least, greatest, position);
}

const char* match_repeat_at_least_once(Matcher& matcher, const GrammarNode& node,
                                       const char* position) {
  return match_times(matcher, first_of(node), 1, std::numeric_limits<std::uint64_t>::max(),
                     position);
}

// A name that no rule bears: it was reported when the grammar was made.
const char* match_identifier(Matcher& /*matcher*/, const GrammarNode& /*node*/,
                             const char* /*position*/) {
  return nullptr;
}

const char* match_unknown(Matcher& /*matcher*/, const GrammarNode& node, const char* /*position*/) {
  std::printf("unkown type with type = %d\n", static_cast<int>(value_of(node.type)));
  return nullptr;
}

// NOLINTNEXTLINE(readability-identifier-naming): it reads as the functions that it holds.
constexpr std::array<MatchHandler*, kNodeTypeCount> match_handlers = [] {
  std::array<MatchHandler*, kNodeTypeCount> handlers{};
  handlers.fill(match_unknown);
  handlers[value_of(NodeType::rule)] = match_rule;
  handlers[value_of(NodeType::alternation)] = match_alternation;
  handlers[value_of(NodeType::concatenation)] = match_concatenation;
  handlers[value_of(NodeType::meta_definition)] = match_group;
  handlers[value_of(NodeType::group)] = match_group;
  handlers[value_of(NodeType::option)] = match_option;
  handlers[value_of(NodeType::repeat)] = match_repeat;
  handlers[value_of(NodeType::except_terminal_string)] = match_terminal<test_except>;
  handlers[value_of(NodeType::sort_string)] = match_terminal<test_sort_string>;
  handlers[value_of(NodeType::quote_string)] = match_terminal<test_literal>;
  handlers[value_of(NodeType::dquote_string)] = match_terminal<test_literal>;
  handlers[value_of(NodeType::range_string)] = match_terminal<test_range>;
  handlers[value_of(NodeType::any_char)] = match_terminal<test_any_char>;
  handlers[value_of(NodeType::identifier)] = match_identifier;
  handlers[value_of(NodeType::repeat_at_least_once)] = match_repeat_at_least_once;
  return handlers;
}();

const char* match_node(Matcher& matcher, const GrammarNode& node, const char* position) {
  if (matcher.too_deep) return nullptr;
  const std::uint16_t type = value_of(node.type);
  if (type >= kFirstRuleReference) return match_rule_reference(matcher, node, position);
  MatchHandler* const handler = type < match_handlers.size() ? match_handlers[type] : match_unknown;
  return handler(matcher, node, position);
}

}  // namespace

MatchNodePtr match(const GrammarNode* node, const char* position, const std::uint64_t& remaining,
                   const RuleTable& rules) {
  if (node == nullptr) return nullptr;
  Matcher matcher(rules, position, position + remaining);
  const char* const end = match_node(matcher, *node, position);
  return end != nullptr ? matcher.take_result(position, end) : nullptr;
}

}  // namespace svcinst
