#include "app/windows_path.h"

#include <algorithm>
#include <cstddef>

namespace svcinst {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";

bool is_separator(wchar_t c) {
  return kSeparators.find(c) != std::wstring_view::npos;
}

bool has_drive(std::wstring_view path) {
  return path.size() >= 2 && path[1] == L':' &&
         ((path[0] >= L'A' && path[0] <= L'Z') || (path[0] >= L'a' && path[0] <= L'z'));
}

bool has_device_prefix(std::wstring_view path) {
  return path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\") ||
         path.starts_with(L"\\??\\");
}

bool has_server(std::wstring_view path) {
  return path.size() >= 3 && path.starts_with(L"\\\\") && !is_separator(path[2]);
}

// How many characters of `path` name its drive, device or server.
std::size_t root_name_length(std::wstring_view path) {
  if (has_drive(path)) return 2;
  if (has_device_prefix(path)) return 3;  // what follows is the root's separator
  if (has_server(path)) return std::min(path.find_first_of(kSeparators, 3), path.size());
  return 0;
}

}  // namespace

bool is_absolute_path(std::wstring_view path) {
  if (has_drive(path)) return path.size() >= 3 && is_separator(path[2]);
  return root_name_length(path) != 0;
}

std::wstring_view parent_directory(std::wstring_view path) {
  const std::size_t root_name = root_name_length(path);
  const std::size_t root = std::min(path.find_first_not_of(kSeparators, root_name), path.size());
  std::size_t end = path.size();
  while (end > root && !is_separator(path[end - 1])) --end;
  while (end > root && is_separator(path[end - 1])) --end;
  return path.substr(0, end);
}

}  // namespace svcinst
