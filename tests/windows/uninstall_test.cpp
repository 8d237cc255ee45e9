// Stopping and removing services that answer in every way. The tool waits for seconds: all cases
// run side by side.
#include <gtest/gtest.h>

#include <future>
#include <vector>

#include "tests/support/capture.h"
#include "tests/windows/service_manager.h"

namespace svcinst {
namespace {

struct Case {
  const char* name;
  std::string mode;  // empty: there is no such service
  std::string output;
  int exit_code;
  const char* presence;           // afterwards
  DWORD state = SERVICE_RUNNING;  // before
};

// Waits until the tool has asked for the stop, so that it is up and running.
void load_plugin_when_stopping(const std::string& name, HANDLE tool) {
  for (int i = 0; i < 600 && state(name) == SERVICE_RUNNING; ++i) Sleep(50);
  load_into(tool, path_of("SVCINST_PLUGIN"));
}

const std::string tool = path_of("SVCINST_PROGRAM");

void set_up(const Case& row) {
  if (row.mode.empty()) return;
  const std::string name = row.name;
  const std::string command = path_of("SVCINST_SERVICE") + " " + row.mode;
  run(tool + " -i -n " + name + " -d " + name + " -b \"" + command + "\"", "C:\\");
  if (row.state != SERVICE_STOPPED) start(name, row.state == SERVICE_PAUSED);
}

Result uninstall(const std::string& name) {
  const auto meanwhile = [&](HANDLE process) {
    if (name == "plugin") load_plugin_when_stopping(name, process);
  };
  return run(tool + " --uninstall --name " + name, "C:\\", meanwhile);
}

TEST(Uninstall, TellsWhatTheServiceDid) {
  const std::string timeout = "Timeout waiting for the service 'hung' to stop!\r\n";
  // A last report without a checkpoint and a wait hint looks late to a wait that is under way.
  const std::string late = "Timeout waiting for the service 'slow' to stop!\r\n";
  const std::string missing = "Open the service 'missing' failed!\r\n";
  const std::vector<Case> cases = {
      {"missing", "", missing + missing, -1, "none"},
      {"stopped", "quick", "The service 'stopped' is stoped!\r\n", 0, "none", SERVICE_STOPPED},
      {"quick", "quick", "The service 'quick' stop successful!\r\n", 0, "none"},
      {"slow", "slow", late, 0, "none"},
      {"stepwise", "stepwise", "The service 'stepwise' stop successful!\r\n", 0, "none"},
      {"plugin", "stepwise",
       "   0|hello from the plug-in\r\n   1|The service 'plugin' stop successful!\r\n", 0, "none"},
      {"hung", "hung", timeout + timeout, -1, "there"},
      {"returning", "returning", "The service 'returning' stop failed!\r\n", 0, "marked"},
      {"refusing", "refusing", "The service 'refusing' stop failed", 0, "marked"},
      {"paused", "quick", "The service 'paused' stop successful!\r\n", 0, "none", SERVICE_PAUSED},
      {"waits", "refusing", "The service 'waits' stop failed!\r\n", 0, "marked", SERVICE_PAUSED},
  };
  for (const Case& row : cases) set_up(row);
  std::vector<std::future<Result>> results;
  results.reserve(cases.size());
  for (const Case& row : cases)
    results.push_back(std::async(std::launch::async, uninstall, row.name));
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const Result result = results[i].get();
    EXPECT_EQ(result.output, cases[i].output);
    EXPECT_EQ(result.exit_code, cases[i].exit_code) << cases[i].name;
    EXPECT_EQ(presence(cases[i].name), cases[i].presence) << cases[i].name;
  }

  // A marked service is refused a second deletion, and goes with its process.
  const Result again = uninstall("refusing");
  EXPECT_EQ(again.output,
            "The service 'refusing' stop failedDelete the service 'refusing' failed!\r\n");
  EXPECT_EQ(again.exit_code, -1);
  for (const Case& row : cases) {
    remove(row.name);
    EXPECT_EQ(presence(row.name), "none") << row.name;
  }
}

}  // namespace
}  // namespace svcinst
