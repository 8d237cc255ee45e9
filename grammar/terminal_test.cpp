#include "grammar/terminal_test.h"

#include <cstdlib>

#include "grammar/matcher.h"
#include "grammar/utf8.h"

namespace svcinst {
namespace {

const char* record_failure(const char* position) {
  if (furthest_failure == nullptr || furthest_failure < position) furthest_failure = position;
  return nullptr;
}

// One character, or one byte where there is no valid one.
const char* pass_char(const char* position) {
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): there is an input, so no position is null.
  if (static_cast<unsigned char>(*position) < 0x80) return position + 1;
  const std::uint32_t length = decode_utf8(position).length;
  return position + (length == 0 ? 1 : length);
}

// The text between the delimiters of a quoted kind.
TextView quoted_text(const GrammarNode& node) {
  return {node.begin + 1, node.end - 1};
}

// A bound of 0x80 and more is above every byte: it stays negative in 64 bits.
std::uint64_t literal_bound(const GrammarNode& bound) {
  return static_cast<std::uint64_t>(static_cast<signed char>(bound.begin[1]));
}

bool is_literal(const GrammarNode& node) {
  return node.type == NodeType::quote_string || node.type == NodeType::dquote_string;
}

}  // namespace

std::uint64_t integer_value(const GrammarNode& node) {
  return std::strtoul(node.begin, nullptr, node.type == NodeType::integer_hex ? 16 : 10);
}

// Literals are too short for a call of the C library's comparison to pay.
const char* test_literal(const GrammarNode& node, const char* position, const char* input_end) {
  const TextView literal = quoted_text(node);
  if (static_cast<std::size_t>(input_end - position) < literal.size())
    return record_failure(position);
  const char* next = position;
  for (const char byte : literal)
    if (*next++ != byte) return record_failure(position);
  return next;
}

// The set is written in ascending order of its bytes as signed chars.
const char* test_sort_string(const GrammarNode& node, const char* position, const char* input_end) {
  if (position == input_end) return record_failure(position);
  const auto wanted = static_cast<signed char>(*position);
  const char* low = node.begin + 1;
  const char* high = node.end - 1;
  while (low < high) {
    const char* const middle = low + (high - low - 1) / 2;
    const auto candidate = static_cast<signed char>(*middle);
    if (candidate == wanted) return position + 1;
    if (candidate < wanted) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return record_failure(position);
}

const char* test_range(const GrammarNode& node, const char* position, const char* input_end) {
  if (position == input_end) return nullptr;
  const GrammarNode& low = *node.children.head->value;
  const GrammarNode& high = *node.children.tail->value;
  if (is_literal(low)) {
    const std::uint64_t byte = static_cast<unsigned char>(*position);
    const bool inside = literal_bound(low) <= byte && byte <= literal_bound(high);
    return inside ? position + 1 : record_failure(position);
  }
  const auto [length, code_point] = decode_utf8(position);
  const bool inside =
      length != 0 && integer_value(low) <= code_point && code_point <= integer_value(high);
  return inside ? position + length : record_failure(position);
}

const char* test_except(const GrammarNode& node, const char* position, const char* input_end) {
  if (position == input_end) return record_failure(position);
  const bool found = test_terminal(*node.children.head->value, position, input_end) != nullptr;
  return found ? record_failure(position) : pass_char(position);
}

const char* test_any_char(const GrammarNode& /*node*/, const char* position,
                          const char* input_end) {
  return position == input_end ? nullptr : pass_char(position);
}

const char* test_terminal(const GrammarNode& node, const char* position, const char* input_end) {
  switch (node.type) {
    case NodeType::except_terminal_string:
      return test_except(node, position, input_end);
    case NodeType::sort_string:
      return test_sort_string(node, position, input_end);
    case NodeType::quote_string:
    case NodeType::dquote_string:
      return test_literal(node, position, input_end);
    case NodeType::range_string:
      return test_range(node, position, input_end);
    case NodeType::any_char:
      return test_any_char(node, position, input_end);
    default:
      return nullptr;
  }
}

}  // namespace svcinst
