// One run of the program.
#pragma once

namespace svcinst {

/// Parses the arguments and runs the command they ask for. Returns the process's exit code: 0 when
/// an install or uninstall succeeded, -1 otherwise. Throws std::bad_alloc.
int run_program(int argc, const char* const* argv);

}  // namespace svcinst
