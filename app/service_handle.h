// The owner of a handle to the Service Control Manager or to a service; it may be null.
#pragma once

#include <memory>
#include <type_traits>

#include "platform/service_api.h"

namespace svcinst {

struct ServiceHandleCloser {
  void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};

using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, ServiceHandleCloser>;

}  // namespace svcinst
