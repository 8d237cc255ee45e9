// A peer that consists of its header: here is its code.
#define STB_SPRINTF_IMPLEMENTATION
#include <stb/stb_sprintf.h>
