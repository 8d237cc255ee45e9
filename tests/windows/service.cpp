// A service. The last word of its command line chooses what a stop does to it.
#include <windows.h>

#include <cstring>

namespace {

enum class Stop { at_once, slowly, in_steps, never, returns };

struct Mode {
  const char* name;
  DWORD accepted;  // controls
  Stop stop;
};

constexpr DWORD kPause = SERVICE_ACCEPT_PAUSE_CONTINUE;
constexpr Mode kModes[] = {{"quick", SERVICE_ACCEPT_STOP | kPause, Stop::at_once},
                           {"slow", SERVICE_ACCEPT_STOP, Stop::slowly},
                           {"stepwise", SERVICE_ACCEPT_STOP, Stop::in_steps},
                           {"hung", SERVICE_ACCEPT_STOP, Stop::never},
                           {"returning", SERVICE_ACCEPT_STOP, Stop::returns},
                           {"refusing", kPause, Stop::never}};

const Mode* mode = kModes;
SERVICE_STATUS_HANDLE manager;

void report(DWORD state, DWORD accepted, DWORD checkpoint = 0, DWORD wait_hint = 0) {
  SERVICE_STATUS status{SERVICE_WIN32_OWN_PROCESS, state, accepted, 0, 0, checkpoint, wait_hint};
  SetServiceStatus(manager, &status);
}

constexpr DWORD kHint = 1500;

// Takes far longer than its wait hint, so that only the checkpoints keep others waiting. Whether
// the last report has one too makes the difference between "slow" and "stepwise".
DWORD WINAPI finish(LPVOID) {
  if (mode->stop == Stop::returns) {
    Sleep(kHint);
    report(SERVICE_RUNNING, mode->accepted, 2);
    return 0;
  }
  constexpr DWORD kSteps = 20;
  for (DWORD checkpoint = 2; checkpoint <= kSteps; ++checkpoint) {
    Sleep(250);
    report(SERVICE_STOP_PENDING, 0, checkpoint, kHint);
  }
  report(SERVICE_STOPPED, 0, mode->stop == Stop::in_steps ? kSteps + 1 : 0);
  return 0;
}

void stop() {
  if (mode->stop == Stop::at_once) return report(SERVICE_STOPPED, 0);
  report(SERVICE_STOP_PENDING, 0, 1, kHint);
  if (mode->stop != Stop::never) CreateThread(nullptr, 0, finish, nullptr, 0, nullptr);
}

void WINAPI handle_control(DWORD control) {
  if (control == SERVICE_CONTROL_STOP) stop();
  if (control == SERVICE_CONTROL_PAUSE) report(SERVICE_PAUSED, mode->accepted);
}

void WINAPI run(DWORD, LPSTR*) {
  manager = RegisterServiceCtrlHandlerA("", handle_control);
  report(SERVICE_RUNNING, mode->accepted);
}

}  // namespace

int main(int argc, char** argv) {
  for (const Mode& known : kModes)
    if (std::strcmp(argv[argc - 1], known.name) == 0) mode = &known;
  char name[] = "";
  const SERVICE_TABLE_ENTRYA services[] = {{name, run}, {nullptr, nullptr}};
  return StartServiceCtrlDispatcherA(services) != FALSE ? 0 : 1;
}
