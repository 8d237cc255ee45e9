#include "app/program_paths.h"

#include <limits>

#include "app/windows_path.h"
#include "log/log.h"
#include "platform/code_page_api.h"

namespace svcinst {
namespace {

constexpr std::size_t kLongestConvertible = std::numeric_limits<int>::max();

UINT file_name_code_page() {
  if (___lc_codepage_func() == CP_UTF8) return CP_UTF8;
  return AreFileApisANSI() != FALSE ? CP_ACP : CP_OEMCP;
}

std::optional<std::wstring> to_wide(UINT code_page, TextView text) {
  std::wstring wide;
  if (text.empty()) return wide;
  if (text.size() > kLongestConvertible) return std::nullopt;
  const int length = static_cast<int>(text.size());
  const int wide_length =
      MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, text.data(), length, nullptr, 0);
  if (wide_length <= 0) return std::nullopt;
  wide.resize(static_cast<std::size_t>(wide_length));
  const int converted = MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, text.data(), length,
                                            wide.data(), wide_length);
  if (converted != wide_length) return std::nullopt;
  return wide;
}

std::optional<ByteString> to_narrow(UINT code_page, const std::wstring& wide) {
  ByteString text;
  if (wide.empty()) return text;
  if (wide.size() > kLongestConvertible) return std::nullopt;
  const int wide_length = static_cast<int>(wide.size());
  const int length =
      WideCharToMultiByte(code_page, 0, wide.data(), wide_length, nullptr, 0, nullptr, nullptr);
  if (length <= 0) return std::nullopt;
  resize(text, static_cast<std::uint64_t>(length), '\0');
  const int converted = WideCharToMultiByte(code_page, 0, wide.data(), wide_length, text.data,
                                            length, nullptr, nullptr);
  if (converted != length) return std::nullopt;
  return text;
}

std::nullopt_t log_not_convertible(TextView path, UINT code_page) {
  log_info("The path '%.*s' is not valid text in the code page for file names (%u)!\n",
           static_cast<int>(path.size()), path.data(), code_page);
  return std::nullopt;
}

}  // namespace

std::optional<ProgramDirectory> program_directory(TextView program_path) {
  const UINT code_page = file_name_code_page();
  const std::optional<std::wstring> path = to_wide(code_page, program_path);
  if (!path) return log_not_convertible(program_path, code_page);
  return ProgramDirectory{code_page, program_path, std::wstring(parent_directory(*path))};
}

std::optional<ByteString> resolve_binary_path(const ProgramDirectory& directory,
                                              TextView binary_path) {
  const std::optional<std::wstring> path = to_wide(directory.code_page, binary_path);
  if (!path) return log_not_convertible(binary_path, directory.code_page);
  if (is_absolute_path(*path)) return ByteString(binary_path);
  std::optional<ByteString> resolved = to_narrow(directory.code_page, directory.path);
  if (!resolved) return log_not_convertible(directory.program_path, directory.code_page);
  append(*resolved, "\\");
  append(*resolved, binary_path);
  return resolved;
}

}  // namespace svcinst
