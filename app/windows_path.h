// The rules for Windows paths, which hold on every platform: a service's binary path is one. Both
// `\` and `/` separate; the names of servers and devices begin with `\` only.
#pragma once

#include <string_view>

namespace svcinst {

/// True for a path with a drive letter and a separator behind its colon, and for one that begins
/// with a server's name or one of the prefixes `\\?\`, `\\.\` and `\??\`. A path that only begins
/// with one separator is relative.
bool is_absolute_path(std::wstring_view path);

/// `path` without its last component and the separators before it, but never less than its root.
std::wstring_view parent_directory(std::wstring_view path);

}  // namespace svcinst
