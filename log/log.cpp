#include "log/log.h"

#include <cstdarg>

#include "log/console_sink.h"
#include "log/file_sink.h"
#include "log/log_record.h"
#include "log/log_settings.h"
#include "log/network_sink.h"

using svcinst::log_settings;
using svcinst::LogLock;

namespace {

// What log_it() does, for a caller that holds the lock.
int log_it_locked(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = svcinst::log_raw(format, arguments);
  va_end(arguments);
  return length;
}

// The byte of an argument. Callers that were compiled elsewhere may pass more than 0 and 1, which
// the compiler takes to be all that a bool holds unless it is volatile.
svcinst::Flag byte_of(const volatile bool& flag) {
  return reinterpret_cast<const volatile svcinst::Flag&>(flag);
}

template <class T>
void change(T& setting, T value) {
  const LogLock lock;
  setting = value;
}

}  // namespace

// A level's function; a macro, since no function can hand its "..." on to another.
#define LOG_FUNCTION(name, level)                                     \
  int name(const char* format, ...) {                                 \
    const LogLock lock;                                               \
    std::va_list arguments;                                           \
    va_start(arguments, format);                                      \
    const int length = svcinst::log_record(level, format, arguments); \
    va_end(arguments);                                                \
    return length;                                                    \
  }

LOG_FUNCTION(log_info, svcinst::kInfo)
LOG_FUNCTION(log_note, svcinst::kNote)
LOG_FUNCTION(log_warn, svcinst::kWarn)
LOG_FUNCTION(log_error, svcinst::kError)
LOG_FUNCTION(log_fatal, svcinst::kFatal)

int log_it(const char* format, ...) {
  const LogLock lock;
  std::va_list arguments;
  va_start(arguments, format);
  const int length = svcinst::log_raw(format, arguments);
  va_end(arguments);
  return length;
}

int set_enable(bool enable) {
  const LogLock lock;
  log_settings.enable_log = byte_of(enable);
  return log_it_locked("set_enable_log(enable_log@0x%p, std_handle@0x%p) with f = '%s', pid = %d\n",
                       &log_settings.enable_log, &log_settings.std_handle,
                       log_settings.enable_log ? "T" : "F",
                       static_cast<std::int32_t>(log_settings.std_handle));
}

void set_max(int max) {
  if (max > 0) change(log_settings.max, max);
}

void set_with_hex(bool with_hex) {
  change(log_settings.with_hex, byte_of(with_hex));
}

void set_flush(bool flush) {
  change(log_settings.flush, byte_of(flush));
}

void set_auto_endline(bool auto_endline) {
  change(log_settings.auto_endline, byte_of(auto_endline));
}

void set_mini_level(int level) {
  change(log_settings.mini_level, level);
}

void set_time(bool time) {
  change(log_settings.time, byte_of(time));
}

void set_cpu(bool cpu) {
  change(log_settings.cpu, byte_of(cpu));
}

void set_thread(bool thread) {
  change(log_settings.thread, byte_of(thread));
}

void set_count(bool count) {
  change(log_settings.count, byte_of(count));
}

void set_log2cmd(uint64_t std_handle) {
  const LogLock lock;
  if (log_settings.enable_log) svcinst::open_console(std_handle);
}

void set_log2file(const char* name, int length) {
  const LogLock lock;
  if (log_settings.enable_log) svcinst::open_log_file(name, length);
}

void set_log2tcp(const char* address, uint16_t port) {
  svcinst::open_peer(address, port, svcinst::SocketKind::tcp);
}

void set_log2udp(const char* address, uint16_t port) {
  svcinst::open_peer(address, port, svcinst::SocketKind::udp);
}
