// The peers that are compiled with other settings than ours.
#pragma once

#include <stdarg.h>

#ifdef __cplusplus
extern "C" {
#endif

int peer_stb_vsnprintf(char* buffer, int size, const char* format, va_list arguments);

#ifdef __cplusplus
}
#endif
