#include <unistd.h>

#include <csignal>

#include "platform/process_api.h"

namespace {

// Windows knows no signal for a write that nobody reads: it fails, and the process goes on.
[[gnu::constructor(101)]] void ignore_broken_pipes() {
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

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
