#include <unistd.h>

#include "platform/process_api.h"

DWORD GetCurrentProcessId() {
  return static_cast<DWORD>(getpid());
}

DWORD GetCurrentThreadId() {
  return static_cast<DWORD>(gettid());
}

BOOL FreeConsole() {
  return FALSE;
}

BOOL AttachConsole(DWORD /*process_id*/) {
  return FALSE;
}
