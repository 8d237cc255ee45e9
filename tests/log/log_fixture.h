// Every test of the logger starts with the default settings and with a clock that stands still.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "log/log.h"
#include "log/log_settings.h"
#include "tests/support/capture.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {

inline const std::string info_tag = "\033[36;40minfo\033[0m] ";

class LogTest : public ::testing::Test {
 protected:
  LogTest() {
    reset_scripted_clock();
    set_defaults();
  }
  ~LogTest() override { set_defaults(); }

  [[nodiscard]] std::string path(const std::string& name) const { return directory_.path(name); }
  void open_file(const std::string& name) const {
    set_log2file(path(name).c_str(), static_cast<int>(path(name).size()));
  }
  /// What `call` writes to a log file of its own.
  template <class Call>
  std::string written_by(Call call) {
    open_file(std::to_string(++files_));
    call();
    std::fflush(log_settings.log_file);
    return file_bytes(log_settings.file_name);
  }

 private:
  static void set_defaults() {
    if (log_settings.log_file != nullptr) std::fclose(log_settings.log_file);
    log_settings = {};
    log_settings.std_handle = GetCurrentProcessId();
    record_counter = 0;
    start_time_ns = last_record_time_ns = 0;
  }

  TempDirectory directory_;
  int files_ = 0;
};

}  // namespace svcinst
