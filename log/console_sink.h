// The console: standard output, which may belong to the console of another process.
#pragma once

#include <cstdint>

#include "common/text_view.h"

namespace svcinst {

/// Moves the console to the process with the id `std_handle`. 0: this process, and standard output
/// uses the buffer of the settings, full buffering. kNoConsole: there is none.
void open_console(std::uint64_t std_handle);

/// Writes `text` to standard output, then what the settings want behind it. Failures are ignored.
void write_to_console(TextView text);

}  // namespace svcinst
