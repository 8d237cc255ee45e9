// A service. The last word of its command line chooses how it starts and what a stop does to it.
#include <windows.h>

#include <cstring>

namespace {

enum class Stop { at_once, slowly, never, returns };

struct Mode {
  const char* name;
  DWORD state;     // once it has started
  DWORD accepted;  // controls
  Stop stop;
};

constexpr Mode kModes[] = {
    {"quick", SERVICE_RUNNING, SERVICE_ACCEPT_STOP, Stop::at_once},
    {"slow", SERVICE_RUNNING, SERVICE_ACCEPT_STOP, Stop::slowly},
    {"hung", SERVICE_RUNNING, SERVICE_ACCEPT_STOP, Stop::never},
    {"returning", SERVICE_RUNNING, SERVICE_ACCEPT_STOP, Stop::returns},
    {"refusing", SERVICE_RUNNING, 0, Stop::never},
    {"paused", SERVICE_PAUSED, SERVICE_ACCEPT_STOP, Stop::at_once},
    {"paused-refusing", SERVICE_PAUSED, 0, Stop::never},
};

const Mode* mode = kModes;
SERVICE_STATUS_HANDLE manager;

void report(DWORD state, DWORD accepted, DWORD checkpoint = 0, DWORD wait_hint = 0) {
  SERVICE_STATUS status{SERVICE_WIN32_OWN_PROCESS, state, accepted, 0, 0, checkpoint, wait_hint};
  SetServiceStatus(manager, &status);
}

// Takes far longer than its wait hint, so that only the checkpoints keep others waiting.
DWORD WINAPI stop_slowly(LPVOID) {
  constexpr DWORD kHint = 1500;
  for (DWORD checkpoint = 1; checkpoint <= 20; ++checkpoint) {
    report(SERVICE_STOP_PENDING, 0, checkpoint, kHint);
    Sleep(250);
  }
  report(SERVICE_STOPPED, 0);
  return 0;
}

DWORD WINAPI return_to_running(LPVOID) {
  report(SERVICE_STOP_PENDING, 0, 1, 10000);
  Sleep(1500);
  report(SERVICE_RUNNING, SERVICE_ACCEPT_STOP);
  return 0;
}

void WINAPI handle_control(DWORD control) {
  if (control != SERVICE_CONTROL_STOP) return;
  switch (mode->stop) {
    case Stop::at_once: return report(SERVICE_STOPPED, 0);
    case Stop::never: return report(SERVICE_STOP_PENDING, 0, 1, 1000);
    case Stop::slowly: CreateThread(nullptr, 0, stop_slowly, nullptr, 0, nullptr); return;
    case Stop::returns: CreateThread(nullptr, 0, return_to_running, nullptr, 0, nullptr); return;
  }
}

void WINAPI run(DWORD, LPSTR*) {
  manager = RegisterServiceCtrlHandlerA("", handle_control);
  report(mode->state, mode->accepted);
}

}  // namespace

int main(int argc, char** argv) {
  for (const Mode& known : kModes)
    if (std::strcmp(argv[argc - 1], known.name) == 0) mode = &known;
  char name[] = "";
  const SERVICE_TABLE_ENTRYA services[] = {{name, run}, {nullptr, nullptr}};
  return StartServiceCtrlDispatcherA(services) != FALSE ? 0 : 1;
}
