// Code pages. There is one here, UTF-8: the ANSI, the OEM and the locale's code page are all it,
// and both directions are strict. A length of -1 means up to and with the closing NUL; a result
// size of 0 asks for the size needed. The result is the count of units, 0 on failure: invalid
// bytes, overlong forms, surrogates, values above 0x10FFFF, no text, a result too small, another
// code page or flag.
#pragma once

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming,bugprone-reserved-identifier): the names are Windows'.
inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_OEMCP = 1;
inline constexpr UINT CP_UTF8 = 65001;
inline constexpr DWORD MB_ERR_INVALID_CHARS = 8;

/// File names are in the ANSI code page: TRUE.
BOOL AreFileApisANSI();

/// The code page of the runtime library's locale: CP_UTF8.
extern "C" UINT ___lc_codepage_func();

/// text_length: bytes. result_size: wide characters.
int MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR text, int text_length, LPWSTR result,
                        int result_size);

/// text_length: wide characters. result_size: bytes. The last two arguments must be null.
int WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR text, int text_length, LPSTR result,
                        int result_size, LPCSTR default_char, BOOL* used_default_char);
// NOLINTEND(readability-identifier-naming,bugprone-reserved-identifier)
