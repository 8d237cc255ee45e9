#include "app/service_operations.h"

#include <algorithm>
#include <array>

#include "log/log.h"
#include "platform/clock_api.h"

namespace svcinst {
namespace {

constexpr std::size_t kDescriptionSize = 1024;  // bytes, with the NUL
constexpr DWORD kShortestInterval = 1000;       // milliseconds
constexpr DWORD kLongestInterval = 10000;       // milliseconds

SC_HANDLE open_manager() {
  SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
  if (manager == nullptr) log_info("Open the service manager failed!\n");
  return manager;
}

bool query_status(const ServiceHandle& service, SERVICE_STATUS_PROCESS& status) {
  DWORD needed = 0;
  return QueryServiceStatusEx(service.get(), SC_STATUS_PROCESS_INFO,
                              reinterpret_cast<LPBYTE>(&status), sizeof status, &needed) != FALSE;
}

bool send_stop(const ServiceHandle& service, SERVICE_STATUS_PROCESS& status) {
  // The record begins with the fields of a SERVICE_STATUS.
  return ControlService(service.get(), SERVICE_CONTROL_STOP,
                        reinterpret_cast<LPSERVICE_STATUS>(&status)) != FALSE;
}

bool set_description(const ServiceHandle& service, const ByteString& description) {
  std::array<char, kDescriptionSize> text{};
  view(description).copy(text.data(), text.size() - 1);
  SERVICE_DESCRIPTIONA info{text.data()};
  return ChangeServiceConfig2A(service.get(), SERVICE_CONFIG_DESCRIPTION, &info) != FALSE;
}

const char* text_or_null(const ByteString* text) {
  return text != nullptr ? c_str(*text) : nullptr;
}

// Before a message, which may take long: a deleted service stays until its last handle is closed.
void close_both(ServiceHandle& manager, ServiceHandle& service) {
  service.reset();
  manager.reset();
}

bool is_settled(const SERVICE_STATUS_PROCESS& status) {
  return status.dwCurrentState == SERVICE_STOPPED || status.dwCurrentState == SERVICE_RUNNING ||
         status.dwCurrentState == SERVICE_PAUSED;
}

bool fail_query(const ByteString& name, ServiceHandle& manager, ServiceHandle& service) {
  close_both(manager, service);
  log_info("Query the service '%s' failed!\n", c_str(name));
  return false;
}

// Opens the manager and the service with all rights, or logs what could not be opened.
bool open_service(const ByteString& name, ServiceHandle& manager, ServiceHandle& service) {
  manager.reset(open_manager());
  if (!manager) return false;
  service.reset(OpenServiceA(manager.get(), c_str(name), SERVICE_ALL_ACCESS));
  if (service) return true;
  manager.reset();
  log_info("Open the service '%s' failed!\n", c_str(name));
  return false;
}

// Stops a service that is running or paused, whose handles are open.
bool stop_active_service(const ByteString& name, ServiceHandle& manager, ServiceHandle& service,
                         SERVICE_STATUS_PROCESS& status) {
  const bool running = status.dwCurrentState == SERVICE_RUNNING;
  if (!send_stop(service, status)) {
    close_both(manager, service);
    log_info(running ? "The service '%s' stop failed" : "The service '%s' stop failed!\n",
             c_str(name));
    return false;
  }
  if (!wait_service_settled(name, manager, service, status)) return false;
  const bool stopped = status.dwCurrentState == SERVICE_STOPPED;
  log_info(stopped ? "The service '%s' stop successful!\n" : "The service '%s' stop failed!\n",
           c_str(name));
  return true;
}

}  // namespace

bool install_service(const ByteString& name, const ByteString& binary_path,
                     const ByteString* display_name, const ByteString* dependencies,
                     const ByteString* description) {
  ServiceHandle manager(open_manager());
  if (!manager) return false;
  ServiceHandle service(CreateServiceA(
      manager.get(), c_str(name), text_or_null(display_name), SERVICE_ALL_ACCESS,
      SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START, SERVICE_ERROR_NORMAL, c_str(binary_path),
      nullptr, nullptr, text_or_null(dependencies), nullptr, nullptr));
  if (!service) {
    manager.reset();
    log_info("Open the service '%s' failed!\n", c_str(name));
    return false;
  }
  if (description != nullptr && description->length != 0) {
    service.reset();
    service.reset(OpenServiceA(manager.get(), c_str(name), SERVICE_CHANGE_CONFIG));
    if (!set_description(service, *description)) {
      log_info("Config the service '%s' description failed!\n", c_str(name));
    }
  }
  return true;
}

bool stop_service(const ByteString& name) {
  ServiceHandle manager(nullptr);
  ServiceHandle service(nullptr);
  if (!open_service(name, manager, service)) return false;
  SERVICE_STATUS_PROCESS status{};
  if (!query_status(service, status)) return fail_query(name, manager, service);
  if (!wait_service_settled(name, manager, service, status)) return false;
  if (status.dwCurrentState != SERVICE_STOPPED) {
    return stop_active_service(name, manager, service, status);
  }
  log_info("The service '%s' is stoped!\n", c_str(name));
  return true;
}

bool wait_service_settled(const ByteString& name, ServiceHandle& manager, ServiceHandle& service,
                          SERVICE_STATUS_PROCESS& status) {
  DWORD old_checkpoint = status.dwCheckPoint;
  const DWORD interval = std::clamp(status.dwWaitHint / 10, kShortestInterval, kLongestInterval);
  const DWORD start = GetTickCount();
  // A service that has settled gets its interval, too: it may say so before its process has ended.
  if (!query_status(service, status)) return fail_query(name, manager, service);
  Sleep(interval);
  while (!is_settled(status)) {
    Sleep(interval);
    if (!query_status(service, status)) return fail_query(name, manager, service);
    if (status.dwCheckPoint > old_checkpoint) {
      old_checkpoint = status.dwCheckPoint;
    } else if (GetTickCount() - start > status.dwWaitHint) {
      close_both(manager, service);
      log_info("Timeout waiting for the service '%s' to stop!\n", c_str(name));
      return false;
    }
  }
  return true;
}

bool delete_service(const ByteString& name) {
  ServiceHandle manager(nullptr);
  ServiceHandle service(nullptr);
  if (!open_service(name, manager, service)) return false;
  SERVICE_STATUS_PROCESS status{};
  if (!wait_service_settled(name, manager, service, status)) return false;
  if (DeleteService(service.get()) != FALSE) return true;
  close_both(manager, service);
  log_info("Delete the service '%s' failed!\n", c_str(name));
  return false;
}

}  // namespace svcinst
