#include "app/commands.h"

#include <optional>

#include "app/command_line.h"
#include "app/service_operations.h"
#include "cmdline/option_lookup.h"
#include "cmdline/usage.h"

namespace svcinst {
namespace {

struct OptionNames {
  TextView long_name;
  TextView short_name;  // absent for an option without one
};

constexpr OptionNames kName{"name", "n"};
constexpr OptionNames kBinaryPath{"binpath", "b"};
constexpr OptionNames kDisplayName{"disname", "d"};
constexpr OptionNames kDependency{"dep", {}};
constexpr OptionNames kDescription{"desc", {}};

bool is_given(const Grammar& grammar, const OptionNames& option) {
  return has_option(grammar, option.long_name) || has_option(grammar, option.short_name);
}

// The option's value without its quotes. The short form, where it has a value, overrides the long
// one.
TextView option_value(const Grammar& grammar, const OptionNames& option) {
  TextView value;
  get_option_value(grammar, option.long_name, value);
  if (!is_absent(option.short_name)) get_option_value(grammar, option.short_name, value);
  return strip_quotes(value);
}

std::optional<ByteString> copy_of(TextView value) {
  if (is_absent(value)) return std::nullopt;
  return ByteString(value);
}

const ByteString* pointer_to(const std::optional<ByteString>& text) {
  return text ? &*text : nullptr;
}

// A list of one name. An empty name makes an empty list.
std::optional<ByteString> dependency_list(TextView name) {
  std::optional<ByteString> list = copy_of(name);
  if (list && list->length != 0) append(*list, TextView("\0\0", 2));
  return list;
}

}  // namespace

int run_help() {
  print_usage();
  return kFailure;
}

int run_install(const Grammar& grammar, const ProgramDirectory& directory) {
  if (!is_given(grammar, kName) || !is_given(grammar, kBinaryPath) ||
      !is_given(grammar, kDisplayName)) {
    return run_help();
  }
  const ByteString name(option_value(grammar, kName));
  const auto binary_path = resolve_binary_path(directory, option_value(grammar, kBinaryPath));
  if (!binary_path) return kFailure;
  const auto display_name = copy_of(option_value(grammar, kDisplayName));
  const auto dependencies = dependency_list(option_value(grammar, kDependency));
  const auto description = copy_of(option_value(grammar, kDescription));
  const bool installed = install_service(name, *binary_path, pointer_to(display_name),
                                         pointer_to(dependencies), pointer_to(description));
  return installed ? kSuccess : kFailure;
}

int run_uninstall(const Grammar& grammar) {
  if (!is_given(grammar, kName)) return run_help();
  const ByteString name(option_value(grammar, kName));
  stop_service(name);  // a service that can't be stopped may be deleted all the same
  return delete_service(name) ? kSuccess : kFailure;
}

}  // namespace svcinst
