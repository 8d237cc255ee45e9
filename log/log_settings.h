// What all of the logger works on, for the whole process: the levels with their coloured tags, one
// settings record and a little state beside it. They are plain variables; the exported functions
// use them under the logger's lock. Nothing is torn down: texts may be logged until the very end.
#pragma once

#include <cstdint>
#include <cstdio>

#include "common/text_view.h"

namespace svcinst {

enum LogLevel : std::int32_t { kInfo, kNote, kWarn, kError, kFatal };

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

// For each level: colour, four letters, end of the colour.
inline constinit const TextView level_tags[] = {"\033[36;40minfo\033[0m",   // cyan
                                                "\033[32;40mnote\033[0m",   // green
                                                "\033[33;40mwarn\033[0m",   // yellow
                                                "\033[31;40meror\033[0m",   // red
                                                "\033[35;40mfatl\033[0m"};  // magenta

extern LogSettings log_settings;

extern std::uint64_t record_counter;           // levelled records made so far
extern std::int64_t start_time_ns;             // the monotonic clock at start-up
extern std::int64_t last_record_time_ns;       // the same when the last levelled record was made
extern char stdout_buffer[kStdoutBufferSize];  // what standard output may use

/// Held by each exported function from its first look at the settings to its end, so that texts
/// come out whole. The first one fills in what is known at run time only.
class [[nodiscard]] LogLock {
 public:
  LogLock();
  LogLock(const LogLock&) = delete;
  LogLock& operator=(const LogLock&) = delete;
  ~LogLock();
};

}  // namespace svcinst
