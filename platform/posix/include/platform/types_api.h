// The Windows names of plain types, for a system that has none. No Windows header exists here: what
// the code above calls is declared in this folder, under the names, sizes and values of the
// original.
#pragma once

#include <cstdint>

using BOOL = int;  // TRUE or FALSE
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using WCHAR = wchar_t;  // one code point here, one UTF-16 unit on Windows
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using LPVOID = void*;

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;
// NOLINTEND(readability-identifier-naming)
