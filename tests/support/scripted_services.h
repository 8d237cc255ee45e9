// A Service Control Manager that plays a script, linked in the real one's place. It records every
// call in call_log() as one line, with its arguments and a result that is a handle or a failure:
//   OpenSCManagerA(null, null, 0xF003F) = manager
//   CreateServiceA(manager, "svc", "Display", 0xF01FF, 0x10, 0x2, 0x1, "C:\x.exe", null, null,
//       "Tcpip\0\0", null, null) = service                                         (in one line)
//   ChangeServiceConfig2A(service, 0x1, "text") = FALSE
// A handle that is not open shows as "closed service" or "unknown", and the call fails. Text is
// shown byte by byte, a NUL of a dependency list as \0.
#pragma once

#include <cstddef>
#include <string>
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
  /// Each QueryServiceStatusEx and each ControlService that succeeds takes the next one and reports
  /// it; the last one stays.
  std::vector<ScriptedStatus> statuses = {{}};
  /// Which call fails, counted from 1 over all functions; 0 means none.
  int failing_call = 0;
};

/// The script; change it at will.
ScriptedServices& scripted_services();

/// How many handles are open.
std::size_t open_handles();

/// Empties the script, the log and the counts, forgets all handles and resets the clock.
void reset_scripted_services();

}  // namespace svcinst
