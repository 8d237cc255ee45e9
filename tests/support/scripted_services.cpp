#include "tests/support/scripted_services.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>

namespace svcinst {
namespace {

struct State {
  ScriptedServices script;
  std::map<SC_HANDLE, std::string> open;  // the names of what handles are open to
  std::uintptr_t handles = 0;             // made so far: none comes twice
  int calls = 0;
  std::size_t reports = 0;
};

State state;

// Records a call that succeeds where it is the right one and the script allows it.
bool record(const std::string& call, bool is_right) {
  const bool succeeds = ++state.calls != state.script.failing_call && is_right;
  call_log.push_back(succeeds ? call : call + " fails");
  return succeeds;
}

bool is_open(SC_HANDLE handle) {
  return state.open.contains(handle);
}

SC_HANDLE open(const std::string& name) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): it is never followed
  const auto handle = reinterpret_cast<SC_HANDLE>(++state.handles);
  state.open[handle] = name;
  return handle;
}

std::string quoted(const char* text) {
  return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

// A dependency list; read up to its last NUL and no further.
std::string quoted_list(const char* names) {
  if (names == nullptr) return "null";
  std::string shown;
  for (; *names != '\0'; names += std::strlen(names) + 1) shown += std::string(names) + "\\0";
  return '"' + shown + "\\0\"";
}

// The next status of the script.
SERVICE_STATUS report() {
  const auto& statuses = state.script.statuses;
  const ScriptedStatus& status = statuses.at(std::min(state.reports++, statuses.size() - 1));
  return {0x10, status.state, 1, 0, 0, status.checkpoint, status.wait_hint};
}

}  // namespace

void play(const ScriptedServices& script) {
  state = {script, {}};
  scripted_clock = {};
  call_log.clear();
}

std::size_t open_handles() {
  return state.open.size();
}

}  // namespace svcinst

using namespace svcinst;

SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access) {
  const bool is_right = machine == nullptr && database == nullptr && access == 0xF003F;
  return record("+manager", is_right) ? open("manager") : nullptr;
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access) {
  const bool is_right = is_open(manager) && (access == 0xF01FF || access == 2);
  const std::string rights = access == 2 ? "(to configure)" : "";
  return record('+' + std::string(name) + rights, is_right) ? open(name) : nullptr;
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password) {
  const bool is_right = is_open(manager) && access == 0xF01FF && service_type == 0x10 &&
                        start_type == 2 && error_control == 1 && group == nullptr &&
                        tag_id == nullptr && account == nullptr && password == nullptr;
  const std::string call = "create(" + quoted(name) + ", " + quoted(display_name) + ", " +
                           quoted(binary_path) + ", " + quoted_list(dependencies) + ")";
  return record(call, is_right) ? open(name) : nullptr;
}

BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD level, LPVOID info) {
  const char* const text = static_cast<const SERVICE_DESCRIPTIONA*>(info)->lpDescription;
  return record("describe(" + quoted(text) + ")", is_open(service) && level == 1) ? TRUE : FALSE;
}

BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size,
                          LPDWORD needed) {
  if (!record("query", is_open(service) && level == 0 && size == 36)) return FALSE;
  const SERVICE_STATUS status = report();
  std::memcpy(buffer, &status, sizeof status);
  *needed = size;
  return TRUE;
}

BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status) {
  if (!record("stop", is_open(service) && control == 1)) return FALSE;
  *status = report();
  return TRUE;
}

BOOL DeleteService(SC_HANDLE service) {
  return record("delete", is_open(service)) ? TRUE : FALSE;
}

BOOL CloseServiceHandle(SC_HANDLE handle) {
  call_log.push_back('-' + (is_open(handle) ? state.open[handle] : "a closed handle"));
  return state.open.erase(handle) != 0 ? TRUE : FALSE;
}
