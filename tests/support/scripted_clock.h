// The clock and the process as a test sets them, in the platform's place: only Sleep moves the
// time. Calls print themselves, a blank behind each: "Sleep(1000) ", "FreeConsole() ",
// "AttachConsole(7) ".
#pragma once

#include "platform/clock_api.h"
#include "platform/process_api.h"
#include "platform/steady_clock.h"

namespace svcinst {

/// What the calls answer. The process's id is 4711.
struct ScriptedClock {
  std::int64_t nanoseconds = 0;       // for monotonic_nanoseconds
  std::int64_t nanoseconds_read = 0;  // how far each reading of `nanoseconds` moves it afterwards
  SYSTEMTIME local_time = {2024, 5, 1, 6, 7, 8, 9, 10};  // 6 May, 07:08:09.010; nothing moves it
  DWORD thread_id = 0x1A2C;
  DWORD tick_count = 0;  // milliseconds; begins again at 0 after 2^32
};

inline constinit ScriptedClock scripted_clock;

}  // namespace svcinst
