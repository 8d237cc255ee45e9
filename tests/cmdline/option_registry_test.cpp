#include "cmdline/option_registry.h"

#include <gtest/gtest.h>

#include <string>

#include "cmdline/usage.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

OptionSpec spec(const char* short_name, const char* long_name, const char* help_text) {
  return {ByteString(short_name), ByteString(long_name), ByteString(help_text)};
}

TEST(OptionRegistry, RefusesTakenNamesAndKeepsItsOrder) {
  OptionRegistry registry("d");
  const struct {
    const char* short_name;
    const char* long_name;
    const char* message;  // none when the option is accepted
  } rows[] = {
      {"n", "name", ""},
      {"x", "name", "exists same long name.\n"},
      {"n", "other", "exists same short name.\n"},
      {"n", "name", "exists same long name.\n"},
      {"N", "Name", ""},
      {"", "dep", ""},
      {"", "desc", ""},
      {"s", "", ""},
      {"t", "", ""},
      {"s", "", "exists same short name.\n"},
      {"", "dep", "exists same long name.\n"},
  };
  for (const auto& row : rows) {
    const std::uint64_t count = registry.count;
    const std::string message = row.message;
    const CapturedStdout captured;
    EXPECT_EQ(add_option(registry, spec(row.short_name, row.long_name, "")), message.empty());
    EXPECT_EQ(captured.bytes(), message);
    EXPECT_EQ(registry.count, count + (message.empty() ? 1 : 0));
  }
  std::string names;
  for (const auto* entry = registry.options.head; entry != nullptr; entry = entry->next) {
    names += std::string(view(entry->value.short_name)) + "/";
    names += std::string(view(entry->value.long_name)) + " ";
  }
  EXPECT_EQ(names, "n/name N/Name /dep /desc s/ t/ ");
}

TEST(OptionRegistry, LaysNamesOutInThirtyTwoBytes) {
  OptionRegistry registry("what it does");
  add_option(registry, spec("x", "abcdefghijklmnopqrstuvwxyz1234", "cut"));
  add_option(registry, spec("y", "", "short"));
  add_option(registry, spec("", "long", "long"));
  add_option(registry, spec("", "", "none"));
  EXPECT_EQ(view(build_help_text(registry)),
            "what it does\n\n\n\n"
            "  -x, --abcdefghijklmnopqrstuvwxcut\n"
            "  -y                            short\n"
            "  --long                        long\n"
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
