#include "app/windows_path.h"

#include <gtest/gtest.h>

namespace svcinst {
namespace {

TEST(WindowsPath, TellsAbsolutePathsAndTheirParents) {
  const struct {
    const wchar_t* path;
    bool absolute;
    const wchar_t* parent;
  } rows[] = {
      {L"C:\\tools\\inst.exe", true, L"C:\\tools"},
      {L"z:/tools//inst.exe", true, L"z:/tools"},
      {L"C:\\inst.exe", true, L"C:\\"},
      {L"C:\\\\inst.exe", true, L"C:\\\\"},
      {L"C:\\", true, L"C:\\"},
      {L"C:inst.exe", false, L"C:"},
      {L"C:a\\inst.exe", false, L"C:a"},
      {L"C:", false, L"C:"},
      {L"1:\\inst.exe", false, L"1:"},
      {L"[:\\x", false, L"[:"},
      {L"@:\\x", false, L"@:"},
      {L"`:\\x", false, L"`:"},
      {L"{:\\x", false, L"{:"},
      {L"\u00c4:\\x", false, L"\u00c4:"},
      {L"inst.exe", false, L""},
      {L"", false, L""},
      {L"a/b\\c", false, L"a/b"},
      {L"a/b\\", false, L"a/b"},
      {L"\\inst.exe", false, L"\\"},
      {L"/usr/bin/inst", false, L"/usr/bin"},
      {L"/", false, L"/"},
      {L"\\\\server\\share\\x.exe", true, L"\\\\server\\share"},
      {L"\\\\server\\x.exe", true, L"\\\\server\\"},
      {L"\\\\s", true, L"\\\\s"},
      {L"\\\\server/x.exe", true, L"\\\\server/"},
      {L"//server/share/x", false, L"//server/share"},
      {L"/?\?/x", false, L"/?\?"},
      {L"\\\\", false, L"\\\\"},
      {L"\\\\\\x", false, L"\\\\\\"},
      {L"\\\\?\\C:\\x.exe", true, L"\\\\?\\C:"},
      {L"\\\\.\\pipe", true, L"\\\\.\\"},
      {L"\\??\\C:\\x", true, L"\\??\\C:"},
      {L"\\??x\\y", false, L"\\??x"},
      {L"\\?a\\y", false, L"\\?a"},
      {L"x\\?\\y", false, L"x\\?"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(is_absolute_path(row.path), row.absolute) << row.path;
    EXPECT_EQ(parent_directory(row.path), row.parent);
  }
}

}  // namespace
}  // namespace svcinst
