#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

#include "platform/process_api.h"

namespace {

// Windows knows no signal for a write that nobody reads or that passes a limit, and hands out no
// standard handle that was closed at the start: a socket that got its number would receive what is
// written there.
void make_as_on_windows() {
  for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
    if (fcntl(descriptor, F_GETFD) == -1) open("/dev/null", O_RDWR);
}

// The loader calls the functions of this section before any library's constructors, which may log.
[[gnu::used, gnu::section(".preinit_array")]] void (*const run_first)() = make_as_on_windows;

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
