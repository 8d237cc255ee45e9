#include "grammar/matcher.h"

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

// One match. Results wait on `pending` until the rule that they belong to takes them: a handler
// leaves one node there, or the children of an anonymous result (none for an empty one), and a
// handler that fails leaves `pending` as it was.
class Matcher {
 public:
  Matcher(const RuleTable& rules, const char* input_end) : rules_(rules), input_end_(input_end) {}
  Matcher(const Matcher&) = delete;
  Matcher& operator=(const Matcher&) = delete;
  ~Matcher() { drop(0); }

  /// Where the match of `node` at `position` ends; null when it fails.
  const char* match_node(const GrammarNode& node, const char* position);

  /// The whole result, once match_node has succeeded from `begin` to `end`.
  MatchNodePtr take_result(const char* begin, const char* end);

  const char* match_alternation(const GrammarNode& node, const char* position);
  const char* match_concatenation(const GrammarNode& node, const char* position);
  const char* match_group(const GrammarNode& node, const char* position);
  const char* match_identifier(const GrammarNode& node, const char* position);
  const char* match_option(const GrammarNode& node, const char* position);
  const char* match_repeat(const GrammarNode& node, const char* position);
  const char* match_repeat_at_least_once(const GrammarNode& node, const char* position);
  const char* match_rule(const GrammarNode& node, const char* position);
  const char* match_terminal(const GrammarNode& node, const char* position);
  const char* match_unknown(const GrammarNode& node, const char* position);

 private:
  const char* match_rule_reference(const GrammarNode& node, const char* position);
  const char* match_times(const GrammarNode& body, std::uint64_t least, std::uint64_t greatest,
                          const char* position);
  void push(MatchNodePtr node);
  void collect(std::uint16_t type, const char* begin, const char* end, std::uint64_t mark);
  void drop(std::uint64_t mark) noexcept;

  const RuleTable& rules_;
  const char* input_end_;
  std::vector<MatchNode*> pending_;
  Nesting nesting_;
};

using MatchHandler = const char* (Matcher::*)(const GrammarNode&, const char*);

constexpr std::array<MatchHandler, kNodeTypeCount> match_handlers = [] {
  std::array<MatchHandler, kNodeTypeCount> handlers{};
  handlers.fill(&Matcher::match_unknown);
  handlers[value_of(NodeType::rule)] = &Matcher::match_rule;
  handlers[value_of(NodeType::alternation)] = &Matcher::match_alternation;
  handlers[value_of(NodeType::concatenation)] = &Matcher::match_concatenation;
  handlers[value_of(NodeType::meta_definition)] = &Matcher::match_group;
  handlers[value_of(NodeType::group)] = &Matcher::match_group;
  handlers[value_of(NodeType::option)] = &Matcher::match_option;
  handlers[value_of(NodeType::repeat)] = &Matcher::match_repeat;
  handlers[value_of(NodeType::except_terminal_string)] = &Matcher::match_terminal;
  handlers[value_of(NodeType::sort_string)] = &Matcher::match_terminal;
  handlers[value_of(NodeType::quote_string)] = &Matcher::match_terminal;
  handlers[value_of(NodeType::dquote_string)] = &Matcher::match_terminal;
  handlers[value_of(NodeType::range_string)] = &Matcher::match_terminal;
  handlers[value_of(NodeType::any_char)] = &Matcher::match_terminal;
  handlers[value_of(NodeType::identifier)] = &Matcher::match_identifier;
  handlers[value_of(NodeType::repeat_at_least_once)] = &Matcher::match_repeat_at_least_once;
  return handlers;
}();

// The kinds whose empty results leave no trace in a sequence.
bool is_structure(NodeType type) {
  return type == NodeType::concatenation || type == NodeType::group || type == NodeType::option ||
         type == NodeType::repeat || type == NodeType::repeat_at_least_once;
}

bool is_integer(const GrammarNode& node) {
  return node.type == NodeType::integer_dec || node.type == NodeType::integer_hex;
}

std::uint64_t length_between(const char* begin, const char* end) {
  return static_cast<std::uint64_t>(end - begin);
}

const char* Matcher::match_node(const GrammarNode& node, const char* position) {
  if (nesting_.exceeded) return nullptr;
  const std::uint16_t type = value_of(node.type);
  if (type >= kFirstRuleReference) return match_rule_reference(node, position);
  const MatchHandler handler =
      type < match_handlers.size() ? match_handlers[type] : &Matcher::match_unknown;
  return (this->*handler)(node, position);
}

MatchNodePtr Matcher::take_result(const char* begin, const char* end) {
  if (nesting_.exceeded) return nullptr;
  if (pending_.size() != 1) collect(kAnonymousType, begin, end, 0);
  MatchNodePtr result(pending_.back());
  pending_.pop_back();
  return result;
}

const char* Matcher::match_rule_reference(const GrammarNode& node, const char* position) {
  const std::uint16_t type = value_of(node.type);
  const GrammarNode* const rule = type < rules_.count ? rules_.slots[type] : nullptr;
  if (rule == nullptr) return nullptr;
  const std::uint64_t mark = pending_.size();
  const char* const end = match_node(*second_child(*rule), position);
  if (end == nullptr) return nullptr;
  const int rule_number = value_of(first_child(*rule)->type) - kFirstRuleReference;
  collect(rule_result_type(static_cast<std::uint16_t>(rule_number)), position, end, mark);
  return end;
}

const char* Matcher::match_rule(const GrammarNode& node, const char* position) {
  return match_node(*second_child(node), position);
}

const char* Matcher::match_alternation(const GrammarNode& node, const char* position) {
  const NestingLevel level(nesting_);
  if (!level.allowed()) return nullptr;
  for (const auto* entry = node.children.head; entry != nullptr; entry = entry->next) {
    if (const char* end = match_node(*entry->value, position)) return end;
  }
  return nullptr;
}

const char* Matcher::match_concatenation(const GrammarNode& node, const char* position) {
  const std::uint64_t mark = pending_.size();
  for (const auto* entry = node.children.head; entry != nullptr; entry = entry->next) {
    const GrammarNode& child = *entry->value;
    const std::uint64_t child_mark = pending_.size();
    const char* const end = match_node(child, position);
    if (end == nullptr) {
      drop(mark);
      return nullptr;
    }
    if (end == position && is_structure(child.type)) drop(child_mark);
    position = end;
  }
  return position;
}

const char* Matcher::match_group(const GrammarNode& node, const char* position) {
  return match_node(*first_child(node), position);
}

const char* Matcher::match_option(const GrammarNode& node, const char* position) {
  for (const auto* entry = node.children.head; entry != nullptr; entry = entry->next) {
    if (const char* end = match_node(*entry->value, position)) return end;
  }
  return position;
}

const char* Matcher::match_repeat(const GrammarNode& node, const char* position) {
  std::uint64_t least = 0;
  std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();
  const GrammarNode* body = first_child(node);
  if (is_integer(*body)) {
    least = integer_value(*body);
    body = second_child(node);
  }
  const GrammarNode* const last = last_child(node);
  if (last != body && is_integer(*last)) greatest = integer_value(*last);
  return match_times(*body, least, greatest, position);
}

const char* Matcher::match_repeat_at_least_once(const GrammarNode& node, const char* position) {
  return match_times(*first_child(node), 1, std::numeric_limits<std::uint64_t>::max(), position);
}

// An iteration that consumes nothing ends the loop. Before the end of the input it counts for as
// many as are wanted, since each further one would match the same nothing.
const char* Matcher::match_times(const GrammarNode& body, std::uint64_t least,
                                 std::uint64_t greatest, const char* position) {
  const std::uint64_t mark = pending_.size();
  std::uint64_t count = 0;
  while (count < greatest) {
    const char* const end = match_node(body, position);
    if (end == nullptr) break;
    ++count;
    const bool at_input_end = end == input_end_;
    if (end == position && !at_input_end) return end;
    position = end;
    if (at_input_end) break;
  }
  if (count >= least) return position;
  drop(mark);
  return nullptr;
}

const char* Matcher::match_terminal(const GrammarNode& node, const char* position) {
  const char* const end = test_terminal(node, position, input_end_);
  if (end != nullptr)
    push(make_match_node(kTerminalType, position, length_between(position, end), {}));
  return end;
}

// A name that no rule bears: it was reported when the grammar was made.
const char* Matcher::match_identifier(const GrammarNode& /*node*/, const char* /*position*/) {
  return nullptr;
}

const char* Matcher::match_unknown(const GrammarNode& node, const char* /*position*/) {
  std::printf("unkown type with type = %d\n", static_cast<int>(value_of(node.type)));
  return nullptr;
}

void Matcher::push(MatchNodePtr node) {
  pending_.push_back(node.get());
  node.release();
}

// Puts the nodes from `mark` on into one new node over the text from `begin` up to `end`.
void Matcher::collect(std::uint16_t type, const char* begin, const char* end, std::uint64_t mark) {
  const auto children = std::span<MatchNode* const>(pending_).subspan(mark);
  MatchNodePtr node = make_match_node(type, begin, length_between(begin, end), children);
  pending_.resize(mark);
  push(std::move(node));
}

void Matcher::drop(std::uint64_t mark) noexcept {
  while (pending_.size() > mark) {
    const MatchNodePtr node(pending_.back());
    pending_.pop_back();
  }
}

}  // namespace

MatchNodePtr match(const GrammarNode* node, const char* position, const std::uint64_t& remaining,
                   const RuleTable& rules) {
  if (node == nullptr) return nullptr;
  Matcher matcher(rules, position + remaining);
  const char* const end = matcher.match_node(*node, position);
  return end != nullptr ? matcher.take_result(position, end) : nullptr;
}

}  // namespace svcinst
