#include "log/log_settings.h"

#include <cstddef>
#include <iterator>

#include "platform/clock_api.h"
#include "platform/process_api.h"

namespace svcinst {

constinit LogSettings log_settings;
constinit std::uint64_t record_counter = 0;
constinit std::int64_t start_time_ns = 0;
constinit std::int64_t last_record_time_ns = 0;
constinit char* stdout_buffer = nullptr;
constinit ByteString* level_tags = nullptr;

namespace {

struct Level {
  const char* colour;
  const char* tag;
};

constexpr Level kLevels[] = {{"\033[36;40m", "info"},   // cyan
                             {"\033[32;40m", "note"},   // green
                             {"\033[33;40m", "warn"},   // yellow
                             {"\033[31;40m", "eror"},   // red
                             {"\033[35;40m", "fatl"}};  // magenta

// Runs before the static initialisers of the program, so that those may log; up to 100 the
// priorities are the compiler's own.
[[gnu::constructor(101)]] void start_up() {
  log_settings.std_handle = GetCurrentProcessId();
  stdout_buffer = new char[kStdoutBufferSize];
  start_time_ns = svcinst::monotonic_nanoseconds();
  last_record_time_ns = start_time_ns;
  level_tags = new ByteString[std::size(kLevels)];
  for (std::size_t level = 0; level < std::size(kLevels); ++level)
    level_tags[level] = ByteString(kLevels[level].colour) + kLevels[level].tag + "\033[0m";
}

}  // namespace
}  // namespace svcinst
