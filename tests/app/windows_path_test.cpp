#include "app/windows_path.h"

#include <gtest/gtest.h>

namespace svcinst {
namespace {

struct Row {
  const wchar_t* path;
  const wchar_t* parent;
};

constexpr Row kAbsolute[] = {
    {LR"(C:\tools\svcinst.exe)", LR"(C:\tools)"},
    {LR"(z:/tools//svcinst.exe)", LR"(z:/tools)"},
    {LR"(C:\\svcinst.exe)", LR"(C:\\)"},
    {LR"(Z:\)", LR"(Z:\)"},
    {LR"(\\server\share\x.exe)", LR"(\\server\share)"},
    {LR"(\\server\x.exe)", LR"(\\server\)"},
    {LR"(\\s)", LR"(\\s)"},
    {LR"(\\?\C:\x.exe)", LR"(\\?\C:)"},
    {LR"(\\.\pipe)", LR"(\\.\)"},
    {LR"(\??\C:\x.exe)", LR"(\??\C:)"},
};

constexpr Row kRelative[] = {
    {L"", L""},
    {L"svcinst.exe", L""},
    {LR"(a\b/c)", LR"(a\b)"},
    {LR"(a\b\)", LR"(a\b)"},
    {LR"(\svcinst.exe)", LR"(\)"},
    {LR"(C:svcinst.exe)", LR"(C:)"},
    {LR"(a:)", LR"(a:)"},
    {LR"(1:\svcinst.exe)", LR"(1:)"},
    {LR"([:\svcinst.exe)", LR"([:)"},
    {LR"(//server/share)", LR"(//server)"},
    {LR"(\\)", LR"(\\)"},
    {LR"(\\\x)", LR"(\\\)"},
    {LR"(\?a\x)", LR"(\?a)"},
};

TEST(WindowsPath, IsAbsoluteBehindADriveAServerOrADevice) {
  for (const Row& row : kAbsolute) EXPECT_TRUE(is_absolute_path(row.path)) << row.path;
  for (const Row& row : kRelative) EXPECT_FALSE(is_absolute_path(row.path)) << row.path;
}

TEST(WindowsPath, LosesItsLastComponentButNotItsRoot) {
  for (const Row& row : kAbsolute) EXPECT_EQ(parent_directory(row.path), row.parent);
  for (const Row& row : kRelative) EXPECT_EQ(parent_directory(row.path), row.parent);
}

}  // namespace
}  // namespace svcinst
