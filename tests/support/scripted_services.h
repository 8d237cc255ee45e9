// A Service Control Manager that plays a script, linked in the real one's place. It records every
// call in call_log() as one line, with its arguments and a result that is a handle or a failure:
//   OpenSCManagerA(null, null, 0xF003F) = manager#1
//   CreateServiceA(manager#1, "svc", "Display", 0xF01FF, 0x10, 2, 1, "C:\x.exe", null, null,
//       "Tcpip\0\0", null, null) = service#1                                       (in one line)
//   ChangeServiceConfig2A(service#1, 1, "text") = FALSE
//   QueryServiceStatusEx(service#1, 0, 36)
//   ControlService(service#1, 1)
//   CloseServiceHandle(service#1)
// Handles are numbered by kind; one that is not open shows as "closed service#1" or "unknown", and
// the call fails. Text is shown byte by byte, a NUL of a dependency list as \0.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/service_api.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {

struct ScriptedStatus {
  DWORD state = SERVICE_STOPPED;
  DWORD checkpoint = 0;
  DWORD wait_hint = 0;  // milliseconds
  DWORD takes = 0;      // milliseconds by which the call moves the clock
};

struct ScriptedServices {
  /// Each QueryServiceStatusEx and each ControlService that succeeds takes the next one and reports
  /// it; the last one stays.
  std::vector<ScriptedStatus> statuses = {{}};
  /// Which calls fail: a function's name and which of its calls, counted from 1; 0 means all of
  /// them.
  std::vector<std::pair<std::string, int>> failures;
  /// Which call of all functions together fails, counted from 1; 0 means none.
  int failing_call = 0;
};

/// The script; change it at will.
ScriptedServices& scripted_services();

/// How many handles are open.
std::size_t open_handles();

/// Empties the script, the log and the counts, forgets all handles and resets the clock.
void reset_scripted_services();

}  // namespace svcinst
