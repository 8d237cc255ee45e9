#include "app/program.h"

#include <cstdio>

#include "app/command_line.h"
#include "app/commands.h"
#include "cmdline/option_lookup.h"
#include "grammar/matcher.h"

namespace svcinst {
namespace {

// Leaves the result tree, which looks into `line`, in `grammar`; none, after a message on standard
// output, when the line does not match.
void parse_line(Grammar& grammar, const ByteString& line) {
  grammar.result.reset();
  furthest_failure = nullptr;
  grammar.result = match(grammar.start_rule, line.data, line.length, *grammar.rules);
  std::fflush(stdout);
  if (grammar.result) return;
  const auto position = furthest_failure != nullptr ? furthest_failure - line.data : 0;
  std::printf("error at position: %d\n", static_cast<int>(position));
}

}  // namespace

int run_program(int argc, const char* const* argv) {
  Grammar grammar;
  const ByteString line = join_arguments(argc, argv);
  if (line.length != 0) parse_line(grammar, line);
  const bool install = has_option(grammar, "i") || has_option(grammar, "install");
  const bool uninstall = has_option(grammar, "u") || has_option(grammar, "uninstall");
  const auto directory = program_directory(argc > 0 ? argv[0] : "");
  if (!directory) return kFailure;
  if (install) return run_install(grammar, *directory);
  if (uninstall) return run_uninstall(grammar);
  return run_help();
}

}  // namespace svcinst
