// A folder for what a benchmark writes.
#pragma once

#include <string>

namespace svcinst::bench {

/// A path in a folder that is made at the first call, in TMPDIR or else /tmp, and that goes with
/// the process.
std::string temp_path(const std::string& name);

/// The bytes of a file; none when there is no such file.
std::string file_bytes(const std::string& path);

}  // namespace svcinst::bench
