// The kinds of a grammar tree's nodes. A value of 1024 and more is no kind but a reference to a
// rule.
#pragma once

#include <cstdint>

namespace svcinst {

enum class NodeType : std::uint16_t {
  syntax = 0,
  rule = 1,
  alternation = 2,
  concatenation = 3,
  meta_definition = 4,
  group = 5,
  option = 6,
  repeat = 7,
  terminal_string = 8,
  except_terminal_string = 9,
  sort_string = 10,
  quote_string = 11,
  dquote_string = 12,
  range_string = 13,
  any_char = 14,
  digit_hex = 15,
  integer_dec = 16,
  integer_hex = 17,
  integer = 18,
  identifier = 19,
  nonwhitespace = 20,
  digit = 21,
  alphabet = 22,
  identifier_chars = 23,
  nonascii_chars = 24,
  ascii = 25,
  all_chars = 26,
  whitespace = 27,
  comment = 28,
  multiline_comment = 29,
  unuse_string = 30,
  repeat_at_least_once = 32,  // 31 is reserved
  count,                      // a new kind goes in front of it
};

/// The type of a reference to rule number n is kFirstRuleReference + n.
inline constexpr std::uint16_t kFirstRuleReference = 1024;
/// Rules numbered from here on can't be referred to.
inline constexpr std::uint16_t kMaxRules = 1024;

constexpr std::uint16_t value_of(NodeType type) {
  return static_cast<std::uint16_t>(type);
}

constexpr NodeType rule_reference(std::uint16_t rule_number) {
  return static_cast<NodeType>(kFirstRuleReference + rule_number);
}

constexpr bool is_rule_reference(NodeType type) {
  return value_of(type) >= kFirstRuleReference;
}

/// The number of the rule that a reference leads to.
constexpr std::uint16_t rule_number(NodeType reference) {
  return static_cast<std::uint16_t>(value_of(reference) - kFirstRuleReference);
}

/// The name of a kind, as reports show it; "" for a value that is no kind.
const char* node_type_name(NodeType type);

}  // namespace svcinst
