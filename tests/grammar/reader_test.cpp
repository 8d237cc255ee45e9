// What docs/grammar-notation.md does not show of the reader: its notes, and what no text gives.
#include "grammar/reader.h"

#include <gtest/gtest.h>

#include "tests/grammar/tree_text.h"

namespace svcinst {
namespace {

using enum ReadCode;
using Reader = GrammarNodePtr(const char* position, std::uint64_t remaining, ReadError& error);

GrammarNodePtr read_name(const char* position, std::uint64_t /*remaining*/, ReadError& error) {
  return read_identifier(position, error);
}

constexpr const char* kNothing = nullptr;

TEST(Read, GivesANodeOrNotesWhyItCant) {
  const struct {
    Reader* read;
    const char *text, *tree;
    ReadCode code;
    int offset;  // of the note
  } rows[] = {
      {read_blank, " \t\v\f\r\n(**)x", "unuse_string(  \t \v \f \r \n (**))", blank_ends, 10},
      {read_integer, "0129:", "0129", not_hex, 0},
      {read_integer, "0xZ", "0", hex_digit_missing, 2},
      {read_terminal, "'a'~'z'", "range_string('a' 'z')", not_any_char, 0},
      {read_terminal, "'a", kNothing, not_except, 0},
      {read_quote_string, "'ab", kNothing, quote_string_not_closed, 1},
      {read_name, "0_Zz9 b\t= x", "0_Zz9 b", nothing_noted, 0},
      {read_name, " a", kNothing, not_identifier, 0},
      {read_group, " a", kNothing, not_group, 1},
      {read_group, "( )", kNothing, group_empty, 1},
      {read_group, "(a ]", kNothing, group_not_closed, 3},
      {read_option, "[a||]", kNothing, option_part_empty, 4},
      {read_option, "[a )", kNothing, option_not_closed, 3},
      {read_repeat, "3 <a>", kNothing, not_repeat, 2},
      {read_repeat, "{a >", kNothing, repeat_not_closed, 3},
      {read_rule, "a /**/b", kNothing, definition_missing, 6},
  };
  for (const auto& row : rows) {
    const TextView text = row.text;
    ReadError error{nothing_noted, row.text};
    const GrammarNodePtr node = row.read(text.data(), text.size(), error);
    EXPECT_EQ(node ? tree_text(*node) : "", row.tree != kNothing ? row.tree : "") << text;
    EXPECT_EQ(error.code, row.code) << text;
    EXPECT_EQ(error.position - row.text, row.offset) << text;
  }
}

TEST(Read, ARuleNestedTooDeepIsTheOnlyOneThatCantBeRead) {
  ReadError error;
  for (const char* brackets : {"()", "[]", "{}", "<>", "! "}) {
    for (const std::uint32_t depth : {1999U, 2000U, 100'000U}) {
      const std::string text = "a='a'; b='b'|" + std::string(depth, brackets[0]) + "'c'" +
                               std::string(depth, brackets[1]) + ";";
      const GrammarNodePtr root = read_grammar(text.data(), text.size(), error);
      EXPECT_EQ(text_of(first_child(last_child(*root))), depth < 2000 ? "b" : "a") << brackets;
    }
  }
  EXPECT_EQ(error.depth, 0U);
}

}  // namespace
}  // namespace svcinst
