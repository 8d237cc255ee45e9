#include "tests/support/scripted_services.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

using namespace svcinst;

namespace {

// Prints a call, which succeeds where it is the right one and the script allows it.
bool call(const std::string& text, bool is_right) {
  const bool succeeds = ++scripted_services.calls != scripted_services.failing_call && is_right;
  std::printf("%s%s ", text.c_str(), succeeds ? "" : " fails");
  return succeeds;
}

SC_HANDLE open(const char* name) {
  return reinterpret_cast<SC_HANDLE>(new std::string(name));
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
  if (names == nullptr) return "null";
  std::string shown;
  for (; *names != '\0'; names += std::strlen(names) + 1) shown += std::string(names) + "\\0";
  return '"' + shown + "\\0\"";
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
  return call("+manager", is_right) ? open("manager") : nullptr;
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access) {
  const std::string rights = access == 2 ? "(to configure)" : "";
  const bool is_right = *name_of(manager) == "manager" && (access == 0xF01FF || access == 2);
  return call('+' + std::string(name) + rights, is_right) ? open(name) : nullptr;
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password) {
  const bool is_right = *name_of(manager) == "manager" && access == 0xF01FF &&
                        service_type == 0x10 && start_type == 2 && error_control == 1 &&
                        group == nullptr && tag_id == nullptr && account == nullptr &&
                        password == nullptr;
  const std::string text = "create(" + quoted(name) + ", " + quoted(display_name) + ", " +
                           quoted(binary_path) + ", " + quoted_list(dependencies) + ")";
  return call(text, is_right) ? open(name) : nullptr;
}

BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD level, LPVOID info) {
  const char* const text = static_cast<const SERVICE_DESCRIPTIONA*>(info)->lpDescription;
  return call("describe(" + quoted(text) + ")", is_service(service) && level == 1) ? TRUE : FALSE;
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
