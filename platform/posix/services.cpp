// The eight calls: what they allow, to which handle. The services themselves are in the store.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <utility>

#include "platform/posix/service_names.h"
#include "platform/posix/service_store.h"
#include "platform/service_api.h"

namespace {

using svcinst::ServiceStore;

// Rights that change nothing: to connect (or query the configuration), to enumerate services (or
// query the status), to query the lock state (or list dependents), to interrogate, to read the
// security data.
constexpr DWORD kManagerReadRights = SC_MANAGER_CONNECT | 0x0004 | 0x0010 | 0x20000;
constexpr DWORD kServiceReadRights =
    SERVICE_QUERY_CONFIG | SERVICE_QUERY_STATUS | 0x0008 | 0x0080 | 0x20000;

struct Handle {
  DWORD access = 0;
  std::int64_t service = 0;  // its number in the store; 0 for a manager
};

// A handle is a number that never comes again: one that was closed is recognised for ever.
struct Handles {
  std::unique_ptr<ServiceStore> store;  // there while a handle is open
  std::map<SC_HANDLE, Handle> open;
  std::uintptr_t last = 0;
};

Handles& handles() {
  static Handles all;
  return all;
}

SC_HANDLE add_handle(Handle handle) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): never followed
  const auto value = reinterpret_cast<SC_HANDLE>(++handles().last);
  handles().open.emplace(value, handle);
  return value;
}

// Lets the store go, at the end of a call, where no handle is left.
struct StoreUse {
  StoreUse() = default;
  StoreUse(const StoreUse&) = delete;
  StoreUse& operator=(const StoreUse&) = delete;
  ~StoreUse() {
    if (handles().open.empty()) handles().store.reset();
  }
};

// True when `access` asks for rights that exist and that the user can have.
bool may_have(const ServiceStore& store, DWORD access, DWORD all_rights, DWORD read_rights) {
  return (access & ~all_rights) == 0 && (store.is_writable() || (access & ~read_rights) == 0);
}

// True for an open manager handle with these rights.
bool is_manager(SC_HANDLE handle, DWORD rights) {
  const auto found = handles().open.find(handle);
  return found != handles().open.end() && found->second.service == 0 &&
         (found->second.access & rights) == rights;
}

// The number of the service of an open service handle with these rights; 0 for any other handle.
std::int64_t service_of(SC_HANDLE handle, DWORD rights) {
  const auto found = handles().open.find(handle);
  if (found == handles().open.end() || (found->second.access & rights) != rights) return 0;
  return found->second.service;
}

ServiceStore& store() {
  return *handles().store;
}

}  // namespace

SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access) {
  if (machine != nullptr || database != nullptr) return nullptr;
  const StoreUse use;
  if (handles().store == nullptr) handles().store = ServiceStore::open();
  if (handles().store == nullptr ||
      !may_have(store(), access, SC_MANAGER_ALL_ACCESS, kManagerReadRights))
    return nullptr;
  return add_handle({access, 0});
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access) {
  // Every manager handle may connect, asked for or not.
  if (!is_manager(manager, 0) || name == nullptr ||
      !may_have(store(), access, SERVICE_ALL_ACCESS, kServiceReadRights))
    return nullptr;
  const std::int64_t service = store().find(name);
  return service == 0 ? nullptr : add_handle({access, service});
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password) {
  if (!is_manager(manager, SC_MANAGER_CREATE_SERVICE) ||
      !may_have(store(), access, SERVICE_ALL_ACCESS, kServiceReadRights))
    return nullptr;
  if (!svcinst::is_service_name(name) || !svcinst::is_display_name(display_name)) return nullptr;
  // Groups and passwords are kept nowhere: better to refuse them than to lose them.
  if (binary_path == nullptr || group != nullptr || tag_id != nullptr || password != nullptr)
    return nullptr;
  const std::int64_t service = store().create({name, display_name, service_type, start_type,
                                               error_control, binary_path, dependencies, account});
  return service == 0 ? nullptr : add_handle({access, service});
}

BOOL ChangeServiceConfig2A(SC_HANDLE handle, DWORD level, LPVOID info) {
  const std::int64_t service = service_of(handle, SERVICE_CHANGE_CONFIG);
  if (service == 0 || level != SERVICE_CONFIG_DESCRIPTION || info == nullptr) return FALSE;
  const char* description = static_cast<const SERVICE_DESCRIPTIONA*>(info)->lpDescription;
  if (description == nullptr) return TRUE;
  return store().describe(service, description) ? TRUE : FALSE;
}

BOOL QueryServiceStatusEx(SC_HANDLE handle, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size,
                          LPDWORD needed) {
  const std::int64_t service = service_of(handle, SERVICE_QUERY_STATUS);
  if (service == 0 || level != SC_STATUS_PROCESS_INFO || needed == nullptr) return FALSE;
  SERVICE_STATUS_PROCESS status{};
  *needed = sizeof status;
  if (buffer == nullptr || size < sizeof status || !store().read_status(service, status))
    return FALSE;
  std::memcpy(buffer, &status, sizeof status);
  return TRUE;
}

BOOL ControlService(SC_HANDLE handle, DWORD control, LPSERVICE_STATUS status) {
  const std::int64_t service = service_of(handle, SERVICE_STOP);
  if (service == 0 || control != SERVICE_CONTROL_STOP || status == nullptr) return FALSE;
  const bool stopped = store().stop(service);
  SERVICE_STATUS_PROCESS now{};
  if (store().read_status(service, now)) std::memcpy(status, &now, sizeof *status);
  return stopped ? TRUE : FALSE;
}

BOOL DeleteService(SC_HANDLE handle) {
  const std::int64_t service = service_of(handle, DELETE);
  return service != 0 && store().mark_for_deletion(service) ? TRUE : FALSE;
}

BOOL CloseServiceHandle(SC_HANDLE handle) {
  const auto found = handles().open.find(handle);
  if (found == handles().open.end()) return FALSE;
  const StoreUse use;
  const std::int64_t service = found->second.service;
  handles().open.erase(found);
  if (service != 0) store().release(service);
  return TRUE;
}
