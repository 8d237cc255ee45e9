// Every test of the logger begins with an empty folder and the default settings, but without date
// and time.
#pragma once

#include <gtest/gtest.h>

#include "log/log.h"
#include "log/log_settings.h"
#include "tests/support/capture.h"

namespace svcinst {

inline const LogSettings defaults = log_settings;  // before main, in a static initialiser
inline const std::string info_tag = "\033[36;40minfo\033[0m] ";

struct LogTest : ::testing::Test {
  LogTest() {
    log_settings = defaults;
    EXPECT_TRUE(log_settings.time);
    set_time(false);
    record_counter = 0;
  }
  ~LogTest() override { set_log2file("", 0); }  // closes the file

  void open_file(const std::string& name) const {
    set_log2file(folder.path(name).c_str(), static_cast<int>(folder.path(name).size()));
  }
  /// What a call writes to a new log file; it has to return how many bytes that are.
  template <class... Arguments>
  std::string logged(int (*call)(const char*, ...), Arguments... arguments) {
    open_file(std::to_string(++file_count));
    const int length = call(arguments...);
    std::fflush(log_settings.log_file);
    std::string bytes = file_bytes(log_settings.file_name);
    EXPECT_EQ(length, std::ssize(bytes));
    return bytes;
  }

  TempDirectory folder;
  int file_count = 0;
};

}  // namespace svcinst
