#include "app/arguments.h"

#include <gtest/gtest.h>

#include <vector>

namespace svcinst {
namespace {

TEST(Arguments, JoinQuotesArgumentsWithSpacesAndNothingElse) {
  const struct {
    std::vector<const char*> argv;
    const char* line;
  } rows[] = {{{}, ""},
              {{"pro gram"}, ""},
              {{"p", "-b", R"(C:\P F\x.exe)"}, R"( -b "C:\P F\x.exe")"},
              {{"p", "", "-n", ""}, "  -n "},
              {{"p", "a\tb", "c\"d", "\"e f\"", " "}, " a\tb c\"d \"\"e f\"\" \" \""}};
  for (const auto& [argv, line] : rows)
    EXPECT_EQ(view(join_arguments(static_cast<int>(argv.size()), argv.data())), line);
}

TEST(Arguments, StripDropsDoubleQuotesWhereTheyStandAtBothEnds) {
  const char* rows[][2] = {{R"("a b")", "a b"}, {R"(""a""")", "a"}, {R"("a)", R"("a)"},
                           {R"(a")", R"(a")"},  {"'a b'", "'a b'"}, {R"("a"b")", R"(a"b)"},
                           {R"("")", ""},       {R"(")", ""},       {"", ""}};
  for (const auto& [value, stripped] : rows) {
    EXPECT_EQ(strip_quotes(value), stripped);
    EXPECT_FALSE(is_absent(strip_quotes(value))) << value;
  }
  EXPECT_TRUE(is_absent(strip_quotes(TextView())));
}

}  // namespace
}  // namespace svcinst
