#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/support/scripted_platform.h"

using namespace svcinst;

namespace {

// Prints a call, which succeeds where it is the right one and the script allows it.
bool call(const std::string& name, bool is_right, const std::string& arguments = "") {
  const std::string numbered = name + " " + std::to_string(++scripted_services.calls[name]);
  const bool succeeds = is_right && numbered != scripted_services.failing_call;
  std::printf("%s%s%s ", name.c_str(), arguments.c_str(), succeeds ? "" : " fails");
  return succeeds;
}

SC_HANDLE open(bool succeeds, const char* name) {
  return succeeds ? reinterpret_cast<SC_HANDLE>(new std::string(name)) : nullptr;
}

std::string* name_of(SC_HANDLE handle) {
  return reinterpret_cast<std::string*>(handle);
}

bool is_service(SC_HANDLE handle) {
  return handle != nullptr && *name_of(handle) != "manager";
}

std::string quoted(const char* text) {
  return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

// A dependency list; read up to its last NUL and no further.
std::string quoted_list(const char* names) {
  std::string shown;
  for (const char* at = names; at != nullptr && *at != '\0'; at += std::strlen(at) + 1)
    shown += std::string(at) + "\\0";
  return names == nullptr ? "null" : '"' + shown + "\\0\"";
}

// The next status of the script.
SERVICE_STATUS report() {
  const auto& statuses = scripted_services.statuses;
  const auto& status = statuses.at(std::min(scripted_services.reports++, statuses.size() - 1));
  return {0x10, status.state, 1, 0, 0, status.checkpoint, status.wait_hint};
}

}  // namespace

SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access) {
  const bool is_right = machine == nullptr && database == nullptr && access == 0xF003F;
  return open(call("+manager", is_right), "manager");
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access) {
  const bool is_right = *name_of(manager) == "manager" && (access == 0xF01FF || access == 2);
  const char* const rights = access == 2 ? "(to configure)" : "";
  return open(call('+' + std::string(name), is_right, rights), name);
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password) {
  const bool is_right = *name_of(manager) == "manager" && access == 0xF01FF &&
                        service_type == 0x10 && start_type == 2 && error_control == 1 &&
                        group == nullptr && tag_id == nullptr && account == nullptr &&
                        password == nullptr;
  const std::string arguments = "(" + quoted(name) + ", " + quoted(display_name) + ", " +
                                quoted(binary_path) + ", " + quoted_list(dependencies) + ")";
  return open(call("create", is_right, arguments), name);
}

BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD level, LPVOID info) {
  const char* const text = static_cast<const SERVICE_DESCRIPTIONA*>(info)->lpDescription;
  const bool is_right = is_service(service) && level == 1;
  return call("describe", is_right, "(" + quoted(text) + ")") ? TRUE : FALSE;
}

BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size,
                          LPDWORD needed) {
  if (!call("query", is_service(service) && level == 0 && size == 36)) return FALSE;
  const SERVICE_STATUS status = report();
  std::memcpy(buffer, &status, sizeof status);
  *needed = size;
  return TRUE;
}

BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status) {
  if (!call("stop", is_service(service) && control == 1)) return FALSE;
  *status = report();
  return TRUE;
}

BOOL DeleteService(SC_HANDLE service) {
  return call("delete", is_service(service)) ? TRUE : FALSE;
}

BOOL CloseServiceHandle(SC_HANDLE handle) {
  std::printf("-%s ", name_of(handle)->c_str());
  delete name_of(handle);
  return TRUE;
}
