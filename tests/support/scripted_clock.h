// The clock and the process as a test sets them, linked in the platform's place: time stands still
// until the test, or a Sleep, moves it. Also the one log of all calls that scripted parts record.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/clock_api.h"
#include "platform/process_api.h"
#include "platform/steady_clock.h"

namespace svcinst {

/// What the calls answer.
struct ScriptedClock {
  DWORD tick_count = 0;          // milliseconds, for GetTickCount; begins again at 0 after 2^32
  std::int64_t nanoseconds = 0;  // for monotonic_nanoseconds
  std::int64_t nanoseconds_read = 0;  // how far each reading of `nanoseconds` moves it afterwards
  SYSTEMTIME local_time = {2024, 5, 1, 6, 7, 8, 9, 10};  // 6 May, 07:08:09.010; nothing moves it
  DWORD process_id = 4711;
  DWORD thread_id = 0x1A2C;
};

inline constinit ScriptedClock scripted_clock;

/// The calls, one a line: "Sleep(1000)", "GetLocalTime()", "FreeConsole()", "AttachConsole(7)", and
/// those of other scripted parts.
inline constinit std::vector<std::string> call_log;

}  // namespace svcinst
