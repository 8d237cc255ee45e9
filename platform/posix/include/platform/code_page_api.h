// Code pages. There is one here, UTF-8: the ANSI, the OEM and the locale's code page are all it.
// What is not valid text is not converted; values above 0x10FFFF pass, as the C library takes them.
#pragma once

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_OEMCP = 1;
inline constexpr UINT CP_UTF8 = 65001;
inline constexpr DWORD MB_ERR_INVALID_CHARS = 8;

/// File names are in the ANSI code page: TRUE.
BOOL AreFileApisANSI();

/// The code page of the runtime library's locale: CP_UTF8.
extern "C" UINT ___lc_codepage_func();

/// text_length: bytes. result_size: wide characters; 0 asks for the size needed. Returns the count
/// of wide characters, 0 on failure. code_page and flags change nothing.
int MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR text, int text_length, LPWSTR result,
                        int result_size);

/// The way back: text_length in wide characters, result_size and the returned count in bytes.
int WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR text, int text_length, LPSTR result,
                        int result_size, LPCSTR default_char, BOOL* used_default_char);
// NOLINTEND(readability-identifier-naming)
