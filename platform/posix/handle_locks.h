// Who has a handle to which service, across processes: a holder has a shared lock on one byte of
// the database file, far behind its end, that stands for the service. The kernel drops the locks of
// a process that dies. SQLite's own locks are of another kind and on other bytes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace svcinst {

class HandleLocks {
 public:
  /// Opens the file at `path` a second time. This object must outlive the SQLite connection to it:
  /// closing any descriptor of a file drops SQLite's locks on it.
  explicit HandleLocks(const std::string& path);
  ~HandleLocks();
  HandleLocks(const HandleLocks&) = delete;
  HandleLocks& operator=(const HandleLocks&) = delete;

  /// Adds a holder of `service` in this process. False when the service is being removed.
  bool hold(std::int64_t service);
  /// Takes a holder away.
  void release(std::int64_t service);
  /// True when some process, this one included, holds `service`.
  [[nodiscard]] bool is_held(std::int64_t service) const;
  /// Keeps others from holding `service` until drop_claims. False when somebody holds it.
  bool claim(std::int64_t service);
  /// Ends all claims but those that have become holds.
  void drop_claims();

 private:
  [[nodiscard]] bool held_here(std::int64_t service) const { return holders_.contains(service); }

  int file_ = -1;
  std::map<std::int64_t, int> holders_;  // of this process, by service
  std::vector<std::int64_t> claims_;
};

}  // namespace svcinst
