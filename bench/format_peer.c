#include "bench/format_peer.h"

#define STB_SPRINTF_IMPLEMENTATION
#define STB_SPRINTF_STATIC
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_sprintf.h>

int peer_stb_vsnprintf(char* buffer, int size, const char* format, va_list arguments) {
  return stbsp_vsnprintf(buffer, size, format, arguments);
}
