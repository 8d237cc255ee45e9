// The Windows types. The functions of the system's libraries are declared as not imported, so that
// a test may define them itself.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
// The names are theirs.
#define _ADVAPI32_
#define _KERNEL32_
// winsock2.h has to come before windows.h; ws2tcpip.h has it, and socklen_t.
// clang-format off
#include <ws2tcpip.h>
#include <windows.h>
// clang-format on
