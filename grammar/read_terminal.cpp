#include <utility>

#include "grammar/cursor.h"
#include "grammar/find_text.h"
#include "grammar/nesting.h"
#include "grammar/reader.h"
#include "grammar/tokens.h"

namespace svcinst {
namespace {

constexpr std::uint16_t kHexDigitMissing = 1;
constexpr std::uint16_t kNotHex = 2;
constexpr std::uint16_t kNotDecimal = 3;
constexpr std::uint16_t kNotAnyChar = 4;
constexpr std::uint16_t kSortStringOpen = 5;
constexpr std::uint16_t kQuoteStringOpen = 6;
constexpr std::uint16_t kDquoteStringOpen = 7;
constexpr std::uint16_t kNotRange = 8;
constexpr std::uint16_t kNotExcept = 9;
constexpr std::uint16_t kNotIdentifier = 11;

constexpr bool is_decimal_digit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool is_hex_digit(char c) {
  return is_decimal_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr bool is_identifier_char(char c) {
  return is_decimal_digit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

// A literal ends at the first closing delimiter: it can't hold its own delimiter.
NodePtr read_delimited(const Cursor& cursor, const ByteString& opener, const ByteString& closer,
                       NodeType type, std::uint16_t open_code, ReadError& error) {
  if (!starts_with(cursor, opener)) return nullptr;
  const auto found =
      find_text(cursor.position, opener.length, cursor.remaining() - 1, closer.data, closer.length);
  if (!found) {
    note(error, open_code, cursor.position + opener.length);
    return nullptr;
  }
  return make_node(type, cursor.position, cursor.position + *found + closer.length);
}

using ReadBound = NodePtr (*)(const char*, std::uint64_t, ReadError&);

NodePtr read_range_of(ReadBound read_bound, Cursor cursor, ReadError& error) {
  NodePtr low = read_at(cursor, read_bound, error);
  if (!low) return nullptr;
  if (cursor.remaining() <= range_token.length || !pass(cursor, range_token)) {
    note(error, kNotRange, cursor.position);
    return nullptr;
  }
  NodePtr high = read_at(cursor, read_bound, error);
  if (!high) return nullptr;
  NodePtr range = make_node(NodeType::range_string, low->begin, high->end);
  append_child(*range, std::move(low));
  append_child(*range, std::move(high));
  return range;
}

NodePtr read_except(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  if (cursor.remaining() <= except_token.length || !pass(cursor, except_token)) {
    note(error, kNotExcept, begin);
    return nullptr;
  }
  const NestingLevel level(error.depth);
  if (!level.allowed()) return nullptr;
  NodePtr terminal = read_at(cursor, read_terminal, error);
  if (!terminal) return nullptr;
  NodePtr except = make_node(NodeType::except_terminal_string, begin, terminal->end);
  append_child(*except, std::move(terminal));
  return except;
}

}  // namespace

NodePtr read_terminal(const char* position, std::uint64_t remaining, ReadError& error) {
  const Cursor cursor(position, remaining);
  if (starts_with(cursor, any_char_token)) {
    return make_node(NodeType::any_char, position, position + any_char_token.length);
  }
  note(error, kNotAnyChar, position);
  for (const auto read : {read_range, read_dquote_string, read_quote_string, read_sort_string}) {
    if (NodePtr terminal = read(position, remaining, error)) return terminal;
  }
  return read_except(cursor, error);
}

NodePtr read_range(const char* position, std::uint64_t remaining, ReadError& error) {
  const Cursor cursor(position, remaining);
  for (const auto read_bound : {read_quote_string, read_dquote_string, read_integer}) {
    if (NodePtr range = read_range_of(read_bound, cursor, error)) return range;
  }
  return nullptr;
}

NodePtr read_quote_string(const char* position, std::uint64_t remaining, ReadError& error) {
  return read_delimited({position, remaining}, quote_open_token, quote_close_token,
                        NodeType::quote_string, kQuoteStringOpen, error);
}

NodePtr read_dquote_string(const char* position, std::uint64_t remaining, ReadError& error) {
  return read_delimited({position, remaining}, dquote_open_token, dquote_close_token,
                        NodeType::dquote_string, kDquoteStringOpen, error);
}

NodePtr read_sort_string(const char* position, std::uint64_t remaining, ReadError& error) {
  return read_delimited({position, remaining}, sort_open_token, sort_close_token,
                        NodeType::sort_string, kSortStringOpen, error);
}

NodePtr read_integer(const char* position, std::uint64_t remaining, ReadError& error) {
  const char* digit = position;
  if (remaining >= 2 && digit[0] == '0' && (digit[1] == 'x' || digit[1] == 'X')) {
    digit += 2;
    if (is_hex_digit(*digit)) {
      while (is_hex_digit(*digit)) ++digit;
      return make_node(NodeType::integer_hex, position, digit);
    }
    note(error, kHexDigitMissing, digit);
  } else {
    note(error, kNotHex, position);
  }
  if (!is_decimal_digit(*position)) {
    note(error, kNotDecimal, position);
    return nullptr;
  }
  digit = position;
  while (is_decimal_digit(*digit)) ++digit;
  return make_node(NodeType::integer_dec, position, digit);
}

NodePtr read_identifier(const char* position, ReadError& error) {
  if (!is_identifier_char(*position)) {
    note(error, kNotIdentifier, position);
    return nullptr;
  }
  const char* end = position + 1;
  for (const char* next = end; is_identifier_char(*next) || is_whitespace(*next);) {
    if (!is_whitespace(*next++)) end = next;
  }
  return make_node(NodeType::identifier, position, end);
}

}  // namespace svcinst
