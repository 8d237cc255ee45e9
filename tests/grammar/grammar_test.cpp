#include "grammar/grammar.h"

#include <gtest/gtest.h>

#include <string>

#include "grammar/matcher.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

std::string rule_text(const Grammar& grammar) {
  return tree_text(grammar.root.get());
}

TEST(Grammar, NumbersRulesInTextOrderAndResolvesNamesBothWays) {
  const Grammar grammar("b = a; a = b, (a | 'x'), {c}; c = ' ';");
  EXPECT_EQ(rule_text(grammar),
            "syntax(rule(#0 |(,(#1))) rule(#1 |(,(#0 group(|(,(#1) ,('x'))) repeat(|(,(#2)))))) "
            "rule(#2 |(,(' '))))");
  EXPECT_EQ(grammar.start_rule, first_child(*grammar.root));
  EXPECT_EQ(grammar.result, nullptr);
  EXPECT_EQ(grammar.rules->count, 2112U);
  for (std::uint64_t slot = 0; slot < grammar.rules->count; ++slot) {
    const bool filled = slot >= 1024 && slot <= 1026;
    EXPECT_EQ(grammar.rules->slots[slot] != nullptr, filled) << slot;
  }
  EXPECT_EQ(grammar.rules->slots[1025], second_child(*grammar.root));
}

TEST(Grammar, OfTwoRulesWithOneNameTheLaterOneCounts) {
  const Grammar grammar("a = 'x'; b = a; a = 'y';");
  EXPECT_EQ(rule_text(grammar), "syntax(rule(#2 |(,('x'))) rule(#1 |(,(#2))) rule(#2 |(,('y'))))");
  EXPECT_EQ(grammar.rules->slots[1024], nullptr);
  EXPECT_EQ(grammar.rules->slots[1026], last_child(*grammar.root));
}

TEST(Grammar, ReportsEachUseOfAnUnknownNameAndWorksWithoutIt) {
  const CapturedStdout captured;
  const Grammar grammar("a = no rule | 'x', [nor this] | {no rule}, identifier;");
  EXPECT_EQ(captured.bytes(),
            "unkown identifier no rule\nunkown identifier nor this\nunkown identifier no rule\n"
            "unkown identifier identifier\n");
  furthest_failure = nullptr;
  const std::uint64_t one = 1;
  EXPECT_EQ(tree_text(match(grammar.start_rule, "x", one, *grammar.rules).get()), "'x'");
  EXPECT_EQ(furthest_failure, nullptr);
}

TEST(Grammar, WithoutAnyRuleNothingMatches) {
  const Grammar grammar("= broken");
  EXPECT_EQ(grammar.start_rule, nullptr);
  const std::uint64_t none = 0;
  EXPECT_EQ(match(grammar.start_rule, "", none, *grammar.rules), nullptr);
}

TEST(Grammar, RulesPastTheLastNumberAreUnknown) {
  std::string text = "start = r1023;";
  for (int i = 1; i <= 1024; ++i) {
    text += "r" + std::to_string(i) + "=" + (i == 1 ? "r1024" : "'x'") + ";";
  }
  const CapturedStdout captured;
  const Grammar grammar(text);
  EXPECT_EQ(captured.bytes(), "unkown identifier r1024\nunkown identifier r1024\n");
  EXPECT_EQ(grammar.rules->slots[2047], grammar.root->children.tail->previous->value.get());
  EXPECT_EQ(grammar.rules->slots[2048], nullptr);
}

TEST(NameLess, OrdersBytesAsSignedAndPrefixesFirst) {
  const NameLess less;
  EXPECT_TRUE(less("a", "b"));
  EXPECT_TRUE(less("a", "aa"));
  EXPECT_FALSE(less("aa", "a"));
  EXPECT_FALSE(less("a", "a"));
  EXPECT_TRUE(less("\x80", "a"));
}

}  // namespace
}  // namespace svcinst
