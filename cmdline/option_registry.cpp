#include "cmdline/option_registry.h"

#include <cstdio>

namespace svcinst {
namespace {

constexpr std::uint64_t kNamesWidth = 32;  // bytes

bool same_name(const ByteString& name, const ByteString& taken) {
  return name.length != 0 && view(name) == view(taken);
}

ByteString option_names(const OptionSpec& option) {
  if (option.short_name.length == 0) return "  --" + option.long_name;
  const ByteString names = "  -" + option.short_name;
  return option.long_name.length == 0 ? names : names + ", --" + option.long_name;
}

}  // namespace

bool add_option(OptionRegistry& registry, const OptionSpec& spec) {
  for (const OptionSpec& option : registry.options) {
    if (same_name(spec.long_name, option.long_name)) {
      std::printf("exists same long name.\n");
      return false;
    }
    if (same_name(spec.short_name, option.short_name)) {
      std::printf("exists same short name.\n");
      return false;
    }
  }
  append(registry.options, OptionSpec(spec));
  ++registry.count;
  return true;
}

ByteString build_help_text(const OptionRegistry& registry) {
  ByteString text = registry.description + "\n\n\n\n";
  for (const OptionSpec& option : registry.options) {
    ByteString line = option_names(option);
    resize(line, kNamesWidth, ' ');
    append(line, view(option.help_text));
    append(line, "\n");
    append(text, view(line));
  }
  return text;
}

}  // namespace svcinst
