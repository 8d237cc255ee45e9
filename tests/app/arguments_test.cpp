#include "app/arguments.h"

#include <gtest/gtest.h>

#include <vector>

namespace svcinst {
namespace {

TEST(JoinArguments, QuotesArgumentsWithSpacesAndNothingElse) {
  const struct {
    std::vector<const char*> argv;
    const char* line;
  } rows[] = {
      {{}, ""},
      {{"program"}, ""},
      {{"pro gram", "--install", "--binpath", "C:\\Program Files\\x.exe"},
       " --install --binpath \"C:\\Program Files\\x.exe\""},
      {{"p", "", "-n", ""}, "  -n "},
      {{"p", "a\tb", "c\"d", "\"e f\"", " "}, " a\tb c\"d \"\"e f\"\" \" \""},
  };
  for (const auto& row : rows) {
    const ByteString line = join_arguments(static_cast<int>(row.argv.size()), row.argv.data());
    EXPECT_EQ(view(line), row.line);
  }
}

TEST(StripQuotes, DropsDoubleQuotesWhereTheyStandAtBothEnds) {
  const struct {
    const char* value;
    const char* stripped;
  } rows[] = {{"\"a b\"", "a b"}, {"\"\"a\"\"\"", "a"}, {"\"a", "\"a"},
              {"a\"", "a\""},     {"'a b'", "'a b'"},   {"\"a\"b\"", "a\"b"},
              {"\"\"", ""},       {"\"", ""},           {"", ""},
              {"a", "a"}};
  for (const auto& row : rows) {
    const TextView stripped = strip_quotes(row.value);
    EXPECT_EQ(stripped, row.stripped);
    EXPECT_FALSE(is_absent(stripped)) << row.value;
  }
  EXPECT_TRUE(is_absent(strip_quotes(TextView())));
}

}  // namespace
}  // namespace svcinst
