#include "grammar/nesting.h"
#include "grammar/reading_steps.h"

namespace svcinst {
namespace {

constexpr bool is_hex_digit(char c) {
  return is_decimal_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// A literal ends at the first closing delimiter: it can't hold its own delimiter.
GrammarNodePtr read_delimited(const Cursor& cursor, const TokenPair& tokens, NodeType type,
                              ReadCode not_closed, ReadError& error) {
  if (!starts_with(cursor, tokens.open)) return nullptr;
  const char* const end = closed_end(cursor, tokens);
  if (end != nullptr) return make_node(type, cursor.position, end);
  note(error, not_closed, cursor.position + tokens.open.length);
  return nullptr;
}

GrammarNodePtr read_range_of(Read& read_bound, Cursor cursor, ReadError& error) {
  GrammarNodePtr low = read_at(cursor, read_bound, error);
  if (!low) return nullptr;
  if (cursor.remaining() <= range_token.length || !pass(cursor, range_token)) {
    note(error, ReadCode::not_range, cursor.position);
    return nullptr;
  }
  GrammarNodePtr high = read_at(cursor, read_bound, error);
  if (!high) return nullptr;
  GrammarNodePtr range = make_node(NodeType::range_string, low->begin, high->end);
  append(range->children, std::move(low));
  append(range->children, std::move(high));
  return range;
}

GrammarNodePtr read_except(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  if (cursor.remaining() <= except_token.length || !pass(cursor, except_token)) {
    note(error, ReadCode::not_except, begin);
    return nullptr;
  }
  const NestingLevel level(error.depth);
  GrammarNodeList terminal;
  if (!level.allowed() || !append_read(terminal, cursor, read_terminal, error)) return nullptr;
  return make_node(NodeType::except_terminal_string, begin, cursor.position, std::move(terminal));
}

}  // namespace

GrammarNodePtr read_terminal(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  if (pass(cursor, any_char_token)) return make_node(NodeType::any_char, begin, cursor.position);
  note(error, ReadCode::not_any_char, begin);
  for (Read* read : {read_range, read_dquote_string, read_quote_string, read_sort_string})
    if (GrammarNodePtr terminal = read(cursor, error)) return terminal;
  return read_except(cursor, error);
}

GrammarNodePtr read_range(Cursor cursor, ReadError& error) {
  for (Read* read_bound : {read_quote_string, read_dquote_string, read_integer})
    if (GrammarNodePtr range = read_range_of(*read_bound, cursor, error)) return range;
  return nullptr;
}

GrammarNodePtr read_quote_string(Cursor cursor, ReadError& error) {
  return read_delimited(cursor, quote_tokens, NodeType::quote_string,
                        ReadCode::quote_string_not_closed, error);
}

GrammarNodePtr read_dquote_string(Cursor cursor, ReadError& error) {
  return read_delimited(cursor, dquote_tokens, NodeType::dquote_string,
                        ReadCode::dquote_string_not_closed, error);
}

GrammarNodePtr read_sort_string(Cursor cursor, ReadError& error) {
  return read_delimited(cursor, sort_tokens, NodeType::sort_string,
                        ReadCode::sort_string_not_closed, error);
}

GrammarNodePtr read_integer(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  const char* digit = begin;
  if (cursor.remaining() >= 2 && digit[0] == '0' && (digit[1] == 'x' || digit[1] == 'X')) {
    digit += 2;
    if (is_hex_digit(*digit)) {
      while (is_hex_digit(*digit)) ++digit;
      return make_node(NodeType::integer_hex, begin, digit);
    }
    note(error, ReadCode::hex_digit_missing, digit);
  } else {
    note(error, ReadCode::not_hex, begin);
  }
  if (!is_decimal_digit(*begin)) {
    note(error, ReadCode::not_decimal, begin);
    return nullptr;
  }
  digit = begin;
  while (is_decimal_digit(*digit)) ++digit;
  return make_node(NodeType::integer_dec, begin, digit);
}

}  // namespace svcinst
