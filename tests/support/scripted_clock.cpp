#include <cstdio>

#include "tests/support/scripted_platform.h"

using svcinst::scripted_clock;

std::int64_t svcinst::monotonic_nanoseconds() {
  return scripted_clock.nanoseconds++;
}

DWORD GetTickCount() {
  return scripted_clock.tick_count;
}

void Sleep(DWORD milliseconds) {
  std::printf("Sleep(%u) ", static_cast<unsigned>(milliseconds));
  scripted_clock.tick_count += milliseconds;
}

void GetLocalTime(LPSYSTEMTIME time) {
  *time = scripted_clock.local_time;
}

DWORD GetCurrentProcessId() {
  return 4711;
}

DWORD GetCurrentThreadId() {
  return scripted_clock.thread_id;
}

BOOL FreeConsole() {
  return std::printf("FreeConsole() ");
}

BOOL AttachConsole(DWORD process_id) {
  return std::printf("AttachConsole(%u) ", static_cast<unsigned>(process_id));
}
