#include "log/log_settings.h"

#include "platform/clock_api.h"
#include "platform/process_api.h"

namespace svcinst {

constinit LogSettings log_settings;
constinit std::uint64_t record_counter = 0;
constinit std::int64_t start_time_ns = 0;
constinit std::int64_t last_record_time_ns = 0;
constinit char stdout_buffer[kStdoutBufferSize] = {};

void start_up() {
  static constinit bool started = false;
  if (started) return;
  started = true;
  log_settings.std_handle = GetCurrentProcessId();
  start_time_ns = last_record_time_ns = monotonic_nanoseconds();
}

}  // namespace svcinst
