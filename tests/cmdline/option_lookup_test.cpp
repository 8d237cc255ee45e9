#include "cmdline/option_lookup.h"

#include <gtest/gtest.h>

#include <string>

#include "cmdline/command_line_grammar.h"
#include "grammar/matcher.h"
#include "tests/grammar/tree_text.h"

namespace svcinst {
namespace {

// `line` must outlive the result.
Grammar parsed(const char* line) {
  Grammar grammar;
  const std::uint64_t remaining = TextView(line).size();
  grammar.result = match(grammar.start_rule, line, remaining, *grammar.rules);
  return grammar;
}

// The value of `name` in `line`: "absent" for an option that is not there, "none" for one without a
// value, otherwise the value in square brackets.
std::string value_in(const char* line, TextView name) {
  const Grammar grammar = parsed(line);
  const TextView untouched = "untouched";
  TextView value = untouched;
  const bool found = get_option_value(grammar, name, value);
  EXPECT_EQ(found, has_option(grammar, name)) << line;
  if (!found) return value.data() == untouched.data() ? "absent" : "touched";
  return value.data() == untouched.data() ? "none" : "[" + std::string(value) + "]";
}

TEST(CommandLineGrammar, IsTheExactTextOfEightRules) {
  EXPECT_EQ(command_line_grammar.length, 446U);
  EXPECT_EQ(view(command_line_grammar).substr(0, 3), "\n//");
  EXPECT_TRUE(view(command_line_grammar).ends_with("\nspace             = ' ';\n"));
  const Grammar grammar;
  EXPECT_EQ(tree_text(grammar.root.get()),
            "syntax(rule(#0 |(,(#1))) "
            "rule(#1 |(,(repeat >= 1(|(,(repeat(|(,(#7))) #5)))))) "
            "rule(#2 |(,(~('A' 'Z')) ,(~('a' 'z')) ,(~('0' '9')) ,('_'))) "
            "rule(#3 |(,('-' #2))) "
            "rule(#4 |(,(\"--\" repeat >= 1(|(,(#2)))))) "
            "rule(#5 |(,(group(|(,(#4) ,(#3))) option(|(,('='))) "
            "repeat(|(,(repeat(|(,(#7))) #6)))))) "
            "rule(#6 |(,('\"' repeat(|(,(!('\"')))) '\"') ,(\"'\" repeat(|(,(!(\"'\")))) \"'\") "
            ",(!(` -`) repeat(|(,(!(` `))))))) "
            "rule(#7 |(,(' '))))");
}

TEST(CommandLineGrammar, GivesOptionNodesTheirParts) {
  const Grammar grammar = parsed(" -i --n=ab c");
  EXPECT_EQ(tree_text(grammar.result.get()),
            "3(9(' ') 7(5('-' 4('i'))) 9(' ') "
            "7(6('--' 4('n')) '=' 8('a' 'b') 9(' ') 8('c')))");
  EXPECT_EQ(parsed(" install").result, nullptr);
  EXPECT_EQ(parsed(" --").result, nullptr);
}

TEST(OptionLookup, FindsValuesInEverySpelling) {
  const struct {
    const char* line;
    const char* name;
    const char* value;
  } rows[] = {
      {" --name=svc", "name", "[svc]"},
      {" --name svc", "name", "[svc]"},
      {" -n svc", "n", "[svc]"},
      {" -nsvc", "n", "[svc]"},
      {" -n=svc", "n", "[svc]"},
      {" --name", "name", "none"},
      {" --name --install", "name", "none"},
      {" --name=", "name", "none"},
      {" --name ", "name", "none"},
      {" --name= svc", "name", "[]"},
      {" --name =svc", "name", "[=svc]"},
      {" --name  svc", "name", "[]"},
      {" --name==svc", "name", "[=svc]"},
      {" --desc \"a b\"", "desc", "[\"a b\"]"},
      {" --desc 'a b' c", "desc", "['a b']"},
      {" --desc \"a\"b", "desc", "[\"a\"]"},
      {" --desc \"a b", "desc", "[\"a]"},
      {" --name a --name b", "name", "[a]"},
      {" --name --name b", "name", "none"},
      {" -n b --name a", "name", "[a]"},
      {" -n b --name a", "n", "[b]"},
      {" --n x", "n", "[x]"},
      {" -install", "i", "[nstall]"},
      {" -install", "install", "absent"},
      {" --bin-path x", "bin", "none"},
      {" --bin-path x", "p", "[ath]"},
      {" --Name x", "name", "absent"},
      {" --name x", "nam", "absent"},
      {" --name x", "names", "absent"},
      {" --name x", "", "absent"},
      {" --name a-b", "name", "[a-b]"},
      {" --name -b", "b", "none"},
      {" name", "name", "absent"},
      {"", "name", "absent"},
  };
  for (const auto& row : rows) EXPECT_EQ(value_in(row.line, row.name), row.value) << row.line;
}

TEST(OptionLookup, CollectsDescendantsInPreOrderWithoutTheRoot) {
  const Grammar grammar("a = b, b; b = '(', {b}, ')';");
  const std::string line = "(())()";
  const std::uint64_t remaining = line.size();
  const MatchNodePtr root = match(grammar.start_rule, line.c_str(), remaining, *grammar.rules);
  LinkedList<const MatchNode*> found;
  collect_nodes_of_type(*root, 3, found);
  std::string texts;
  for (const auto* entry = found.head; entry != nullptr; entry = entry->next) {
    texts += std::string(entry->value->start, entry->value->length) + " ";
  }
  EXPECT_EQ(texts, "(()) () () ");
  LinkedList<const MatchNode*> roots;
  collect_nodes_of_type(*root, root->type, roots);
  EXPECT_EQ(roots.head, nullptr);
}

}  // namespace
}  // namespace svcinst
