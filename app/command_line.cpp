#include "app/command_line.h"

#include <algorithm>

namespace svcinst {

ByteString join_arguments(int argc, const char* const* argv) {
  ByteString line;
  for (int i = 1; i < argc; ++i) {
    const TextView argument = argv[i];
    const TextView quote = argument.find(' ') != TextView::npos ? "\"" : "";
    append(line, " ");
    append(line, quote);
    append(line, argument);
    append(line, quote);
  }
  return line;
}

TextView strip_quotes(TextView value) {
  if (!value.starts_with('"') || !value.ends_with('"')) return value;
  value.remove_prefix(std::min(value.find_first_not_of('"'), value.size()));
  value.remove_suffix(value.size() - (value.find_last_not_of('"') + 1));
  return value;
}

}  // namespace svcinst
