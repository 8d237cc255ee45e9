#include "cmdline/usage.h"

#include "cmdline/option_registry.h"
#include "log/log.h"

namespace svcinst {
namespace {

constexpr const char* kProgram = "install/uninstall a executable file as a windows servic.";

// The letter behind "-", the word behind "--", and what it is for.
constexpr const char* kOptions[][3] = {{"u", "uninstall", "uninstall a service by name."},
                                       {"i", "install", "install as service"},
                                       {"n", "name", "service name."},
                                       {"b", "binpath", "service execute file path."},
                                       {"t", "type", "start type: auto."},
                                       {"d", "disname", "service display name."},
                                       {"", "dep", "depend service name."},
                                       {"", "desc", "service description."}};

}  // namespace

void print_usage() {
  OptionRegistry registry(kProgram);
  for (const auto& [letter, word, help] : kOptions)
    add_option(registry, {ByteString(letter), ByteString(word), ByteString(help)});
  const ByteString text = build_help_text(registry);
  log_info("%.*s\n", static_cast<int>(text.length), text.data);
}

}  // namespace svcinst
