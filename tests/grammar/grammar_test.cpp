#include "grammar/grammar.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "grammar/find_text.h"
#include "grammar/matcher.h"
#include "grammar/reader.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"
#include "tests/support/check_cases.h"

namespace svcinst {
namespace {

// What `read` makes of each text: the tree, how many bytes it spans, and the last note as
// code@offset.
template <class Read>
void check(Read read, const char* cases) {
  check_cases(cases, [read](const std::string& text) {
    ReadError error;
    const GrammarNodePtr node = read(text.c_str(), text.size(), error);
    std::string shown = tree_text(node.get());
    if (node) shown += " " + std::to_string(node->end - node->begin);
    if (node && node->begin != text.c_str()) shown += " begins elsewhere";
    if (error.position == nullptr) return shown;
    const std::string at = std::to_string(error.position - text.c_str());
    return shown + " " + std::to_string(static_cast<int>(error.code)) + "@" + at;
  });
}

TEST(Read, BlankTextIsWhitespaceAndCommentsOfThreeKinds) {
  check(read_blank,
        " -> none 0@0 $ x  -> none 0@0 $ \x08 -> none 0@0 $ \x0e -> none 0@0 $ "
        "// no end -> none 0@0 $  \t\v\f\r\nx -> 30(  \t \v \f \r \n) 6 0@6 $ (*) -> none 0@0 $ "
        "/*/ -> none 0@0 $ (* a (* b *) c -> 30((* a (* b *)  ) 13 0@13 $ "
        "/* *//**/x -> 30(/* */ /**/) 9 0@9 $ // (* *)\n x -> 30(// (* *)\n  ) 10 0@10");
  check(read_comment,
        "// no end -> none 10@2 $ // -> none $ //\n -> //\n 3 $ (* //\n -> none $ (* -> none");
}

TEST(Read, TerminalsEndAtTheirFirstDelimiter) {
  check(read_terminal,
        ". -> . 1 $  -> none 9@0 $ 'a'x -> 'a' 3 3@0 $ \"a'b\" -> \"a'b\" 5 3@0 $ "
        "`-` -> `-` 3 3@0 $ 'a -> none 9@0 $ 'a'~'z' -> 13('a' 'z') 7 4@0 $ "
        "\"a\"~\"z\" -> 13(\"a\" \"z\") 7 4@0 $ 'a'~\"z\" -> 'a' 3 3@0 $ 'a' ~'z' -> 'a' 3 3@0 $ "
        "0x41~90 -> 13(0x41 90) 7 2@5 $ 65~0X5a; -> 13(65 0X5a) 7 2@0 $ 65~ -> none 9@0 $ "
        "!'\"' -> 9('\"') 4 3@1 $ !!. -> 9(9(.)) 3 3@1 $ !'a'~'b' -> 9(13('a' 'b')) 8 4@1 $ "
        "! 'x' -> none 9@1 $ ! -> none 9@0");
  check(read_range, "'a'~ -> none 3@0 $ 1~ -> none 8@1 $ 1~x -> none 3@2 $ 'a'~'z -> none 3@0");
  check(read_quote_string, "'a'b' -> 'a' 3 $ ' -> none 6@1 $ 'ab -> none 6@1 $ x'a' -> none");
  check(read_dquote_string, "\"\"\" -> \"\" 2 $ \" -> none 7@1");
  check(read_sort_string, "`a` -> `a` 3 $ `a -> none 5@1");
  check(read_integer,
        "0xfFG -> 0xfF 4 $ 0xag -> 0xa 3 $ 0XaF9 -> 0XaF9 5 $ 0xZ -> 0 1 1@2 $ 0x -> 0 1 1@2 $ 0 "
        "-> 0 1 2@0 $ "
        "0129: -> 0129 4 2@0 $ x -> none 3@0 $  -> none 3@0");
  const auto identifier = [](auto at, auto, auto& error) { return read_identifier(at, error); };
  check(identifier,
        "a b \t= x -> a b 3 $ 0_Zz9- -> 0_Zz9 5 $ aA -> aA 2 $  a -> none 11@0 $  -> none 11@0 $ "
        "a\xc3 -> a 1 $ A/ -> A 1 $ 9: -> 9 1 $ Z@ -> Z 1 $ A[ -> A 1 $ z` -> z 1 $ a{ -> a 1");
}

TEST(Read, GroupsOptionsAndRepetitionsHaveABody) {
  check(read_group,
        " ( a ) -> 5(2(3(a))) 6 0@5 $ (a|b,c) -> 5(2(3(a) 3(b c))) 7 0@6 $ a -> none 14@0 $ "
        " [ -> none 14@1 $ ( ) -> none 13@1 $ (a ] -> none 12@3");
  check(read_option,
        "[a | b] -> 6(2(3(a) 3(b))) 7 0@6 $ [a | | b] -> 6(2(3(a)) 2(3(b))) 9 0@8 $ "
        "[a||b||c]x -> 6(2(3(a)) 2(3(b)) 2(3(c))) 9 0@8 $  x -> none 18@1 $ [ -> none 17@1 $ "
        "[a||] -> none 16@4 $ [a ) -> none 15@3");
  check(read_repeat,
        "{a} x -> 7(2(3(a))) 4 3@4 $  3 { a } 0x5  -> 7(3 2(3(a)) 0x5) 12 0@9 $ "
        "{a}5b -> 7(2(3(a)) 5) 4 2@3 $ < a >5 -> 32(2(3(a))) 5 0@4 $ {} -> none 11@1 $ "
        "3<a> -> none 20@1 $ 3 x -> none 20@2 $  x -> none 20@1 $ {a -> none 19@2 $ "
        "<a } -> none 19@3");
}

TEST(Read, ListsMayEndWithASeparatorAndGrammarsWithAnythingUnreadable) {
  check(read_alternation,
        "a | b ; -> 2(3(a) 3(b)) 6 0@6 $ 'a' | ; -> 2(3('a')) 5 11@6 $  ; -> none 11@1 $ "
        "'a' , |'b' -> 2(3('a') 3('b')) 10 0@10");
  check(
      read_concatenation,
      "'a', (b) ,[c],{d},<e>, f -> 3('a' 5(2(3(b))) 6(2(3(c))) 7(2(3(d))) 32(2(3(e))) f) 24 0@24 $ "
      "'a' /**/ ,; -> 3('a') 10 11@10");
  check(read_term, "x -> x 1 20@0 $ . -> . 1 0@0");
  check(read_rule,
        " /**/long param /**/ = x ; y -> 1(long param 2(3(x))) 26 0@25 $ = -> none 11@0 $ "
        "x='a' | ; -> 1(x 2(3('a'))) 9 0@8 $ a -> none 21@1 $ a /**/b -> none 21@6 $ "
        "a = ; -> none 11@4 $ a = 'x' -> none 0@7 $ a = 3<x>; -> none 0@5");
  check(read_grammar,
        " a=b; // end\n -> 0(1(a 2(3(b)))) 13 0@13 $ a=b (* x (* y *) c *) -> none 0@0 $ "
        "a=b;c='d';e -> 0(1(a 2(3(b))) 1(c 2(3('d')))) 10 0@10 $  \n -> none 0@2");
}

TEST(Read, ARuleNestedPastTheLimitCantBeRead) {
  for (const char* brackets : {"()", "[]", "{}", "<>", "!"}) {
    for (const std::uint32_t depth : {1999U, 2000U, 100'000U}) {
      const std::string close(brackets[1] != '\0' ? depth : 0, brackets[1]);
      const std::string text =
          "f='f';x='b'|" + std::string(depth, brackets[0]) + "'a'" + close + ";";
      ReadError error;
      const GrammarNodePtr root = read_grammar(text.c_str(), text.size(), error);
      EXPECT_EQ(&first_child(*root) == &last_child(*root), depth > 1999) << brackets;
      EXPECT_EQ(error.depth, 0U);
    }
  }
}

TEST(FindText, FindsTheFirstOffsetWhollyInside) {
  for (const std::uint64_t third : {0U, 1U, 85U, 86U, 100U}) {
    const std::string needle = "d" + std::string(third, 'a') + "b" + std::string(2 * third, 'a');
    for (const std::uint64_t offset : {0U, 1U, 7U, 8U, 300U, 301U, 450U}) {
      const std::string text = std::string(offset, "ca"[offset % 2]) + needle + "aaaa";
      const std::uint64_t last = offset + needle.size() - 1;
      const auto find = [&](std::uint64_t first, std::uint64_t end) {
        return find_text(text.data(), first, end, needle.data(), needle.size());
      };
      EXPECT_EQ(find(0, last + 4), offset);
      EXPECT_EQ(find(offset, last), offset);
      EXPECT_FALSE(find(0, last - 1) || find(offset + 1, last + 4) || find(offset + 1, last));
    }
  }
}

MatchNodePtr match_whole(const Grammar& grammar, const std::string& input) {
  const std::uint64_t remaining = input.size();
  furthest_failure = nullptr;
  return match(grammar.start_rule, input.c_str(), remaining, *grammar.rules);
}

TEST(Grammar, ResolvesNamesBothWaysAndToTheLaterOfTwoRules) {
  check_cases(
      "b = a; a = b, (a | 'x'), {c}; c = ' '; -> 0(1(#0 2(3(#1))) 1(#1 2(3(#0 5(2(3(#1) 3('x'))) "
      "7(2(3(#2)))))) 1(#2 2(3(' ')))) $ "
      "= broken -> none $ "
      "a='x'; b=a; a='y'; c=c; -> 0(1(#2 2(3('x'))) 1(#1 2(3(#2))) 1(#2 2(3('y'))) 1(#3 2(3(#3))))",
      [](const std::string& text) { return tree_text(Grammar(text).root.get()); });
  EXPECT_EQ(match_whole(Grammar("broken"), "x"), nullptr);
  EXPECT_TRUE(NameLess()("\x80", "a"));
  std::string names;
  for (std::uint16_t type = 0; type <= kNodeTypeCount; ++type)
    names.append(node_type_name(static_cast<NodeType>(type))).append(" ");
  EXPECT_EQ(names,
            "syntax rule alternation concatenation meta_definition group option repeat "
            "terminal_string except_terminal_string sort_string quote_string dquote_string "
            "range_string any_char digit_hex integer_dec integer_hex integer identifier "
            "nonwhitespace digit alphabet identifier_chars nonascii_chars ascii all_chars "
            "whitespace comment multiline_comment unuse_string  repeat >= 1  ");
}

TEST(Grammar, ReportsEachUseOfAnUnknownNameAndWorksWithoutIt) {
  std::string text = "start = r1023 | no rule, [r1024], {no rule};";  // r1024 has no number
  for (int i = 1; i <= 1024; ++i) text += "r" + std::to_string(i) + "='x';";
  const CapturedStdout captured;
  const Grammar grammar(text);
  EXPECT_EQ(captured.bytes(),
            "unkown identifier no rule\nunkown identifier r1024\n"
            "unkown identifier no rule\nunkown identifier r1024\n");
  EXPECT_EQ(grammar.rules->count, 2112U);
  EXPECT_EQ(tree_text(match_whole(grammar, "x").get()), "1025('x')");
}

// Each case is "definition of the rule s : input -> tree@furthest failure"; without a definition,
// it is that of the case before.
void check_matches(TextView cases) {
  std::string definition;
  check_cases(cases, [&definition](const std::string& text) {
    const std::size_t colon = text.find(": ");
    if (colon != 0) definition = "s=" + text.substr(0, colon) + ";";
    const std::string input = text.substr(colon + 2);
    std::string shown = tree_text(match_whole(Grammar(definition), input).get());
    if (furthest_failure == nullptr) return shown;
    return shown + "@" + std::to_string(furthest_failure - input.c_str());
  });
}

TEST(Match, TestsEachTerminalAndRecordsItsFailures) {
  using std::string_view_literals::operator""sv;
  check_matches(
      "'abc': abcd -> 'abc' $ : ab -> none@0 $ : abd -> none@0 $ \"aB\": ab -> none@0 $ "
      ": aB -> 'aB' $ 'x','abc': xabd -> none@1 $ 'x','': x -> 0('x' '') $ ` -`: - -> '-' $ "
      ":   -> ' ' $ : x -> none@0 $ :  -> none@0 $ ``: x -> none@0 $ `ba`: a -> none@0 $ "
      "`\0a`:  -> none@0 $ `\200\377bdfh`: \377 -> '\377' $ : h -> 'h' $ : c -> none@0 $ "
      ": \200 -> '\200' $ `zya`: z -> none@0 $ 'a'~'z': a -> 'a' $ : z -> 'z' $ : { -> none@0 $ "
      ": ` -> none@0 $ :  -> none $ 'a'~'\200': \377 -> '\377' $ '\200'~'\377': \220 -> none@0 $ "
      "65~0x5A: A -> 'A' $ : Z -> 'Z' $ : [ -> none@0 $ : @ -> none@0 $ 0~9:  -> none $ "
      ": \377 -> none@0 $ 0x80~0x10FFFF: \303\251 -> '\303\251' $ .: \377 -> '\377' $ :  -> none $ "
      ": \342\202\254! -> '\342\202\254' $ : \342\202 -> '\342' $ !'\"': x -> 'x'@0 $ "
      ": \" -> none@0 $ :  -> none@0 $ !'a'~'b': b -> none@0 $ : c -> 'c'@0 $ : \303\251 -> "
      "'\303\251'@0 $ !!'x': x -> 'x'@0 $ "
      "'x',!.: xy -> none@1"sv);
}

TEST(Match, CodePointsTakeThePayloadBitsOfUnbrokenSequences) {
  check_matches(
      "233~233: \303\251 -> '\303\251' $ 0x800~2048: \340\240\200 -> '\340\240\200' $ "
      "8364~8364: \342\202\254 -> '\342\202\254' $ 65535~65535: \357\277\277 -> '\357\277\277' $ "
      "0x1F600~128512: \360\237\230\200 -> '\360\237\230\200' $ 0~0: \300\200 -> '\300\200' $ "
      "0x1FFFFF~2097151: \367\277\277\277 -> '\367\277\277\277' $ 127~127: \x7f -> '\x7f' $ "
      "0~4294967295: \200 -> none@0 $ : \277\200 -> none@0 $ : \370\200\200\200\200 -> none@0 $ "
      ": \303 -> none@0 $ : \303\303 -> none@0 $ : \342\202 -> none@0 $ : \360\237\230 -> none@0");
}

TEST(Match, ChoicesAreOrderedSequencesFailAsAWholeAndRepetitionsCount) {
  check_matches(
      "'a'|'ab': ab -> 'a' $ 'a','b'|'a','c': ac -> 0('a' 'c')@1 $ 'a','b','x'|'a': abc -> 'a'@2 $ "
      "'x'|'a','b': ac -> none@1 $ "
      "'a','b','c'|'a','x': abd -> none@2 $ ['a'|'b'],'c': c -> 'c'@0 $ "
      "['a'||'b'],'c': bc -> 0('b' 'c')@0 $ ['a'],{'b'}:  -> 0()@0 $ (''),['a']: b -> 0()@0 $ "
      "'',(''),'a': a -> 0('' 'a') $ ('a',('b',['c'])),'d': abcd -> 0('a' 'b' 'c' 'd') $ "
      ": abd -> 0('a' 'b' 'd')@2");
  check_matches(
      "{'a'}: b -> 0()@0 $ : ab -> 'a'@1 $ {'a','b'},'c': ababc -> 0('a' 'b' 'a' 'b' 'c')@4 $ "
      "<''>:  -> 0() $ <'a'>:  -> none@0 $ : aab -> 0('a' 'a')@2 $ 2{'a'}: ab -> none@1 $ : aab -> "
      "0('a' 'a')@2 $ "
      "2{'a'}|'a': ab -> 'a'@1 $ 0x2{'a'}0x3,'b': aaab -> 0('a' 'a' 'a' 'b') $ "
      "{'a'}0,'b': b -> 'b' $ 3{'a'}2: aaaa -> none $ {''},'b': b -> 'b' $ 3{''}: b -> 0() $ "
      ":  -> none $ 5{['a']}: ab -> 'a'@1 $ {['a']},'b': aab -> 0('a' 'a' 'b')@2 $ "
      "{'a'|''},'b': ab -> 0('a' '' 'b')@1");
}

TEST(Match, RulesLabelWrapAndTakeOverAndNestOnlySoDeep) {
  check_matches(
      "a;a='x','y': xy -> 3('x' 'y') $ a;a=b;b={'x'}: x -> 3(4('x')) $ :  -> 3(4())@0 $ "
      "a,a;a=['x']: xy -> 0(3('x') 3())@1 $ [a],'y';a=['x']: y -> 'y'@0 $ "
      "'x',s|'x': xxx -> 0('x' 2('x' 2('x')))@3 $ 'x',b;b='1';b='2': x2 -> 0('x' 4('2')) $ "
      "s,'x'|'x': x -> none $ [s|s],{s},'x'|'x': x -> none $ [a];a=a: x -> none");
  const Grammar grammar("s='x',s|'x';");
  EXPECT_NE(match_whole(grammar, std::string(1999, 'x')), nullptr);
  EXPECT_EQ(match_whole(grammar, std::string(2000, 'x')), nullptr);
}

TEST(Match, StopsAtTheGivenEndAndKeepsTheFurthestFailureOfCallsBefore) {
  const Grammar grammar("s=<'a'|` `>;");
  const char* const input = "a aa";
  furthest_failure = input + 3;
  const std::uint64_t remaining = 2;
  const MatchNodePtr result = match(grammar.start_rule, input, remaining, *grammar.rules);
  EXPECT_EQ(tree_text(result.get()), "0('a' ' ')");
  EXPECT_EQ(furthest_failure, input + 3);
}

TEST(Match, VectorsGrowSixteenfoldAndNodesAreClearedWhole) {
  for (const std::uint64_t count : {2U, 16U, 17U, 272U, 273U}) {
    const std::uint64_t capacity = count <= 16 ? 16 : count <= 272 ? 272 : 4368;
    const std::string input(count, 'a');
    const MatchNodePtr result = match_whole(Grammar("s={'a'};"), input);
    EXPECT_EQ(result->children->capacity, capacity);
    MatchNode** const items = result->children->items;
    EXPECT_EQ(std::count(items, items + capacity, nullptr), capacity - count);
    EXPECT_EQ(items[count - 1]->start, input.c_str() + count - 1);
    EXPECT_EQ(result->length, count);
    clear(*result);
    EXPECT_TRUE(result->children == nullptr && result->start == nullptr && result->length == 0);
  }
}

TEST(Match, ReportsNodesThatNothingCanMatch) {
  const CapturedStdout captured;
  const Grammar grammar("s='a';");
  first_child(first_child(second_child(*grammar.start_rule))).type = NodeType::integer;
  EXPECT_EQ(match_whole(grammar, "a"), nullptr);
  EXPECT_EQ(captured.bytes(), "unkown type with type = 18\n");
  const Grammar reserved("s=('a');");
  first_child(first_child(second_child(*reserved.start_rule))).type = NodeType::meta_definition;
  EXPECT_NE(match_whole(reserved, "a"), nullptr);
}

}  // namespace
}  // namespace svcinst
