#include "log/log_settings.h"

#include "platform/lock_api.h"
#include "platform/process_api.h"
#include "platform/steady_clock.h"

namespace svcinst {

constinit LogSettings log_settings;
constinit std::uint64_t record_counter = 0;
constinit std::int64_t start_time_ns = 0;
constinit std::int64_t last_record_time_ns = 0;
constinit char stdout_buffer[kStdoutBufferSize] = {};

namespace {

// Nothing constructs or destroys it at run time.
constinit SRWLOCK lock = SRWLOCK_INIT;

void start_up() {
  static constinit bool started = false;
  if (started) return;
  started = true;
  log_settings.std_handle = GetCurrentProcessId();
  start_time_ns = last_record_time_ns = monotonic_nanoseconds();
}

// Runs before the static initialisers of the program; up to 100 the priorities are the compiler's
// own. Code that was loaded before the program may have called one of the functions already.
[[gnu::constructor(101)]] void start_with_the_process() {
  const LogLock first;
}

}  // namespace

LogLock::LogLock() {
  AcquireSRWLockExclusive(&lock);
  start_up();
}

LogLock::~LogLock() {
  ReleaseSRWLockExclusive(&lock);
}

}  // namespace svcinst
