// What tests link in the platform's place: a clock, a process and a Service Control Manager that
// play a script. Only Sleep moves the tick count. Every call prints itself, and a blank:
//   Sleep(1000)   FreeConsole()   AttachConsole(7)
//   +manager   +svc   create("svc", "Display", "C:\x.exe", "Tcpip\0\0")   describe("text")
//   query   stop   delete   -svc   -manager
// "+" opens and "-" closes a handle. A call that fails has " fails" behind it: the one that the
// script names, and one on a handle of the wrong kind or with a fixed argument other than it should
// have. The sanitizers see a handle that is left open or used once it was closed.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/clock_api.h"
#include "platform/process_api.h"
#include "platform/service_api.h"
#include "platform/steady_clock.h"

namespace svcinst {

/// What the calls answer. The process's id is 4711.
struct ScriptedClock {
  std::int64_t nanoseconds = 100'000;  // for monotonic_nanoseconds; each reading adds one
  SYSTEMTIME local_time = {2024, 5, 1, 6, 7, 8, 9, 10};  // 6 May, 07:08:09.010; nothing moves it
  DWORD thread_id = 0x1A2C;
  DWORD tick_count = 0;  // milliseconds; begins again at 0 after 2^32
};

inline constinit ScriptedClock scripted_clock;

struct ScriptedStatus {
  DWORD state = SERVICE_STOPPED;
  DWORD checkpoint = 0;
  DWORD wait_hint = 0;  // milliseconds
};

struct ScriptedServices {
  /// Each query and each stop that succeeds reports the next one; the last one stays.
  std::vector<ScriptedStatus> statuses = {{}};
  /// The call that fails: "query 3" is the third query, "create 1" the first create.
  std::string failing_call = "none";

  std::map<std::string, int> calls = {};  // how many of each were made so far
  std::size_t reports = 0;                // given so far
};

inline ScriptedServices scripted_services;

}  // namespace svcinst
