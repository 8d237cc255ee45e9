#include "platform/posix/handle_locks.h"

#include <fcntl.h>
#include <unistd.h>

namespace svcinst {
namespace {

struct flock byte_of(std::int64_t service, short type) {
  constexpr off_t kFirstByte = off_t{1} << 62;
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = kFirstByte + (service & (kFirstByte - 1));
  lock.l_len = 1;
  return lock;
}

bool set_lock(int file, std::int64_t service, short type) {
  const struct flock lock = byte_of(service, type);
  return fcntl(file, F_OFD_SETLK, &lock) == 0;
}

}  // namespace

HandleLocks::HandleLocks(const std::string& path) {
  claims_.reserve(1);  // closing a handle makes one claim, in destructors too: it needs no memory
  file_ = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
  if (file_ < 0) file_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

HandleLocks::~HandleLocks() {
  if (file_ >= 0) close(file_);
}

bool HandleLocks::hold(std::int64_t service) {
  if (!held_here(service) && !set_lock(file_, service, F_RDLCK)) return false;
  ++holders_[service];
  return true;
}

void HandleLocks::release(std::int64_t service) {
  if (--holders_[service] > 0) return;
  holders_.erase(service);
  set_lock(file_, service, F_UNLCK);
}

bool HandleLocks::is_held(std::int64_t service) const {
  if (held_here(service)) return true;
  struct flock lock = byte_of(service, F_WRLCK);
  return fcntl(file_, F_OFD_GETLK, &lock) != 0 || lock.l_type != F_UNLCK;
}

bool HandleLocks::claim(std::int64_t service) {
  if (held_here(service) || !set_lock(file_, service, F_WRLCK)) return false;
  claims_.push_back(service);
  return true;
}

void HandleLocks::drop_claims() {
  for (const std::int64_t service : claims_)
    if (!held_here(service)) set_lock(file_, service, F_UNLCK);
  claims_.clear();
}

}  // namespace svcinst
