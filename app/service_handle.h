// The owner of a handle to the Service Control Manager or to a service.
#pragma once

#include <utility>

#include "platform/service_api.h"

namespace svcinst {

class ServiceHandle {
 public:
  /// Takes over `handle`, which may be null for one that could not be opened.
  explicit ServiceHandle(SC_HANDLE handle) : handle_(handle) {}
  ServiceHandle(const ServiceHandle&) = delete;
  ServiceHandle& operator=(const ServiceHandle&) = delete;
  ~ServiceHandle() { reset(); }

  explicit operator bool() const { return handle_ != nullptr; }
  [[nodiscard]] SC_HANDLE get() const { return handle_; }

  /// Closes the handle, if there is one, and takes over `handle`.
  void reset(SC_HANDLE handle = nullptr) {
    SC_HANDLE old = std::exchange(handle_, handle);
    if (old != nullptr) CloseServiceHandle(old);
  }

 private:
  SC_HANDLE handle_;
};

}  // namespace svcinst
