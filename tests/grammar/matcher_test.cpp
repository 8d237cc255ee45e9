#include "grammar/matcher.h"

#include <gtest/gtest.h>

#include <string>

#include "grammar/nesting.h"
#include "grammar/utf8.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

// The result tree of `input` and, behind an @, the furthest failure as an offset.
std::string match_text(const std::string& grammar_text, const std::string& input) {
  const Grammar grammar(grammar_text);
  furthest_failure = nullptr;
  const std::uint64_t remaining = input.size();
  const MatchNodePtr result = match(grammar.start_rule, input.c_str(), remaining, *grammar.rules);
  std::string shown = tree_text(result.get());
  if (furthest_failure == nullptr) return shown;
  return shown + "@" + std::to_string(furthest_failure - input.c_str());
}

struct Row {
  std::string grammar;
  std::string input;
  std::string expected;
};

template <std::size_t N>
void expect_matches(const Row (&rows)[N]) {
  for (const Row& row : rows) {
    EXPECT_EQ(match_text(row.grammar, row.input), row.expected)
        << row.grammar << " on " << row.input;
  }
}

TEST(MatchTerminal, TestsEachKindAndRecordsItsFailures) {
  const Row rows[] = {
      {"s='abc';", "abcd", "'abc'"},
      {"s='abc';", "ab", "none@0"},
      {"s='abc';", "abd", "none@0"},
      {"s=\"aB\";", "ab", "none@0"},
      {"s='x','abc';", "xabd", "none@1"},
      {"s='';", "", "''"},
      {"s='x','';", "x", "0('x' '')"},
      {"s=` -`;", "-", "'-'"},
      {"s=` -`;", " ", "' '"},
      {"s=` -`;", "x", "none@0"},
      {"s=` -`;", "", "none@0"},
      {"s=``;", "x", "none@0"},
      {"s=`ba`;", "a", "none@0"},
      {std::string("s=`\0a`;", 7), "", "none@0"},
      {"s=`\x80\xff"
       "bdfh`;",
       "\xff", "'\xff'"},
      {"s=`\x80\xff"
       "bdfh`;",
       "h", "'h'"},
      {"s=`\x80\xff"
       "bdfh`;",
       "c", "none@0"},
      {"s=`\x80\xff"
       "bdfh`;",
       "\x80", "'\x80'"},
      {"s=`zya`;", "z", "none@0"},
      {"s='a'~'z';", "a", "'a'"},
      {"s='a'~'z';", "z", "'z'"},
      {"s='a'~'z';", "{", "none@0"},
      {"s='a'~'z';", "`", "none@0"},
      {"s='a'~'z';", "\xc3\xa9", "none@0"},
      {"s='a'~'z';", "", "none"},
      {"s='a'~'\x80';", "\xff", "'\xff'"},
      {"s='\x80'~'\xff';", "\x90", "none@0"},
      {"s=0x41~90;", "Z", "'Z'"},
      {"s=65~0x5A;", "[", "none@0"},
      {"s=65~0x5A;", "@", "none@0"},
      {"s=65~0x5A;", "A", "'A'"},
      {"s=0x80~0x10FFFF;", "\xc3\xa9", "'\xc3\xa9'"},
      {"s=0x80~0x10FFFF;", "\xc3", "none@0"},
      {"s=0x41~90;", "[", "none@0"},
      {"s=0~9;", "", "none"},
      {"s=0~9;", "\xff", "none@0"},
      {"s=.;", "\xff", "'\xff'"},
      {"s=.;", "\xe2\x82\xac!", "'\xe2\x82\xac'"},
      {"s=.;", "\xe2\x82", "'\xe2'"},
      {"s=.;", "", "none"},
      {"s=!'\"';", "x", "'x'@0"},
      {"s=!'\"';", "\"", "none@0"},
      {"s=!'\"';", "", "none@0"},
      {"s=!'x';", "\xc3\xa9", "'\xc3\xa9'@0"},
      {"s=!!'x';", "x", "'x'@0"},
      {"s='x',!.;", "xy", "none@1"},
  };
  expect_matches(rows);
}

TEST(MatchStructure, ChoicesAreOrderedAndSequencesFailAsAWhole) {
  const Row rows[] = {
      {"s='a'|'ab';", "ab", "'a'"},
      {"s='a','b'|'a','c';", "ac", "0('a' 'c')@1"},
      {"s='a','b','x'|'a';", "abc", "'a'@2"},
      {"s=('a'|'b'),'c';", "bc", "0('b' 'c')@0"},
      {"s=['a'|'b'],'c';", "c", "'c'@0"},
      {"s=['a'||'b'],'c';", "bc", "0('b' 'c')@0"},
      {"s=['a'],{'b'};", "", "0()@0"},
      {"s=(''),['a'];", "b", "0()@0"},
      {"s='',(''),'a';", "a", "0('' 'a')"},
      {"s=('a',('b',['c'])),'d';", "abcd", "0('a' 'b' 'c' 'd')"},
      {"s=('a',('b',['c'])),'d';", "abd", "0('a' 'b' 'd')@2"},
      {"s=[['a']];", "b", "0()@0"},
  };
  expect_matches(rows);
}

TEST(MatchRepeat, CountsAndFlattensItsIterations) {
  const Row rows[] = {
      {"s={'a'};", "b", "0()@0"},
      {"s={'a'};", "ab", "'a'@1"},
      {"s={'a'};", "aa", "0('a' 'a')"},
      {"s={'a','b'},'c';", "ababc", "0('a' 'b' 'a' 'b' 'c')@4"},
      {"s=<'a'>;", "", "none@0"},
      {"s=<'a'>;", "aab", "0('a' 'a')@2"},
      {"s=2{'a'};", "ab", "none@1"},
      {"s=2{'a'};", "aab", "0('a' 'a')@2"},
      {"s=0x2{'a'}0x3,'b';", "aaab", "0('a' 'a' 'a' 'b')"},
      {"s={'a'}2;", "aaa", "0('a' 'a')"},
      {"s={'a'}0,'b';", "b", "'b'"},
      {"s={'a'}0;", "a", "0()"},
      {"s=3{'a'}2;", "aaaa", "none"},
      {"s={''},'b';", "b", "'b'"},
      {"s={''};", "b", "0()"},
      {"s=3{''};", "b", "0()"},
      {"s=3{''};", "", "none"},
      {"s=<''>;", "", "0()"},
      {"s={['a']},'b';", "aab", "0('a' 'a' 'b')@2"},
      {"s={'a'|''},'b';", "ab", "0('a' '' 'b')@1"},
      {"s=5{['a']};", "ab", "'a'@1"},
  };
  expect_matches(rows);
}

TEST(MatchRule, LabelsWrapsAndTakesOver) {
  const Row rows[] = {
      {"s=a;a='x';", "x", "3('x')"},
      {"s=a;a='x','y';", "xy", "3('x' 'y')"},
      {"s=a;a={'x'};", "", "3()@0"},
      {"s=a;a=b;b='x';", "x", "3(4('x'))"},
      {"s=a,a;a=['x'];", "xy", "0(3('x') 3())@1"},
      {"s={a};a='x';", "xx", "0(3('x') 3('x'))"},
      {"s=[a],'y';a=['x'];", "y", "'y'@0"},
      {"s='x',s|'x';", "xxx", "0('x' 2('x' 2('x')))@3"},
      {"a='x',b;b='1';b='2';", "x2", "0('x' 4('2'))"},
  };
  expect_matches(rows);
}

TEST(Match, KeepsTheFurthestFailureOfAbandonedAlternatives) {
  EXPECT_EQ(match_text("s='a','b','c'|'a','x';", "abd"), "none@2");
  const Grammar grammar("s='a';");
  const std::string input = "xb";
  furthest_failure = input.c_str() + 1;
  const std::uint64_t remaining = input.size();
  EXPECT_EQ(match(grammar.start_rule, input.c_str(), remaining, *grammar.rules), nullptr);
  EXPECT_EQ(furthest_failure, input.c_str() + 1);
}

TEST(Match, StopsWhereTheInputEndsNotAtItsBytes) {
  const Grammar grammar("s=<'a'|` `>;");
  const std::uint64_t remaining = 2;
  EXPECT_EQ(tree_text(match(grammar.start_rule, "a aa", remaining, *grammar.rules).get()),
            "0('a' ' ')");
}

TEST(Match, FillsEveryFieldOfItsNodes) {
  const Grammar grammar("s='-',{a};a='x','y';");
  const std::string input = "-xyxy";
  const std::uint64_t remaining = input.size();
  const MatchNodePtr result = match(grammar.start_rule, input.c_str(), remaining, *grammar.rules);
  ASSERT_EQ(tree_text(result.get()), "0('-' 3('x' 'y') 3('x' 'y'))");
  EXPECT_EQ(result->start, input.c_str());
  EXPECT_EQ(result->length, 5U);
  EXPECT_EQ(result->children->count, 3U);
  EXPECT_EQ(result->children->capacity, 16U);
  EXPECT_EQ(result->children->items[15], nullptr);
  const MatchNode& last = *result->children->items[2];
  EXPECT_EQ(last.start, input.c_str() + 3);
  EXPECT_EQ(last.length, 2U);
  EXPECT_EQ(last.children->items[0]->children, nullptr);
  clear(*result);
  EXPECT_EQ(result->children, nullptr);
  EXPECT_EQ(result->start, nullptr);
  EXPECT_EQ(result->length, 0U);
}

TEST(Match, VectorsGrowSixteenfold) {
  const Grammar grammar("s={'a'};");
  const struct {
    std::uint64_t count, capacity;
  } rows[] = {{2, 16}, {16, 16}, {17, 272}, {272, 272}, {273, 4368}, {4369, 69904}};
  for (const auto& row : rows) {
    const std::string input(row.count, 'a');
    const MatchNodePtr result = match(grammar.start_rule, input.c_str(), row.count, *grammar.rules);
    EXPECT_EQ(result->children->count, row.count);
    EXPECT_EQ(result->children->capacity, row.capacity);
    EXPECT_EQ(result->children->items[row.capacity - 1] != nullptr, row.count == row.capacity);
  }
}

TEST(Match, ReportsNodesThatNothingCanMatch) {
  const CapturedStdout captured;
  const Grammar grammar("s='a';");
  first_child(*first_child(*second_child(*grammar.start_rule)))->type = NodeType::integer;
  const std::uint64_t remaining = 1;
  EXPECT_EQ(match(grammar.start_rule, "a", remaining, *grammar.rules), nullptr);
  EXPECT_EQ(match(grammar.root.get(), "a", remaining, *grammar.rules), nullptr);
  EXPECT_EQ(captured.bytes(), "unkown type with type = 18\nunkown type with type = 0\n");
}

TEST(Match, FailsAsAWholePastTheNestingLimit) {
  EXPECT_EQ(match_text("s=s,'x'|'x';", "x"), "none");
  EXPECT_EQ(match_text("s=[s|s],{s},'x'|'x';", "x"), "none");
  EXPECT_EQ(match_text("s=[a];a=a;", "x"), "none");
  const std::string grammar = "s='x',s|'x';";
  for (const std::uint64_t length : {kMaxNesting - 1, kMaxNesting}) {
    const std::string input(length, 'x');
    EXPECT_EQ(match_text(grammar, input).starts_with("none"), length == kMaxNesting) << length;
  }
}

TEST(DecodeUtf8, TakesPayloadBitsAndRefusesBrokenSequences) {
  const struct {
    const char* bytes;
    std::uint32_t length, code_point;
  } rows[] = {{"A", 1, 0x41},
              {"\x7f", 1, 0x7f},
              {"\xc3\xa9", 2, 0xe9},
              {"\xe2\x82\xac", 3, 0x20ac},
              {"\xf0\x9f\x98\x80", 4, 0x1f600},
              {"\xc0\x80", 2, 0},
              {"\xed\xa0\x80", 3, 0xd800},
              {"\xf7\xbf\xbf\xbf", 4, 0x1fffff},
              {"\x80", 0, 0},
              {"\xbf\x80", 0, 0},
              {"\xf8\x80\x80\x80\x80", 0, 0},
              {"\xc3", 0, 0},
              {"\xc3\xc3", 0, 0},
              {"\xe2\x82", 0, 0},
              {"\xf0\x9f\x98", 0, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(decode_utf8(row.bytes).length, row.length) << row.bytes;
    EXPECT_EQ(decode_utf8(row.bytes).code_point, row.code_point) << row.bytes;
  }
}

}  // namespace
}  // namespace svcinst
