// A Windows service. One called "svcinst-hung" takes no stop, and ends after twenty seconds.
#include <windows.h>

#include <string>

namespace {

std::string name;
SERVICE_STATUS_HANDLE manager;

void report(DWORD state) {
  SERVICE_STATUS status{SERVICE_WIN32_OWN_PROCESS, state, SERVICE_ACCEPT_STOP, 0, 0, 0, 0};
  SetServiceStatus(manager, &status);
}

void WINAPI handle_stop(DWORD /*control*/) {
  report(name == "svcinst-hung" ? SERVICE_STOP_PENDING : SERVICE_STOPPED);
}

void WINAPI run(DWORD /*count*/, LPSTR* arguments) {
  name = arguments[0];
  manager = RegisterServiceCtrlHandlerA(arguments[0], handle_stop);
  report(SERVICE_RUNNING);
  if (name != "svcinst-hung") return;
  Sleep(20'000);  // milliseconds
  ExitProcess(1);
}

}  // namespace

int main() {
  char any_name[] = "";
  const SERVICE_TABLE_ENTRYA services[] = {{any_name, run}, {nullptr, nullptr}};
  return StartServiceCtrlDispatcherA(services) != FALSE ? 0 : 1;
}
