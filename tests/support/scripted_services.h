// A Service Control Manager that plays a script, linked in the real one's place. A call on a handle
// of the wrong kind, or with another fixed argument than it should have, fails. The sanitizers see
// a handle that is left open or used once it was closed. Every call prints itself, and a blank:
//   +manager   +svc   create("svc", "Display", "C:\x.exe", "Tcpip\0\0")   describe("text")
//   query   stop   delete   -svc   -manager
// "+" opens and "-" closes a handle. A call that fails has " fails" behind it.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/service_api.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {

struct ScriptedStatus {
  DWORD state = SERVICE_STOPPED;
  DWORD checkpoint = 0;
  DWORD wait_hint = 0;  // milliseconds
};

struct ScriptedServices {
  /// Each query and each stop that succeeds reports the next one; the last one stays.
  std::vector<ScriptedStatus> statuses = {{}};
  /// Which call fails, counted from 1 over all functions but CloseServiceHandle; 0 means none.
  int failing_call = 0;

  int calls = 0;            // made so far
  std::size_t reports = 0;  // given so far
};

inline ScriptedServices scripted_services;

}  // namespace svcinst
