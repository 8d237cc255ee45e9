#include "grammar/reader.h"

#include <utility>

#include "grammar/cursor.h"
#include "grammar/nesting.h"
#include "grammar/tokens.h"

namespace svcinst {
namespace {

constexpr std::uint16_t kGroupOpen = 12;
constexpr std::uint16_t kGroupEmpty = 13;
constexpr std::uint16_t kNotGroup = 14;
constexpr std::uint16_t kOptionOpen = 15;
constexpr std::uint16_t kOptionPartMissing = 16;
constexpr std::uint16_t kOptionEmpty = 17;
constexpr std::uint16_t kNotOption = 18;
constexpr std::uint16_t kRepeatOpen = 19;
constexpr std::uint16_t kNotRepeat = 20;
constexpr std::uint16_t kDefinitionMissing = 21;

NodePtr make_parent(NodeType type, const char* begin, const char* end, GrammarNodeList children) {
  NodePtr node = make_node(type, begin, end);
  node->children = std::move(children);
  return node;
}

// One or more items with `separator` between them. A separator behind which no item can be read is
// passed all the same and ends the list.
template <class Read>
NodePtr read_list(NodeType type, Cursor cursor, Read read_item, const ByteString& separator,
                  ReadError& error) {
  const char* const begin = cursor.position;
  GrammarNodeList items;
  skip_blank(cursor, error);
  NodePtr item = read_at(cursor, read_item, error);
  if (!item) return nullptr;
  while (item) {
    append(items, std::move(item));
    skip_blank(cursor, error);
    if (!pass(cursor, separator)) break;
    item = read_at(cursor, read_item, error);
  }
  return make_parent(type, begin, cursor.position, std::move(items));
}

// Reads an alternation at the cursor into `children`, or notes `code` there.
bool read_body(Cursor& cursor, GrammarNodeList& children, std::uint16_t code, ReadError& error) {
  const char* const begin = cursor.position;
  NodePtr body = read_at(cursor, read_alternation, error);
  if (!body) {
    note(error, code, begin);
    return false;
  }
  append(children, std::move(body));
  return true;
}

// Reads the body of a repetition and the blank text and closing token behind it.
bool read_repeat_body(Cursor& cursor, GrammarNodeList& children, const ByteString& closer,
                      ReadError& error) {
  NodePtr body = read_at(cursor, read_alternation, error);
  if (!body) return false;
  append(children, std::move(body));
  skip_blank(cursor, error);
  return expect(cursor, closer, kRepeatOpen, error);
}

}  // namespace

NodePtr read_grammar(const char* text, std::uint64_t length, ReadError& error) {
  Cursor cursor(text, length);
  GrammarNodeList rules;
  skip_blank(cursor, error);
  while (NodePtr rule = read_at(cursor, read_rule, error)) append(rules, std::move(rule));
  skip_blank(cursor, error);
  if (rules.head == nullptr) return nullptr;
  return make_parent(NodeType::syntax, text, cursor.position, std::move(rules));
}

NodePtr read_rule(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  skip_blank(cursor, error);
  NodePtr name = read_identifier(cursor.position, error);
  if (!name) return nullptr;
  cursor.position = name->end;
  skip_blank(cursor, error);
  if (!expect(cursor, definition_token, kDefinitionMissing, error)) return nullptr;
  NodePtr definition = read_at(cursor, read_alternation, error);
  if (!definition) return nullptr;
  skip_blank(cursor, error);
  if (!pass(cursor, rule_end_token)) return nullptr;
  NodePtr rule = make_node(NodeType::rule, position, cursor.position);
  append_child(*rule, std::move(name));
  append_child(*rule, std::move(definition));
  return rule;
}

NodePtr read_alternation(const char* position, std::uint64_t remaining, ReadError& error) {
  const NestingLevel level(error.depth);
  if (!level.allowed()) return nullptr;
  return read_list(NodeType::alternation, {position, remaining}, read_concatenation,
                   alternation_token, error);
}

NodePtr read_concatenation(const char* position, std::uint64_t remaining, ReadError& error) {
  return read_list(NodeType::concatenation, {position, remaining}, read_term, concatenation_token,
                   error);
}

NodePtr read_term(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  skip_blank(cursor, error);
  for (const auto read : {read_terminal, read_group, read_option, read_repeat}) {
    if (NodePtr term = read(cursor.position, cursor.remaining(), error)) return term;
  }
  return read_identifier(cursor.position, error);
}

NodePtr read_group(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  GrammarNodeList children;
  skip_blank(cursor, error);
  if (!expect(cursor, group_open_token, kNotGroup, error)) return nullptr;
  if (!read_body(cursor, children, kGroupEmpty, error)) return nullptr;
  skip_blank(cursor, error);
  if (!expect(cursor, group_close_token, kGroupOpen, error)) return nullptr;
  return make_parent(NodeType::group, position, cursor.position, std::move(children));
}

NodePtr read_option(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  GrammarNodeList children;
  skip_blank(cursor, error);
  if (!expect(cursor, option_open_token, kNotOption, error)) return nullptr;
  if (!read_body(cursor, children, kOptionEmpty, error)) return nullptr;
  skip_blank(cursor, error);
  while (pass(cursor, alternation_token)) {
    if (!read_body(cursor, children, kOptionPartMissing, error)) return nullptr;
    skip_blank(cursor, error);
  }
  if (!expect(cursor, option_close_token, kOptionOpen, error)) return nullptr;
  return make_parent(NodeType::option, position, cursor.position, std::move(children));
}

NodePtr read_repeat(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  GrammarNodeList children;
  skip_blank(cursor, error);
  if (NodePtr least = read_at(cursor, read_integer, error)) {
    append(children, std::move(least));
    skip_blank(cursor, error);
  } else if (pass(cursor, repeat_once_open_token)) {
    if (!read_repeat_body(cursor, children, repeat_once_close_token, error)) return nullptr;
    return make_parent(NodeType::repeat_at_least_once, position, cursor.position,
                       std::move(children));
  }
  if (!expect(cursor, repeat_open_token, kNotRepeat, error)) return nullptr;
  if (!read_repeat_body(cursor, children, repeat_close_token, error)) return nullptr;
  skip_blank(cursor, error);
  if (NodePtr greatest = read_at(cursor, read_integer, error)) {
    append(children, std::move(greatest));
  }
  return make_parent(NodeType::repeat, position, cursor.position, std::move(children));
}

}  // namespace svcinst
