// The commands of the program. Each reads its options from a matched command line, runs, and
// returns the process's exit code. All throw std::bad_alloc.
#pragma once

#include "app/program_paths.h"
#include "grammar/grammar.h"

namespace svcinst {

inline constexpr int kSuccess = 0;
inline constexpr int kFailure = -1;

/// Prints the help.
int run_help();

/// Registers a service; prints the help when a required option is missing.
int run_install(const Grammar& grammar, const ProgramDirectory& directory);

/// Stops and deletes a service; prints the help when the name is missing.
int run_uninstall(const Grammar& grammar);

}  // namespace svcinst
