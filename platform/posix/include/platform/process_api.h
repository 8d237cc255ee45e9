// The process, its threads and its console. A test that replaces one function defines all of them.
#pragma once

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
DWORD GetCurrentProcessId();

/// The kernel's id of the calling thread.
DWORD GetCurrentThreadId();

/// Consoles belong to terminals here: there is none to leave and none to attach to. Both fail.
BOOL FreeConsole();
BOOL AttachConsole(DWORD process_id);
// NOLINTEND(readability-identifier-naming)
