// What all of the logger works on, for the whole process: one settings record and a little state
// beside it. They are plain variables; the exported functions use them under the logger's lock.
// Nothing is torn down, so that texts may be logged until the very end of the process.
#pragma once

#include <cstdint>
#include <cstdio>

#include "log/log_level.h"

namespace svcinst {

constexpr std::int32_t kNoSocket = -1;
constexpr std::uint64_t kNoConsole = UINT64_MAX;
constexpr std::uint64_t kStdoutBufferSize = 4096;

using Flag = std::uint8_t;  // on when it is not zero

struct LogSettings {
  std::int32_t max = 1024;  // bytes of a formatted message, without the prefix; more are dropped
  Flag enable_log = true;
  Flag time = true;
  std::int32_t tcp_socket = kNoSocket;
  std::int32_t udp_socket = kNoSocket;
  char file_name[256] = "orv.log";
  Flag auto_endline = false;
  Flag flush = false;
  Flag with_hex = false;
  Flag thread = false;
  std::uint64_t std_handle = 0;   // the process that has the console; from start-up, this one
  std::FILE* log_file = nullptr;  // owned; none while no log file is open
  std::int32_t mini_level = kInfo;
  Flag cpu = false;
  Flag count = false;
};

extern LogSettings log_settings;

extern std::uint64_t record_counter;           // levelled records made so far
extern std::int64_t start_time_ns;             // the monotonic clock at start-up
extern std::int64_t last_record_time_ns;       // the same when the last levelled record was made
extern char stdout_buffer[kStdoutBufferSize];  // what standard output may use

/// Held by each exported function from its first look at the settings to its end, but while one
/// connects, so that texts come out whole. The first one fills in what is known at run time only.
struct [[nodiscard]] LogLock {
  LogLock();
  LogLock& operator=(LogLock&&) = delete;  // nor any copy
  ~LogLock();
};

}  // namespace svcinst
