// A service database of the test's own, and a look into it from outside.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <string>

#include "platform/service_api.h"
#include "tests/support/capture.h"

namespace svcinst {

class ServiceFixture : public testing::Test {
 protected:
  ServiceFixture() { setenv("SVCINST_DATABASE", path.c_str(), 1); }

  // The result of `sql`, one line a row, columns with a bar between them.
  std::string sql(const std::string& text) const {  // NOLINT(modernize-use-nodiscard)
    std::string result;
    sqlite3* database = nullptr;
    sqlite3_open(path.c_str(), &database);
    const auto add_row = [](void* to, int count, char** values, char** /*names*/) {
      for (int i = 0; i < count; ++i)
        *static_cast<std::string*>(to) += std::string(values[i]) + (i + 1 < count ? '|' : '\n');
      return 0;
    };
    if (sqlite3_exec(database, text.c_str(), add_row, &result, nullptr) != SQLITE_OK)
      result = sqlite3_errmsg(database);
    sqlite3_close(database);
    return result;
  }

  // A child process that runs `task` and ends with its result, without closing anything.
  static pid_t start(const std::function<bool()>& task) {
    const pid_t child = fork();
    if (child == 0) _exit(task() ? 0 : 1);
    return child;
  }

  // True when the child's task returned true.
  static bool succeeded(pid_t child) {
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
  }

  TempDirectory directory;
  std::string path = directory.path("state/services.db");
};

}  // namespace svcinst
