#include "tests/support/scripted_clock.h"

#include <utility>

namespace svcinst {

ScriptedClock& scripted_clock() {
  static ScriptedClock clock;
  return clock;
}

std::vector<std::string>& call_log() {
  static std::vector<std::string> log;
  return log;
}

void reset_scripted_clock() {
  scripted_clock() = {};
  call_log().clear();
}

std::int64_t monotonic_nanoseconds() {
  ScriptedClock& clock = scripted_clock();
  return std::exchange(clock.nanoseconds, clock.nanoseconds + clock.nanoseconds_read);
}

}  // namespace svcinst

using svcinst::call_log;
using svcinst::scripted_clock;

DWORD GetTickCount() {
  return scripted_clock().tick_count;
}

void Sleep(DWORD milliseconds) {
  call_log().push_back("Sleep(" + std::to_string(milliseconds) + ")");
  scripted_clock().tick_count += milliseconds;
}

void GetLocalTime(LPSYSTEMTIME time) {
  *time = scripted_clock().local_time;
  call_log().emplace_back("GetLocalTime()");
}

DWORD GetCurrentProcessId() {
  return scripted_clock().process_id;
}

DWORD GetCurrentThreadId() {
  return scripted_clock().thread_id;
}

BOOL FreeConsole() {
  call_log().emplace_back("FreeConsole()");
  return TRUE;
}

BOOL AttachConsole(DWORD process_id) {
  call_log().push_back("AttachConsole(" + std::to_string(process_id) + ")");
  return TRUE;
}
