// The program's own directory, and how a service's binary path is resolved against it. Paths are
// wide text while rules are applied to them, and bytes of the code page for file names otherwise.
#pragma once

#include <optional>
#include <string>

#include "common/byte_string.h"

namespace svcinst {

struct ProgramDirectory {
  unsigned int code_page;  // the code page for file names
  TextView program_path;   // the name by which the program was started
  std::wstring path;       // empty when the program was started by its bare name
};

/// The directory of `program_path`, which must outlive the result. Nothing, after a log line that
/// says why, when the path is not valid in the code page. Throws std::bad_alloc.
std::optional<ProgramDirectory> program_directory(TextView program_path);

/// `binary_path` as it is when it is absolute, otherwise behind `directory` and a `\`. Nothing,
/// after a log line that says why, when a path can't be converted. Throws std::bad_alloc.
std::optional<ByteString> resolve_binary_path(const ProgramDirectory& directory,
                                              TextView binary_path);

}  // namespace svcinst
