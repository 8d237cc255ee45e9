#include "grammar/terminal.h"

#include "grammar/utf8.h"

namespace svcinst {
namespace {

// The text between the delimiters of a quoted kind.
TextView quoted_text(const GrammarNode& node) {
  return {node.begin + 1, node.end - 1};
}

// A bound of 0x80 and more is above every byte: it stays negative in 64 bits.
std::uint64_t literal_bound(const GrammarNode& bound) {
  return static_cast<std::uint64_t>(static_cast<signed char>(bound.begin[1]));
}

}  // namespace

const char* furthest_failure = nullptr;

const char* record_failure(const char* position) {
  if (furthest_failure == nullptr || furthest_failure < position) furthest_failure = position;
  return nullptr;
}

// One character, or one byte where there is no valid one.
const char* any_char_end(const GrammarNode& /*node*/, const char* position, const char* input_end) {
  if (position == input_end) return nullptr;
  const std::uint32_t length = decode_utf8(position).length;
  return position + (length == 0 ? 1 : length);
}

// Literals are too short for a call of the C library's comparison to pay.
const char* literal_end(const GrammarNode& node, const char* position, const char* input_end) {
  const TextView literal = quoted_text(node);
  if (static_cast<std::size_t>(input_end - position) < literal.size())
    return record_failure(position);
  const char* next = position;
  for (const char byte : literal)
    if (*next++ != byte) return record_failure(position);
  return next;
}

const char* range_end(const GrammarNode& node, const char* position, const char* input_end) {
  if (position == input_end) return nullptr;
  const GrammarNode& low = first_child(node);
  const GrammarNode& high = last_child(node);
  if (!is_integer(low)) {
    const std::uint64_t byte = static_cast<unsigned char>(*position);
    const bool inside = literal_bound(low) <= byte && byte <= literal_bound(high);
    return inside ? position + 1 : record_failure(position);
  }
  const auto [length, code_point] = decode_utf8(position);
  const bool inside =
      length != 0 && integer_value(low) <= code_point && code_point <= integer_value(high);
  return inside ? position + length : record_failure(position);
}

// The set is written in ascending order of its bytes as signed chars.
const char* sort_string_end(const GrammarNode& node, const char* position, const char* input_end) {
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

}  // namespace svcinst
