// This program's help.
#pragma once

namespace svcinst {

/// Prints the help text as one log record. Throws std::bad_alloc.
void print_usage();

}  // namespace svcinst
