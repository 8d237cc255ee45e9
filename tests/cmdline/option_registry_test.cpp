// How options are looked up is in docs/command-line.md, the whole help in README.md: both run.
#include <gtest/gtest.h>

#include "cmdline/option_registry.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

TEST(OptionRegistry, RefusesTakenNamesAndLaysNamesOutInThirtyTwoBytes) {
  OptionRegistry registry("what it does");
  const CapturedStdout captured;
  const struct {
    const char *letter, *name, *help;
    bool added;
  } rows[] = {
      {"x", "a-name-that-is-longer-than-32-bytes", "cut", true},
      {"y", "", "only a letter", true},
      {"", "", "neither", true},
      {"", "", "again neither", true},
      {"Y", "long", "both", true},
      {"y", "long", "refused for its letter, which comes first", false},
      {"z", "long", "refused for its name", false},
  };
  for (const auto& [letter, name, help, added] : rows) {
    const OptionSpec spec{ByteString(letter), ByteString(name), ByteString(help)};
    EXPECT_EQ(add_option(registry, spec), added) << help;
  }
  EXPECT_EQ(registry.count, 5U);
  EXPECT_EQ(captured.bytes(), "exists same short name.\nexists same long name.\n");
  EXPECT_EQ(view(build_help_text(registry)),
            "what it does\n\n\n\n"
            "  -x, --a-name-that-is-longer-thcut\n"
            "  -y                            only a letter\n"
            "  --                            neither\n"
            "  --                            again neither\n"
            "  -Y, --long                    both\n");
}

}  // namespace
}  // namespace svcinst
