// What docs/grammar-notation.md does not show of the matcher: bytes, limits, and trees of no text.
#include "grammar/matcher.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "grammar/reader.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

MatchNodePtr match_whole(const Grammar& grammar, TextView input) {
  const std::uint64_t remaining = input.size();
  furthest_failure = nullptr;
  return match(grammar.start_rule, input.data(), remaining, *grammar.rules);
}

TEST(Grammar, ResolvesNamesToTheLaterOfTwoRulesAndReportsOthers) {
  std::string text = "a = b, {r1022}; b = r1023; b = [r1024 | no rule];";
  for (int i = 3; i <= 1024; ++i) text += "r" + std::to_string(i) + " = 'x';";
  const CapturedStdout captured;
  const Grammar grammar{TextView(text)};
  EXPECT_EQ(tree_text(first_child(*grammar.root)), "rule(#0 concatenation(#2 repeat(#1022)))");
  EXPECT_EQ(captured.bytes(),
            "unkown identifier r1024\nunkown identifier no rule\nunkown identifier r1024\n");
  EXPECT_EQ(grammar.rules->slots[1024 + 1], nullptr);
  EXPECT_EQ(tree_text(*match_whole(grammar, "x"), grammar), "...(b() r1022('x'))");
  EXPECT_EQ(match_whole(Grammar(TextView("broken")), "x"), nullptr);
  EXPECT_TRUE(NameLess()("\x80", "a"));
}

TEST(Grammar, StoresRulesBelowTheTablesCountOnly) {
  ReadError error;
  const GrammarNodePtr rule = read_rule("a=b;", 4, error);
  RuleTable table;
  table.count = 1025;
  resolve_identifiers(*rule, {{"a", {0, rule.get()}}, {"b", {1, rule.get()}}}, table);
  EXPECT_EQ(table.slots[1024], rule.get());
  EXPECT_EQ(table.slots[1025], nullptr);
}

TEST(Match, TestsTerminalsByBytesOrCharacters) {
  constexpr int kFails = -1;
  constexpr int kNone = -1;
  const struct {
    TextView terminal, input;
    int length, furthest_failure;
  } rows[] = {
      {"''", "", 0, kNone},
      {"`ac`", "", kFails, 0},
      {"`\200\377bdfh`", "\377", 1, kNone},  // ascending as signed bytes
      {"`\200\377bdfh`", "h", 1, kNone},
      {"'a'~'z'", "", kFails, kNone},
      {"'a'~'\200'", "\377", 1, kNone},  // above every byte
      {"'\200'~'\377'", "\220", kFails, 0},
      {"65~0x5A", "@", kFails, 0},
      {"0~0", "\300\200", 2, kNone},  // overlong
      {"2097151~2097151", "\367\277\277\277", 4, kNone},
      {"0~4294967295", "\200", kFails, 0},
      {"0~4294967295", "\277", kFails, 0},
      {"0~4294967295", "\342\202\303", kFails, 0},
      {"0~4294967295", "\370\200\200\200\200", kFails, 0},
      {".", "\342\202", 1, kNone},
      {".", "", kFails, kNone},
      {"!'x'", "", kFails, 0},
      {"!!'x'", "x", 1, 0},
      {"'a', 'b', 'c' | 'a', 'x'", "abd", kFails, 2},
      {"[s | s], {s}, 'x' | 'x'", "x", kFails, kNone},  // refers to itself first
  };
  for (const auto& row : rows) {
    const std::string text = "s = " + std::string(row.terminal) + ";";
    const MatchNodePtr result = match_whole(Grammar{TextView(text)}, row.input);
    EXPECT_EQ(result ? static_cast<int>(result->length) : kFails, row.length) << text;
    const auto failure = furthest_failure != nullptr ? furthest_failure - row.input.data() : kNone;
    EXPECT_EQ(failure, row.furthest_failure) << text;
  }
}

TEST(Match, StopsAtTheGivenEndAndKeepsAFailureFurtherOn) {
  const Grammar grammar(TextView("s = <'a' | ` `>;"));
  const char* const input = "a aa";
  furthest_failure = input + 3;
  const std::uint64_t remaining = 2;
  EXPECT_EQ(match(grammar.start_rule, input, remaining, *grammar.rules)->length, 2U);
  EXPECT_EQ(furthest_failure, input + 3);
}

TEST(Match, FailsWholeWhenItNestsTooDeep) {
  const Grammar grammar(TextView("s = 'x', s | !'x';"));
  EXPECT_NE(match_whole(grammar, std::string(1998, 'x') + "y"), nullptr);
  EXPECT_EQ(match_whole(grammar, std::string(1999, 'x') + "y"), nullptr);
}

TEST(Match, TakesTreesThatNoTextGives) {
  const auto term = [](const GrammarNode& holder) -> GrammarNode& {
    return first_child(first_child(last_child(holder)));
  };
  const Grammar bare(TextView("s = ('a', 'b'), 'c';"));
  term(*bare.start_rule).type = NodeType::alternation;
  EXPECT_EQ(tree_text(*match_whole(bare, "abc"), bare), "...(...('a' 'b') 'c')");
  const Grammar alone(TextView("s = (('a', 'b')), 'c';"));
  term(term(*alone.start_rule)).type = NodeType::alternation;
  EXPECT_EQ(tree_text(*match_whole(alone, "abc"), alone), "...('a' 'b' 'c')");
  const CapturedStdout captured;
  const Grammar except(TextView("s = !'a';"));
  first_child(term(*except.start_rule)).type = NodeType::terminal_string;
  EXPECT_EQ(match_whole(except, "a")->length, 1U);
  EXPECT_EQ(captured.bytes(), "unkown type with type = 8\n");
}

TEST(Match, VectorsGrowSixteenfoldAndNodesAreClearedWhole) {
  for (const auto& [count, capacity] : {std::pair(16U, 16U), {17U, 272U}, {273U, 4368U}}) {
    const MatchNodePtr result =
        match_whole(Grammar(TextView("s = {'a'};")), std::string(count, 'a'));
    const NodeVector& children = *result->children;
    EXPECT_EQ(children.capacity, capacity);
    EXPECT_EQ(std::count(children.items, children.items + capacity, nullptr), capacity - count);
    clear(*result);
    EXPECT_TRUE(result->children == nullptr && result->start == nullptr && result->length == 0);
  }
}

}  // namespace
}  // namespace svcinst
