// docs/grammar-notation.md, bytes, limits, reports, and what the tool itself doesn't call.
#include "grammar/find_text.h"
#include "grammar/matcher.h"
#include "grammar/reading_steps.h"
#include "tests/support/examples.h"

using namespace svcinst;

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

TEST(Read, BlankTextIsWhitespaceAndComments) {
  ReadError error;
  const TextView text = "(*1*)\t\n\v\f\r /*2*///3\nx";
  const GrammarNodePtr blank = read_blank({text.data(), text.size()}, error);
  EXPECT_EQ(text_of(*blank), text.substr(0, text.size() - 1));
  EXPECT_EQ(second_child(*blank).type, NodeType::whitespace);
  EXPECT_EQ(text_of(*read_comment({text.data(), text.size()}, error)), "(*1*)");
  EXPECT_EQ(read_blank({text.end() - 1, 1}, error), nullptr);
}

TEST(FindText, FindsShortAndLongTextsWithinItsBounds) {
  for (const std::uint64_t length : {256U, 257U}) {
    const std::string needle = std::string(length - 1, 'a') + 'b';
    const std::string text = std::string(400, 'a') + "x" + needle + needle;
    const std::uint64_t last = text.size() - 1;
    EXPECT_EQ(find_text(text.data(), 1, last, needle.data(), length), 401U);
    EXPECT_EQ(find_text(text.data(), 402, last, needle.data(), length), 401 + length);
    EXPECT_EQ(find_text(text.data(), 402, last - 1, needle.data(), length), std::nullopt);
  }
}

TEST(NodeType, HasTheNamesThatReportsShow) {
  EXPECT_STREQ(node_type_name(NodeType::syntax), "syntax");
  EXPECT_STREQ(node_type_name(NodeType::repeat_at_least_once), "repeat >= 1");
}

// The start of `input` that the grammar matches, or where it fails.
std::string match_with(Grammar& grammar, TextView input) {
  const std::uint64_t remaining = input.size();
  furthest_failure = nullptr;
  grammar.result = match(grammar.start_rule, input.data(), remaining, *grammar.rules);
  if (grammar.result) return "matches `" + std::string(text_of(*grammar.result)) + "`";
  if (furthest_failure == nullptr) return "fails";
  return "fails at " + std::to_string(furthest_failure - input.data());
}

std::string outcome(const std::string& grammar_cell, const std::string& input_cell) {
  const std::string text = text_of(grammar_cell);
  Grammar grammar{TextView(text)};
  return match_with(grammar, text_of(input_cell));
}

// Terminals as their text in quotes, other nodes as name(children) with the name of the rule, or
// "..." where there is none.
std::string tree_text(const MatchNode& node, const Grammar& grammar) {
  if (node.type == kTerminalType) return "'" + std::string(text_of(node)) + "'";
  std::string children;
  for (const MatchNode* child : children_of(node)) children += " " + tree_text(*child, grammar);
  if (!children.empty()) children.erase(0, 1);
  TextView name = "...";
  for (std::uint16_t number = 0; const auto& rule : grammar.root->children)
    if (node.type == rule_result_type(number++)) name = text_of(first_child(*rule));
  return std::string(name) + "(" + children + ")";
}

std::string result_tree(const std::string& grammar_cell, const std::string& input_cell) {
  const std::string text = text_of(grammar_cell);
  const std::string input = text_of(input_cell);
  Grammar grammar{TextView(text)};
  match_with(grammar, input);
  return grammar.result ? tree_text(*grammar.result, grammar) : "fails";
}

TEST(Match, DoesWhatThePageShows) {
  check_examples("grammar-notation.md", "grammar", outcome);
  check_examples("grammar-notation.md", "result", result_tree);
}

TEST(Grammar, ReportsNamesWithoutARuleAndThoseOfRulesBeyondTheLast) {
  std::string text = "s = no rule | r1024 | 'a', r1023;";
  for (int i = 1; i <= 1024; ++i) text += "r" + std::to_string(i) + " = 'x';";
  CaptureStdout();
  EXPECT_EQ(outcome(text, "ax"), "matches `ax`");
  EXPECT_EQ(GetCapturedStdout(),
            "unkown identifier no rule\nunkown identifier r1024\nunkown identifier r1024\n");
  EXPECT_EQ(outcome("broken", "x"), "fails");
}

TEST(Match, TestsTerminalsByBytesOrCharacters) {
  const std::string fails = "fails at 0";
  const std::string rows[][3] = {
      {"`\200\377bdfh`", "\377", "matches `\377`"},  // ascending as signed bytes
      {"'a'~'\200'", "\377", "matches `\377`"},      // above every byte
      {"'\200'~'\377'", "\220", fails},
      {"2097151~2097151", "\367\277\277\277", "matches `\367\277\277\277`"},
      {"0~4294967295", "\342\202\303", fails},
      {"0~4294967295", "\370\200\200\200\200", fails},
      {".", "\342\202", "matches `\342`"},
      {"!'x'", "", fails},
      {"!!'x'", "x", "matches `x`"},
      {"[s | s], {s}, 'x' | 'x'", "x", "fails"},  // refers to itself first
  };
  for (const auto& [terminal, input, expected] : rows)
    EXPECT_EQ(outcome("s = " + terminal + ";", input), expected) << terminal;
}

TEST(Match, FailsWholeWhenItNestsTooDeep) {
  const std::string text = std::string(1999, 'x') + "y";
  EXPECT_EQ(outcome("s = 'x', s | !'x';", text), "fails at 1999");
  EXPECT_EQ(outcome("s = 'x', s | !'x';", text.substr(1)), "matches `" + text.substr(1) + "`");
}
