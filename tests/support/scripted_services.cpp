#include "tests/support/scripted_services.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace svcinst {
namespace {

struct Handle {
  std::string kind;
  bool open = true;
};

// Handles are kept after they were closed, so that no address comes twice.
struct State {
  ScriptedServices script;
  std::vector<std::unique_ptr<Handle>> handles;
  int calls = 0;
  std::size_t next_status = 0;
};

State& state() {
  static State the_state;
  return the_state;
}

Handle* find(SC_HANDLE handle) {
  for (const auto& known : state().handles)
    if (reinterpret_cast<SC_HANDLE>(known.get()) == handle) return known.get();
  return nullptr;
}

// A dependency list; read up to its last NUL and no further.
struct List {
  const char* names;
};

std::string text_of(SC_HANDLE handle) {
  const Handle* known = find(handle);
  if (known == nullptr) return handle == nullptr ? "null" : "unknown";
  return (known->open ? "" : "closed ") + known->kind;
}

std::string text_of(const char* text) {
  return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

std::string text_of(DWORD value) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "0x%X", static_cast<unsigned>(value));
  return digits;
}

std::string text_of(List list) {
  if (list.names == nullptr) return "null";
  std::string shown;
  for (const char* name = list.names; *name != '\0'; name += std::strlen(name) + 1)
    shown += std::string(name) + "\\0";
  return '"' + shown + "\\0\"";
}

template <class... Arguments>
std::string list_of(Arguments... arguments) {
  std::string all;
  ((all += (all.empty() ? "" : ", ") + text_of(arguments)), ...);
  return all;
}

bool is_open(SC_HANDLE handle) {
  const Handle* known = find(handle);
  return known != nullptr && known->open;
}

// Counts a call; false when the script lets this one fail.
bool may_succeed() {
  return ++state().calls != state().script.failing_call;
}

// Records a call on `handle`, which succeeds when that is open and the script allows it.
template <class... Arguments>
BOOL record(const std::string& function, SC_HANDLE handle, Arguments... arguments) {
  const bool success = may_succeed() && is_open(handle);
  call_log().push_back(function + "(" + list_of(handle, arguments...) + ")" +
                       (success ? "" : " = FALSE"));
  return success ? TRUE : FALSE;
}

// Records a call that opens a handle of `kind` when its parent is open and the script allows it.
SC_HANDLE record_open(const std::string& function, const std::string& arguments, bool parent_open,
                      const std::string& kind) {
  SC_HANDLE handle = nullptr;
  if (may_succeed() && parent_open) {
    auto& opened = state().handles.emplace_back(std::make_unique<Handle>(Handle{kind}));
    handle = reinterpret_cast<SC_HANDLE>(opened.get());
  }
  call_log().push_back(function + "(" + arguments + ") = " + text_of(handle));
  return handle;
}

// The next status of the script, as the seven fields that both kinds of record begin with.
SERVICE_STATUS next_status() {
  const auto& statuses = state().script.statuses;
  const ScriptedStatus status = statuses.at(std::min(state().next_status++, statuses.size() - 1));
  return {SERVICE_WIN32_OWN_PROCESS, status.state, 1, 0, 0, status.checkpoint, status.wait_hint};
}

}  // namespace

ScriptedServices& scripted_services() {
  return state().script;
}

std::size_t open_handles() {
  const auto& handles = state().handles;
  return static_cast<std::size_t>(
      std::count_if(handles.begin(), handles.end(), [](const auto& known) { return known->open; }));
}

void reset_scripted_services() {
  state() = {};
  reset_scripted_clock();
}

}  // namespace svcinst

using namespace svcinst;

SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access) {
  return record_open("OpenSCManagerA", list_of(machine, database, access), true, "manager");
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access) {
  return record_open("OpenServiceA", list_of(manager, name, access), is_open(manager), "service");
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password) {
  return record_open("CreateServiceA",
                     list_of(manager, name, display_name, access, service_type, start_type,
                             error_control, binary_path, group, tag_id == nullptr ? nullptr : "tag",
                             List{dependencies}, account, password),
                     is_open(manager), "service");
}

BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD level, LPVOID info) {
  const char* description = static_cast<const SERVICE_DESCRIPTIONA*>(info)->lpDescription;
  return record("ChangeServiceConfig2A", service, level, description);
}

BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size,
                          LPDWORD needed) {
  if (record("QueryServiceStatusEx", service, static_cast<DWORD>(level), size) == FALSE)
    return FALSE;
  const SERVICE_STATUS first = next_status();
  SERVICE_STATUS_PROCESS status{};
  std::memcpy(&status, &first, sizeof first);
  status.dwProcessId = 1234;
  std::memcpy(buffer, &status, std::min<std::size_t>(size, sizeof status));
  *needed = sizeof status;
  return TRUE;
}

BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status) {
  if (record("ControlService", service, control) == FALSE) return FALSE;
  *status = next_status();
  return TRUE;
}

BOOL DeleteService(SC_HANDLE service) {
  return record("DeleteService", service);
}

BOOL CloseServiceHandle(SC_HANDLE handle) {
  const BOOL closed = record("CloseServiceHandle", handle);
  Handle* known = find(handle);
  if (known != nullptr) known->open = false;  // even if it failed: nothing is to use it any more
  return closed;
}
