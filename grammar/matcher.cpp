#include "grammar/matcher.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdio>
#include <limits>
#include <vector>

#include "grammar/nesting.h"

namespace svcinst {
namespace {

// The longest command line that a Windows process gets (CreateProcess). Up to it, the stack of
// results never moves: hardly a node is shorter than a byte.
constexpr std::uint64_t kLongestLine = 32767;

constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

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
    pending.reserve(std::min(static_cast<std::uint64_t>(end - begin), kLongestLine));
  }
};

// Puts the results from `mark` on into one new node over the text from `begin` up to `end`.
void wrap(Matcher& matcher, std::uint16_t type, const char* begin, const char* end,
          std::uint64_t mark) {
  MatchNode node(type, begin, end);
  adopt(node, matcher.pending, matcher.pending.size() - mark);
  matcher.pending.push_back(std::move(node));
}

// Puts the children of the last result in its place.
void unwrap(std::vector<MatchNode>& pending) {
  const MatchNode node = std::move(pending.back());
  pending.pop_back();
  for (MatchNode* child : children_of(node)) pending.push_back(std::move(*child));
}

void drop(std::vector<MatchNode>& pending, std::uint64_t mark) noexcept {
  while (pending.size() > mark) pending.pop_back();
}

// Past the limit the whole match fails: trying what is left could take forever.
const char* give_up(Matcher& matcher) noexcept {
  matcher.too_deep = true;
  return nullptr;
}

// Where the match of `node` at `position` ends; null when it fails.
using MatchHandler = const char*(Matcher& matcher, const GrammarNode& node, const char* position);

MatchHandler match_at;

using TerminalEnd = const char*(const GrammarNode& node, const char* position,
                                const char* input_end);

template <TerminalEnd end_of>
const char* match_terminal(Matcher& matcher, const GrammarNode& node, const char* position) {
  const char* const end = end_of(node, position, matcher.input_end);
  if (end != nullptr) matcher.pending.emplace_back(kTerminalType, position, end);
  return end;
}

const char* match_except(Matcher& matcher, const GrammarNode& node, const char* position) {
  const NestingLevel level(matcher.depth);
  if (!level.allowed()) return give_up(matcher);
  if (position == matcher.input_end) return record_failure(position);
  const std::uint64_t mark = matcher.pending.size();
  if (match_at(matcher, first_child(node), position) == nullptr)
    return match_terminal<any_char_end>(matcher, node, position);
  drop(matcher.pending, mark);
  return record_failure(position);
}

const char* match_rule_reference(Matcher& matcher, const GrammarNode& node, const char* position) {
  const std::uint16_t slot = value_of(node.type);
  const GrammarNode* const rule = slot < matcher.rules.count ? matcher.rules.slots[slot] : nullptr;
  if (rule == nullptr) return nullptr;
  const std::uint64_t mark = matcher.pending.size();
  const char* const end = match_at(matcher, second_child(*rule), position);
  if (end == nullptr) return nullptr;
  const std::uint16_t type = rule_result_type(rule_number(first_child(*rule).type));
  wrap(matcher, type, position, end, mark);
  return end;
}

const char* match_rule(Matcher& matcher, const GrammarNode& node, const char* position) {
  return match_at(matcher, second_child(node), position);
}

const char* match_group(Matcher& matcher, const GrammarNode& node, const char* position) {
  return match_at(matcher, first_child(node), position);
}

// The first child that matches.
const char* match_choice(Matcher& matcher, const GrammarNode& node, const char* position) {
  for (const auto& child : node.children) {
    if (const char* end = match_at(matcher, *child, position)) return end;
  }
  return nullptr;
}

const char* match_alternation(Matcher& matcher, const GrammarNode& node, const char* position) {
  const NestingLevel level(matcher.depth);
  return level.allowed() ? match_choice(matcher, node, position) : give_up(matcher);
}

const char* match_option(Matcher& matcher, const GrammarNode& node, const char* position) {
  const char* const end = match_choice(matcher, node, position);
  return end != nullptr ? end : position;
}

// The kinds whose empty results leave no trace in a sequence, and whose anonymous results give it
// their children.
bool is_structure(NodeType type) {
  return type == NodeType::concatenation || type == NodeType::group || type == NodeType::option ||
         type == NodeType::repeat || type == NodeType::repeat_at_least_once;
}

const char* match_concatenation(Matcher& matcher, const GrammarNode& node, const char* position) {
  std::vector<MatchNode>& pending = matcher.pending;
  const std::uint64_t mark = pending.size();
  const char* at = position;
  for (const auto& child : node.children) {
    const std::uint64_t child_mark = pending.size();
    const char* const end = match_at(matcher, *child, at);
    if (end == nullptr) {
      drop(matcher.pending, mark);
      return nullptr;
    }
    if (is_structure(child->type)) {
      if (end == at) drop(matcher.pending, child_mark);
    } else if (pending.size() != child_mark + 1) {
      wrap(matcher, kAnonymousType, at, end, child_mark);
    }
    at = end;
  }
  // The only result is the sequence's. It is anonymous only where the sequence holds an alternation
  // itself, without brackets, which the reader never makes.
  if (pending.size() == mark + 1 && pending.back().type == kAnonymousType) unwrap(pending);
  return at;
}

// An iteration that consumes nothing ends the loop. Before the end of the input it returns without
// counting: each further one would match the same nothing, until there are as many as are wanted.
const char* match_times(Matcher& matcher, const GrammarNode& body, std::uint64_t least,
                        std::uint64_t greatest, const char* position) {
  const std::uint64_t mark = matcher.pending.size();
  std::uint64_t count = 0;
  while (count < greatest) {
    const char* const end = match_at(matcher, body, position);
    if (end == nullptr) break;
    ++count;
    const bool at_input_end = end == matcher.input_end;
    if (end == position && !at_input_end) return end;
    position = end;
    if (at_input_end) break;
  }
  if (count >= least) return position;
  drop(matcher.pending, mark);
  return nullptr;
}

const char* match_repeat(Matcher& matcher, const GrammarNode& node, const char* position) {
  const GrammarNode& first = first_child(node);
  const GrammarNode& body = is_integer(first) ? second_child(node) : first;
  const GrammarNode& last = last_child(node);
  const std::uint64_t least = &first != &body ? integer_value(first) : 0;
  const std::uint64_t greatest =
      &last != &body && is_integer(last) ? integer_value(last) : kUnlimited;
  return match_times(matcher, body, least, greatest, position);
}

const char* match_repeat_at_least_once(Matcher& matcher, const GrammarNode& node,
                                       const char* position) {
  return match_times(matcher, first_child(node), 1, kUnlimited, position);
}

const char* match_unknown(Matcher& /*matcher*/, const GrammarNode& node, const char* /*position*/) {
  std::printf("unkown type with type = %d\n", static_cast<int>(value_of(node.type)));
  return nullptr;
}

// NOLINTNEXTLINE(readability-identifier-naming): it reads as the functions that it holds.
constexpr std::array<MatchHandler*, value_of(NodeType::count)> match_handlers = [] {
  std::array<MatchHandler*, value_of(NodeType::count)> handlers{};
  handlers.fill(match_unknown);
  handlers[value_of(NodeType::rule)] = match_rule;
  handlers[value_of(NodeType::alternation)] = match_alternation;
  handlers[value_of(NodeType::concatenation)] = match_concatenation;
  handlers[value_of(NodeType::meta_definition)] = match_group;
  handlers[value_of(NodeType::group)] = match_group;
  handlers[value_of(NodeType::option)] = match_option;
  handlers[value_of(NodeType::repeat)] = match_repeat;
  handlers[value_of(NodeType::except_terminal_string)] = match_except;
  handlers[value_of(NodeType::sort_string)] = match_terminal<sort_string_end>;
  handlers[value_of(NodeType::quote_string)] = match_terminal<literal_end>;
  handlers[value_of(NodeType::dquote_string)] = match_terminal<literal_end>;
  handlers[value_of(NodeType::range_string)] = match_terminal<range_end>;
  handlers[value_of(NodeType::any_char)] = match_terminal<any_char_end>;
  // A name that no rule bears: it was reported when the grammar was made.
  handlers[value_of(NodeType::identifier)] = [](auto&, auto&, auto) -> const char* { return {}; };
  handlers[value_of(NodeType::repeat_at_least_once)] = match_repeat_at_least_once;
  return handlers;
}();

MatchHandler* handler_of(NodeType type) {
  if (value_of(type) < match_handlers.size()) return match_handlers[value_of(type)];
  return is_rule_reference(type) ? match_rule_reference : match_unknown;
}

const char* match_at(Matcher& matcher, const GrammarNode& node, const char* position) {
  return matcher.too_deep ? nullptr : handler_of(node.type)(matcher, node, position);
}

}  // namespace

MatchNodePtr match(const GrammarNode* node, const char* position, const std::uint64_t& remaining,
                   const RuleTable& rules) {
  if (node == nullptr) return nullptr;
  assert(position[remaining] == '\0');
  Matcher matcher(rules, position, position + remaining);
  const char* const end = match_at(matcher, *node, position);
  if (end == nullptr || matcher.too_deep) return nullptr;
  if (matcher.pending.size() != 1) wrap(matcher, kAnonymousType, position, end, 0);
  return std::make_unique<MatchNode>(std::move(matcher.pending.back()));
}

}  // namespace svcinst
