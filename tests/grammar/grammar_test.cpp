// What docs/grammar-notation.md does not show: bytes, limits, and reports.
#include <gtest/gtest.h>

#include "grammar/matcher.h"
#include "grammar/reader.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

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
  EXPECT_EQ(error.code, ReadCode::blank_ends) << "behind the rules, where it looks last";
}

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
  EXPECT_EQ(tree_text(*match_whole(grammar, "x"), grammar), "...(b() r1022('x'))");
  EXPECT_EQ(match_whole(Grammar(TextView("broken")), "x"), nullptr);
}

TEST(Match, TestsTerminalsByBytesOrCharacters) {
  constexpr int kFails = -1;
  constexpr int kNone = -1;
  const struct {
    TextView terminal, input;
    int length, furthest_failure;
  } rows[] = {
      {"`\200\377bdfh`", "\377", 1, kNone},  // ascending as signed bytes
      {"'a'~'\200'", "\377", 1, kNone},      // above every byte
      {"'\200'~'\377'", "\220", kFails, 0},
      {"2097151~2097151", "\367\277\277\277", 4, kNone},
      {"0~4294967295", "\342\202\303", kFails, 0},
      {"0~4294967295", "\370\200\200\200\200", kFails, 0},
      {".", "\342\202", 1, kNone},
      {"!'x'", "", kFails, 0},
      {"!!'x'", "x", 1, 0},
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

TEST(Match, FailsWholeWhenItNestsTooDeep) {
  const Grammar grammar(TextView("s = 'x', s | !'x';"));
  EXPECT_NE(match_whole(grammar, std::string(1998, 'x') + "y"), nullptr);
  EXPECT_EQ(match_whole(grammar, std::string(1999, 'x') + "y"), nullptr);
}

}  // namespace
}  // namespace svcinst
