#include "grammar/reader.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "grammar/find_text.h"
#include "tests/grammar/tree_text.h"

namespace svcinst {
namespace {

using Read = std::function<NodePtr(const char*, std::uint64_t, ReadError&)>;

// What `read` makes of `text`: the tree, how many bytes it spans from where it begins, and the last
// note as code@offset.
std::string outcome(const Read& read, const std::string& text) {
  ReadError error;
  const NodePtr node = read(text.c_str(), text.size(), error);
  std::string shown = tree_text(node.get());
  if (node) {
    EXPECT_EQ(node->begin, text.c_str()) << text;
    shown += " " + std::to_string(node->end - node->begin);
  }
  if (error.position == nullptr) return shown;
  return shown + " " + std::to_string(error.code) + "@" +
         std::to_string(error.position - text.c_str());
}

struct Row {
  std::string text;
  std::string expected;
};

template <std::size_t N>
void expect_outcomes(const Read& read, const Row (&rows)[N]) {
  for (const Row& row : rows) EXPECT_EQ(outcome(read, row.text), row.expected) << row.text;
}

TEST(ReadBlank, CollectsWhitespaceAndCommentsOfThreeKinds) {
  const Row rows[] = {
      {"", "none 0@0"},
      {"x ", "none 0@0"},
      {" \t\v\f\r\nx",
       "unuse_string(whitespace[ ] whitespace[\t] whitespace[\v] whitespace[\f] "
       "whitespace[\r] whitespace[\n]) 6 0@6"},
      {"\x08", "none 0@0"},
      {"\x0e", "none 0@0"},
      {"(* a (* b *) c", "unuse_string(comment[(* a (* b *)] whitespace[ ]) 13 0@13"},
      {"/* *//**/x", "unuse_string(comment[/* */] comment[/**/]) 9 0@9"},
      {"// (* *)\n x", "unuse_string(comment[// (* *)\n] whitespace[ ]) 10 0@10"},
      {"// no end", "none 0@0"},
      {"(*)", "none 0@0"},
      {"/*/", "none 0@0"}};
  expect_outcomes(read_blank, rows);
  const Row comments[] = {{"// no end", "none 10@2"}, {"//", "none"}, {"//\n", "comment[//\n] 3"},
                          {"(* //\n", "none"},        {"(*", "none"}, {" //\n", "none"}};
  expect_outcomes(read_comment, comments);
}

TEST(ReadTerminal, ReadsEachKindAndNotesWhatIsMissing) {
  const Row rows[] = {
      {".", ". 1"},
      {"", "none 9@0"},
      {"'a'x", "'a' 3 3@0"},
      {"''", "'' 2 3@0"},
      {"\"a'b\"", "\"a'b\" 5 3@0"},
      {"`-z`", "`-z` 4 3@0"},
      {"'a", "none 9@0"},
      {"'a'~'z'", "~('a' 'z') 7 4@0"},
      {"\"a\"~\"z\"", "~(\"a\" \"z\") 7 4@0"},
      {"'a'~\"z\"", "'a' 3 3@0"},
      {"'a' ~'z'", "'a' 3 3@0"},
      {"0x41~90", "~(0x41 90) 7 2@5"},
      {"65~0X5a;", "~(65 0X5a) 7 2@0"},
      {"65~", "none 9@0"},
      {"65", "none 9@0"},
      {"!'\"'", "!('\"') 4 3@1"},
      {"!!.", "!(!(.)) 3 3@1"},
      {"!'a'~'b'", "!(~('a' 'b')) 8 4@1"},
      {"! 'x'", "none 9@1"},
      {"!", "none 9@0"},
  };
  expect_outcomes(read_terminal, rows);
  const Row ranges[] = {{"'a'~", "none 3@0"},
                        {"1~", "none 8@1"},
                        {"1~x", "none 3@2"},
                        {"1 ~2", "none 8@1"},
                        {"'a'~'z", "none 3@0"}};
  expect_outcomes(read_range, ranges);
}

TEST(ReadTerminal, LiteralsEndAtTheFirstClosingDelimiter) {
  const Row quotes[] = {
      {"'a'b'", "'a' 3"}, {"'", "none 6@1"}, {"'ab", "none 6@1"}, {"x'a'", "none"}, {"", "none"}};
  expect_outcomes(read_quote_string, quotes);
  const Row dquotes[] = {{"\"\"\"", "\"\" 2"}, {"\"", "none 7@1"}, {"'a'", "none"}};
  expect_outcomes(read_dquote_string, dquotes);
  const Row sets[] = {{"`a`", "`a` 3"}, {"`a", "none 5@1"}, {"", "none"}};
  expect_outcomes(read_sort_string, sets);
}

TEST(ReadInteger, TriesHexadecimalBeforeDecimal) {
  const Row rows[] = {{"0x1Fg", "0x1F 4"},     {"0XaF9", "0XaF9 5"}, {"0xZ", "0 1 1@2"},
                      {"0x", "0 1 1@2"},       {"0", "0 1 2@0"},     {"1x2", "1 1 2@0"},
                      {"0129:", "0129 4 2@0"}, {"x", "none 3@0"},    {"", "none 3@0"}};
  expect_outcomes(read_integer, rows);
}

TEST(ReadIdentifier, KeepsInnerBlanksAndDropsTrailingOnes) {
  const Row rows[] = {{"a b \t= x", ":a b 3"}, {"0_Zz9-", ":0_Zz9 5"}, {"a", ":a 1"},
                      {" a", "none 11@0"},     {"", "none 11@0"},      {"[", "none 11@0"},
                      {"@", "none 11@0"},      {"a\xc3", ":a 1"}};
  expect_outcomes([](const char* position, std::uint64_t /*remaining*/,
                     ReadError& error) { return read_identifier(position, error); },
                  rows);
}

TEST(ReadStructures, ReadsGroupsOptionsAndRepetitions) {
  const Row groups[] = {{" ( a ) ", "group(|(,(:a))) 6 0@5"},
                        {"(a|b,c)", "group(|(,(:a) ,(:b :c))) 7 0@6"},
                        {"a", "none 14@0"},
                        {" [", "none 14@1"},
                        {"( )", "none 13@1"},
                        {"(a ]", "none 12@3"},
                        {"(a", "none 12@2"}};
  expect_outcomes(read_group, groups);
  const Row options[] = {{"[a | b]", "option(|(,(:a) ,(:b))) 7 0@6"},
                         {"[a | | b]", "option(|(,(:a)) |(,(:b))) 9 0@8"},
                         {"[a||b||c]x", "option(|(,(:a)) |(,(:b)) |(,(:c))) 9 0@8"},
                         {" x", "none 18@1"},
                         {"[", "none 17@1"},
                         {"[a||]", "none 16@4"},
                         {"[a )", "none 15@3"}};
  expect_outcomes(read_option, options);
  const Row repeats[] = {{"{a}", "repeat(|(,(:a))) 3 3@3"},
                         {"{a} x", "repeat(|(,(:a))) 4 3@4"},
                         {" 3 { a } 0x5 ", "repeat(3 |(,(:a)) 0x5) 12 0@9"},
                         {"{a}5b", "repeat(|(,(:a)) 5) 4 2@3"},
                         {"< a >5", "repeat >= 1(|(,(:a))) 5 0@4"},
                         {"3<a>", "none 20@1"},
                         {"3 x", "none 20@2"},
                         {" x", "none 20@1"},
                         {"{a", "none 19@2"},
                         {"<a }", "none 19@3"},
                         {"{}", "none 11@1"}};
  expect_outcomes(read_repeat, repeats);
}

TEST(ReadLists, SeparatorsMayHaveBlanksAroundAndNothingBehind) {
  const Row alternations[] = {{"a | b ;", "|(,(:a) ,(:b)) 6 0@6"},
                              {"'a' | ;", "|(,('a')) 5 11@6"},
                              {"'a' , |'b'", "|(,('a') ,('b')) 10 0@10"},
                              {" ;", "none 11@1"},
                              {"|a", "none 11@0"}};
  expect_outcomes(read_alternation, alternations);
  const Row concatenations[] = {{"'a', (b) ,[c],{d},<e>, f",
                                 ",('a' group(|(,(:b))) option(|(,(:c))) "
                                 "repeat(|(,(:d))) repeat >= 1(|(,(:e))) :f) 24 0@24"},
                                {"'a' /**/ ,;", ",('a') 10 11@10"}};
  expect_outcomes(read_concatenation, concatenations);
  const Row terms[] = {{"0xZ", ":0xZ 3 20@1"},
                       {"3 x", ":3 x 3 20@2"},
                       {"x", ":x 1 20@0"},
                       {".", ". 1 0@0"},
                       {" ]", "none 11@1"}};
  for (const Row& row : terms) EXPECT_EQ(outcome(read_term, row.text), row.expected);
}

TEST(ReadRule, NeedsNameDefinitionAndEnd) {
  const Row rows[] = {{" /**/long param /**/ = x ; y", "rule(:long param |(,(:x))) 26 0@25"},
                      {"x='a' | ;", "rule(:x |(,('a'))) 9 0@8"},
                      {"a", "none 21@1"},
                      {"a /**/b", "none 21@6"},
                      {"=", "none 11@0"},
                      {"a = ;", "none 11@4"},
                      {"a = 'x'", "none 0@7"},
                      {"a = 3<x>;", "none 0@5"}};
  expect_outcomes(read_rule, rows);
}

TEST(ReadGrammar, KeepsTheRulesBeforeTheFirstUnreadableOne) {
  const Row rows[] = {
      {" a=b; // end\n", "syntax(rule(:a |(,(:b)))) 13 0@13"},
      {"a=b;c='d';e", "syntax(rule(:a |(,(:b))) rule(:c |(,('d')))) 10 0@10"},
      {"a=b (* x (* y *) c *)", "none 0@0"},
      {"", "none 0@0"},
      {" \n", "none 0@2"},
  };
  expect_outcomes(read_grammar, rows);
}

// Opens `depth` constructs of one kind round one `a`.
std::string nested(const std::string& open, const std::string& close, int depth) {
  std::string text = "x=";
  for (int i = 0; i < depth; ++i) text += open;
  text += "'a'";
  for (int i = 0; i < depth; ++i) text += close;
  return text + ";";
}

TEST(ReadGrammar, FailsAsAWholePastTheNestingLimit) {
  const struct {
    const char* open;
    const char* close;
    int levels;  // besides the constructs themselves: the rule's own alternation
  } rows[] = {{"(", ")", 1}, {"[", "]", 1}, {"{", "}", 1}, {"<", ">", 1}, {"!", "", 1}};
  for (const auto& row : rows) {
    const int deepest = static_cast<int>(kMaxNesting) - row.levels;
    for (const int depth : {deepest, deepest + 1, 100000}) {
      const std::string text = "first='f';" + nested(row.open, row.close, depth);
      ReadError error;
      const NodePtr root = read_grammar(text.c_str(), text.size(), error);
      EXPECT_EQ(root != nullptr, depth == deepest) << row.open << depth;
      EXPECT_EQ(read_alternation(text.c_str() + 12, text.size() - 12, error) != nullptr,
                depth == deepest);
      EXPECT_NE(read_grammar("x='a';", 6, error), nullptr);
    }
  }
}

TEST(FindText, FindsTheFirstOffsetWhollyInside) {
  const std::string text = "abcabd";
  EXPECT_EQ(find_text(text.data(), 0, 5, "ab", 2), 0U);
  EXPECT_EQ(find_text(text.data(), 1, 5, "ab", 2), 3U);
  EXPECT_EQ(find_text(text.data(), 1, 4, "ab", 2), 3U);
  EXPECT_EQ(find_text(text.data(), 1, 3, "ab", 2), std::nullopt);
  EXPECT_EQ(find_text(text.data(), 4, 3, "b", 1), std::nullopt);
  EXPECT_EQ(find_text(text.data(), 0, 5, "abcabde", 7), std::nullopt);
}

TEST(FindText, FindsLongNeedlesToo) {
  const std::string needle = std::string(100, 'a') + "b" + std::string(199, 'a');
  for (const std::uint64_t offset : {0U, 1U, 7U, 299U, 300U, 301U, 450U}) {
    const std::string text = std::string(offset, 'a') + needle + "aaaa";
    const std::uint64_t last = offset + needle.size() - 1;
    EXPECT_EQ(find_text(text.data(), 0, text.size() - 1, needle.data(), needle.size()), offset);
    EXPECT_EQ(find_text(text.data(), 0, last, needle.data(), needle.size()), offset);
    EXPECT_EQ(find_text(text.data(), 0, last - 1, needle.data(), needle.size()), std::nullopt);
    EXPECT_EQ(find_text(text.data(), offset + 1, last + 4, needle.data(), needle.size()),
              std::nullopt);
  }
  const std::string other(600, 'c');
  EXPECT_EQ(find_text(other.data(), 0, 599, needle.data(), needle.size()), std::nullopt);
}

}  // namespace
}  // namespace svcinst
