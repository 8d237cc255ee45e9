#include "cmdline/usage.h"

#include "cmdline/option_registry.h"
#include "log/log.h"

namespace svcinst {
namespace {

struct OptionTexts {
  const char* short_name;
  const char* long_name;
  const char* help_text;
};

constexpr const char* kDescription = "install/uninstall a executable file as a windows servic.";

constexpr OptionTexts kOptions[] = {{"u", "uninstall", "uninstall a service by name."},
                                    {"i", "install", "install as service"},
                                    {"n", "name", "service name."},
                                    {"b", "binpath", "service execute file path."},
                                    {"t", "type", "start type: auto."},
                                    {"d", "disname", "service display name."},
                                    {"", "dep", "depend service name."},
                                    {"", "desc", "service description."}};

}  // namespace

void print_usage() {
  OptionRegistry registry(kDescription);
  for (const OptionTexts& option : kOptions) {
    add_option(registry, {ByteString(option.short_name), ByteString(option.long_name),
                          ByteString(option.help_text)});
  }
  const ByteString text = build_help_text(registry);
  log_info("%.*s\n", static_cast<int>(text.length), text.data);
}

}  // namespace svcinst
