// Creating, stopping and deleting a service through the Service Control Manager. Every outcome but
// a silent success is a log record; which step failed is all that is told. All throw
// std::bad_alloc.
#pragma once

#include "app/service_handle.h"
#include "common/byte_string.h"

namespace svcinst {

/// Creates a service of its own process that starts automatically under the local system account.
/// dependencies: names with a NUL each and one more NUL at the end. display_name, dependencies,
/// description: null for none. A description is cut after 1023 bytes. True once the service is
/// created, whether or not its description could be set.
bool install_service(const ByteString& name, const ByteString& binary_path,
                     const ByteString* display_name, const ByteString* dependencies,
                     const ByteString* description);

/// Stops the service and waits for it. True when it was stopped already, and when a stop was sent
/// and the service settled afterwards, in whichever state.
bool stop_service(const ByteString& name);

/// Waits until the service is stopped, running or paused, at least one interval. status: on entry
/// the last known record, whose wait hint and checkpoint the wait begins with; kept up to date. On
/// failure both handles are closed and the reason is logged.
bool wait_service_settled(const ByteString& name, ServiceHandle& manager, ServiceHandle& service,
                          SERVICE_STATUS_PROCESS& status);

/// Waits until the service is settled and marks it for deletion.
bool delete_service(const ByteString& name);

}  // namespace svcinst
