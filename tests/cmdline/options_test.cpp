#include <gtest/gtest.h>

#include <string>

#include "cmdline/command_line_grammar.h"
#include "cmdline/option_lookup.h"
#include "cmdline/option_registry.h"
#include "cmdline/usage.h"
#include "grammar/matcher.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"
#include "tests/support/check_cases.h"

namespace svcinst {
namespace {

TEST(CommandLineGrammar, IsTheExactTextOfEightRules) {
  EXPECT_EQ(command_line_grammar.length, 446U);
  EXPECT_EQ(tree_text(Grammar().root.get()),
            "0(1(#0 2(3(#1))) 1(#1 2(3(32(2(3(7(2(3(#7))) #5)))))) "
            "1(#2 2(3(13('A' 'Z')) 3(13('a' 'z')) 3(13('0' '9')) 3('_'))) 1(#3 2(3('-' #2))) "
            "1(#4 2(3(\"--\" 32(2(3(#2)))))) 1(#5 2(3(5(2(3(#4) 3(#3))) 6(2(3('='))) "
            "7(2(3(7(2(3(#7))) #6)))))) 1(#6 2(3('\"' 7(2(3(9('\"')))) '\"') "
            "3(\"'\" 7(2(3(9(\"'\")))) \"'\") 3(9(` -`) 7(2(3(9(` `))))))) 1(#7 2(3(' '))))");
}

TEST(OptionLookup, FindsValuesInEverySpelling) {
  const std::pair<const char*, const char*> rows[] = {
      {"name",
       "--name=svc -> [svc] $ --name svc -> [svc] $ --name -> none $ --name --install -> none $ "
       "--name= -> none $ --name  -> none $ --name= svc -> [] $ --name =svc -> [=svc] $ "
       "--name  svc -> [] $ --name==svc -> [=svc] $ --name a --name b -> [a] $ "
       "--name --name b -> none $ -n b --name a -> [a] $ --Name x -> absent $ "
       "--names x -> absent $ --nam x -> absent $ --name a-b -> [a-b] $ name -> absent $  -> "
       "absent"},
      {"n",
       "-n svc -> [svc] $ -nsvc -> [svc] $ -n=svc -> [svc] $ -n b --name a -> [b] $ --n x -> [x]"},
      {"desc",
       "--desc \"a b\" -> [\"a b\"] $ --desc 'a b' c -> ['a b'] $ --desc \"a\"b -> [\"a\"] $ "
       "--desc \"a b -> [\"a]"},
      {"p", "--bin-path x -> [ath] $ --a -p -> none"},
      {"", "--name x -> absent"}};
  for (const auto& [name, cases] : rows) {
    check_cases(cases, [name = TextView(name)](const std::string& options) {
      const std::string line = " " + options;
      const std::uint64_t remaining = line.size();
      Grammar grammar;
      grammar.result = match(grammar.start_rule, line.c_str(), remaining, *grammar.rules);
      TextView value;
      const bool found = get_option_value(grammar, name, value);
      EXPECT_EQ(found, has_option(grammar, name)) << line;
      if (is_absent(value)) return std::string(found ? "none" : "absent");
      return "[" + std::string(value) + "]";
    });
  }
}

TEST(OptionLookup, CollectsDescendantsInPreOrderWithoutTheRoot) {
  const Grammar grammar("a = b, b; b = '(', {b}, ')';");
  const std::uint64_t remaining = 6;
  const MatchNodePtr root = match(grammar.start_rule, "(())()", remaining, *grammar.rules);
  LinkedList<const MatchNode*> found;
  collect_nodes_of_type(*root, 3, found);
  collect_nodes_of_type(*root, root->type, found);
  std::string texts;
  for (const MatchNode* node : found) texts += std::string(node->start, node->length) + " ";
  EXPECT_EQ(texts, "(()) () () ");
}

TEST(OptionRegistry, RefusesTakenNamesAndLaysNamesOutInThirtyTwoBytes) {
  OptionRegistry registry("what it does");
  const CapturedStdout captured;
  const auto add = [&registry](const char* letter, const char* name, const char* help) {
    return add_option(registry, {ByteString(letter), ByteString(name), ByteString(help)});
  };
  EXPECT_TRUE(add("x", "abcdefghijklmnopqrstuvwxyz1234", "cut") && add("y", "", "short"));
  EXPECT_TRUE(add("", "", "none") && add("Y", "long", "both") && add("", "lona", "l"));
  EXPECT_FALSE(add("y", "long", "") || add("z", "long", "") || add("y", "b", ""));
  EXPECT_TRUE(add("", "", "none") && registry.count == 6);
  EXPECT_EQ(captured.bytes(),
            "exists same short name.\nexists same long name.\nexists same short name.\n");
  EXPECT_EQ(view(build_help_text(registry)),
            "what it does\n\n\n\n"
            "  -x, --abcdefghijklmnopqrstuvwxcut\n"
            "  -y                            short\n"
            "  --                            none\n"
            "  -Y, --long                    both\n"
            "  --lona                        l\n"
            "  --                            none\n");
}

TEST(Usage, IsOneRecordWithAllOptions) {
  const CapturedStdout captured;
  print_usage();
  EXPECT_EQ(captured.bytes(),
            "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] "
            "install/uninstall a executable file as a windows servic.\n\n\n\n"
            "  -u, --uninstall               uninstall a service by name.\n"
            "  -i, --install                 install as service\n"
            "  -n, --name                    service name.\n"
            "  -b, --binpath                 service execute file path.\n"
            "  -t, --type                    start type: auto.\n"
            "  -d, --disname                 service display name.\n"
            "  --dep                         depend service name.\n"
            "  --desc                        service description.\n\n");
}

}  // namespace
}  // namespace svcinst
