// The texts on the way to the service manager: arguments, values, paths.
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "app/arguments.h"
#include "app/windows_path.h"

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

// "path|parent" each.
TEST(WindowsPath, TellsAbsolutePathsAndTheirParents) {
  const wchar_t* const absolute =
      LR"(C:\tools\inst.exe|C:\tools z:/tools//inst.exe|z:/tools
      a:\x|a:\ Z:\inst.exe|Z:\ C:\\inst.exe|C:\\ A:\|A:\ \\server\share\x.exe|\\server\share
      \\server\x.exe|\\server\ \\s|\\s \\server/x.exe|\\server/ \\?\C:\x.exe|\\?\C: \\.\pipe|\\.\
      \??\C:\x|\??\C:)";
  const wchar_t* const relative =
      LR"(C:inst.exe|C: C:a\inst.exe|C:a C:|C: 1:\inst.exe|1: [:\x|[:
      @:\x|@: `:\x|`: {:\x|{: inst.exe| | a/b\c|a/b a/b\|a/b \inst.exe|\ /usr/bin/inst|/usr/bin
      /|/ //server/share/x|//server/share /??/x|/?? \\|\\ \\\x|\\\ \??x\y|\??x \?a\y|\?a
      x\?\y|x\?)";
  for (const wchar_t* rows : {absolute, relative}) {
    std::wistringstream words(rows);
    for (std::wstring row; words >> row;) {
      const std::wstring_view path = std::wstring_view(row).substr(0, row.find(L'|'));
      EXPECT_EQ(is_absolute_path(path), rows == absolute) << row;
      EXPECT_EQ(parent_directory(path), row.substr(path.size() + 1)) << row;
    }
  }
  EXPECT_FALSE(is_absolute_path(L"\u00c4:\\x"));
}

}  // namespace
}  // namespace svcinst
