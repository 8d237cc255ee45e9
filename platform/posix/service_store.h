// The table of services and the changes to it, each one transaction. A service is known by the
// number of its row; whoever holds the number keeps the row from being removed, in other processes
// too.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/posix/database.h"
#include "platform/posix/handle_locks.h"
#include "platform/service_api.h"

namespace svcinst {

// All texts belong to the caller; null means none.
struct NewService {
  const char* name;
  const char* display_name;
  DWORD service_type;
  DWORD start_type;
  DWORD error_control;
  const char* binary_path;
  const char* dependencies;  // names with a NUL each and one more NUL
  const char* account;
};

class ServiceStore {
 public:
  /// Opens the database where it lies on this machine. None when that fails.
  static std::unique_ptr<ServiceStore> open();

  /// False when the user can't change the database.
  [[nodiscard]] bool is_writable() const { return writable_; }

  /// Adds a stopped service and holds it. Its number; 0 when a name is taken or the change fails.
  std::int64_t create(const NewService& service);
  /// Looks for a service by its name and holds it. Its number; 0 when there is none.
  std::int64_t find(const char* name);
  /// Gives a held service up; it is removed when it is marked and nobody else holds it.
  void release(std::int64_t service);

  /// The rest is for held services. False when the row is not there, its mark forbids the change or
  /// the database fails.
  bool read_status(std::int64_t service, SERVICE_STATUS_PROCESS& status) const;
  /// Stops a running or paused service. False also for any other.
  bool stop(std::int64_t service);
  /// description: empty for none.
  bool describe(std::int64_t service, const char* description);
  bool mark_for_deletion(std::int64_t service);

 private:
  ServiceStore(const std::string& path, Connection database, bool folder_is_writable);
  std::int64_t try_to_create(const NewService& service);
  bool free_names(const NewService& service);
  void remove_abandoned(std::int64_t service);
  bool remove_marked(std::int64_t service);

  HandleLocks locks_;  // outlives the connection
  Connection database_;
  bool writable_;
};

}  // namespace svcinst
