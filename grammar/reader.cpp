#include "grammar/reader.h"

#include "grammar/nesting.h"
#include "grammar/reading_steps.h"

namespace svcinst {
namespace {

constexpr bool is_identifier_char(char c) {
  return is_decimal_digit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

// One or more items with `separator` between them. A separator behind which no item can be read is
// passed all the same and ends the list.
GrammarNodePtr read_list(NodeType type, Cursor cursor, Read& read_item, const ByteString& separator,
                         ReadError& error) {
  const char* const begin = cursor.position;
  GrammarNodeList items;
  skip_blank(cursor, error);
  while (append_read(items, cursor, read_item, error)) {
    skip_blank(cursor, error);
    if (!pass(cursor, separator)) break;
  }
  if (items.head == nullptr) return nullptr;
  return make_node(type, begin, cursor.position, std::move(items));
}

// Reads an alternation at the cursor into `children`, or notes `code` there.
bool read_body(GrammarNodeList& children, Cursor& cursor, ReadCode code, ReadError& error) {
  if (append_read(children, cursor, read_alternation, error)) return true;
  note(error, code, cursor.position);
  return false;
}

// Reads the body of a repetition and the closing token behind it.
bool read_repeat_body(GrammarNodeList& children, Cursor& cursor, const ByteString& closer,
                      ReadError& error) {
  return append_read(children, cursor, read_alternation, error) &&
         expect(cursor, closer, ReadCode::repeat_not_closed, error);
}

}  // namespace

GrammarNodePtr read_grammar(const char* text, std::uint64_t length, ReadError& error) {
  Cursor cursor(text, length);
  GrammarNodeList rules;
  skip_blank(cursor, error);
  while (append_read(rules, cursor, read_rule, error)) continue;
  skip_blank(cursor, error);
  if (rules.head == nullptr) return nullptr;
  return make_node(NodeType::syntax, text, cursor.position, std::move(rules));
}

GrammarNodePtr read_rule(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  GrammarNodeList children;
  skip_blank(cursor, error);
  if (!append_read(children, cursor, read_identifier, error)) return nullptr;
  if (!expect(cursor, definition_token, ReadCode::definition_missing, error)) return nullptr;
  if (!append_read(children, cursor, read_alternation, error)) return nullptr;
  skip_blank(cursor, error);
  if (!pass(cursor, rule_end_token)) return nullptr;
  return make_node(NodeType::rule, begin, cursor.position, std::move(children));
}

GrammarNodePtr read_identifier(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  if (!is_identifier_char(*begin)) {
    note(error, ReadCode::not_identifier, begin);
    return nullptr;
  }
  const char* end = begin + 1;
  for (const char* next = end; is_identifier_char(*next) || is_whitespace(*next);)
    if (!is_whitespace(*next++)) end = next;
  return make_node(NodeType::identifier, begin, end);
}

GrammarNodePtr read_alternation(Cursor cursor, ReadError& error) {
  const NestingLevel level(error.depth);
  if (!level.allowed()) return nullptr;
  return read_list(NodeType::alternation, cursor, read_concatenation, alternation_token, error);
}

GrammarNodePtr read_concatenation(Cursor cursor, ReadError& error) {
  return read_list(NodeType::concatenation, cursor, read_term, concatenation_token, error);
}

GrammarNodePtr read_term(Cursor cursor, ReadError& error) {
  skip_blank(cursor, error);
  for (Read* read : {read_terminal, read_group, read_option, read_repeat, read_identifier})
    if (GrammarNodePtr term = read(cursor, error)) return term;
  return nullptr;
}

GrammarNodePtr read_group(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  if (!expect(cursor, group_tokens.open, ReadCode::not_group, error)) return nullptr;
  GrammarNodeList children;
  if (!read_body(children, cursor, ReadCode::group_empty, error)) return nullptr;
  if (!expect(cursor, group_tokens.close, ReadCode::group_not_closed, error)) return nullptr;
  return make_node(NodeType::group, begin, cursor.position, std::move(children));
}

GrammarNodePtr read_option(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  if (!expect(cursor, option_tokens.open, ReadCode::not_option, error)) return nullptr;
  GrammarNodeList children;
  if (!read_body(children, cursor, ReadCode::option_empty, error)) return nullptr;
  skip_blank(cursor, error);
  while (pass(cursor, alternation_token)) {
    if (!read_body(children, cursor, ReadCode::option_part_empty, error)) return nullptr;
    skip_blank(cursor, error);
  }
  if (!expect(cursor, option_tokens.close, ReadCode::option_not_closed, error)) return nullptr;
  return make_node(NodeType::option, begin, cursor.position, std::move(children));
}

GrammarNodePtr read_repeat(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  GrammarNodeList children;
  skip_blank(cursor, error);
  const bool has_least = append_read(children, cursor, read_integer, error);
  if (!has_least && pass(cursor, repeat_once_tokens.open)) {
    if (!read_repeat_body(children, cursor, repeat_once_tokens.close, error)) return nullptr;
    return make_node(NodeType::repeat_at_least_once, begin, cursor.position, std::move(children));
  }
  if (!expect(cursor, repeat_tokens.open, ReadCode::not_repeat, error)) return nullptr;
  if (!read_repeat_body(children, cursor, repeat_tokens.close, error)) return nullptr;
  skip_blank(cursor, error);
  append_read(children, cursor, read_integer, error);  // the greatest count, if any
  return make_node(NodeType::repeat, begin, cursor.position, std::move(children));
}

}  // namespace svcinst
