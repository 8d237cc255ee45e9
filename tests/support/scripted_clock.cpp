#include "tests/support/scripted_clock.h"

namespace svcinst {

std::int64_t monotonic_nanoseconds() {
  const std::int64_t now = scripted_clock.nanoseconds;
  scripted_clock.nanoseconds += scripted_clock.nanoseconds_read;
  return now;
}

}  // namespace svcinst

using namespace svcinst;

DWORD GetTickCount() {
  return scripted_clock.tick_count;
}

void Sleep(DWORD milliseconds) {
  call_log.push_back("Sleep(" + std::to_string(milliseconds) + ")");
  scripted_clock.tick_count += milliseconds;
}

void GetLocalTime(LPSYSTEMTIME time) {
  *time = scripted_clock.local_time;
  call_log.emplace_back("GetLocalTime()");
}

DWORD GetCurrentProcessId() {
  return scripted_clock.process_id;
}

DWORD GetCurrentThreadId() {
  return scripted_clock.thread_id;
}

BOOL FreeConsole() {
  call_log.emplace_back("FreeConsole()");
  return TRUE;
}

BOOL AttachConsole(DWORD process_id) {
  call_log.push_back("AttachConsole(" + std::to_string(process_id) + ")");
  return TRUE;
}
