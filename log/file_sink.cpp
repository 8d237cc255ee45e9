#include "log/file_sink.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <iterator>
#include <utility>

#include "log/log_settings.h"

namespace svcinst {

void open_log_file(const char* name, std::int32_t length) {
  if (length < 0 || length >= std::ssize(log_settings.file_name)) return;
  std::copy_n(name, length, log_settings.file_name);
  log_settings.file_name[length] = '\0';
  std::FILE* const old_file = std::exchange(log_settings.log_file, nullptr);
  if (old_file != nullptr) std::fclose(old_file);
  log_settings.log_file = std::fopen(log_settings.file_name, "ab");
}

void write_to_log_file(TextView text) {
  assert(log_settings.log_file != nullptr);
  std::fwrite(text.data(), text.size(), 1, log_settings.log_file);
  if (log_settings.flush) std::fflush(log_settings.log_file);
}

}  // namespace svcinst
