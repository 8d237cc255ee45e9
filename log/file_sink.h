// The log file, which texts are appended to.
#pragma once

#include <cstdint>

#include "common/text_view.h"

namespace svcinst {

/// Closes the log file and opens another; when that fails there is none.
/// name: `length` bytes, copied, without a NUL. Other lengths than 0 to 255 change nothing.
void open_log_file(const char* name, std::int32_t length);

/// Writes `text` to the log file, which must be open. Failures are ignored.
void write_to_log_file(TextView text);

}  // namespace svcinst
