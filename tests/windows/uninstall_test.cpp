// Stopping and removing services that answer in every way. The tool waits for seconds: all cases run
// side by side.
#include <gtest/gtest.h>

#include <future>
#include <vector>

#include "tests/support/capture.h"
#include "tests/windows/service_manager.h"

namespace svcinst {
namespace {

struct Case {
  const char* name;
  const char* mode;  // empty: there is no such service; "stopped": it is not started
  std::string output;
  int exit_code;
  const char* presence;  // afterwards
};

// Waits until the tool has asked for the stop, so that it is up and running.
void load_plugin_when_stopping(const std::string& name, HANDLE tool) {
  while (state(name) == SERVICE_RUNNING) Sleep(50);
  load_into(tool, path_of("SVCINST_PLUGIN"));
}

Case observed(const Case& expected) {
  const std::string tool = path_of("SVCINST_PROGRAM");
  const std::string name = expected.name;
  const std::string mode = expected.mode;
  if (!mode.empty()) {
    const std::string command = path_of("SVCINST_SERVICE") + " " + mode;
    run(tool + " -i -n " + name + " -d " + name + " -b \"" + command + "\"", "C:\\");
    if (mode != "stopped") start(name);
  }
  const auto meanwhile = [&](HANDLE process) {
    if (name == "plugin") load_plugin_when_stopping(name, process);
  };
  const Result result = run(tool + " --uninstall --name " + name, "C:\\", meanwhile);
  return {expected.name, expected.mode, result.output, result.exit_code, ""};
}

TEST(Uninstall, TellsWhatTheServiceDid) {
  const std::string timeout = "Timeout waiting for the service 'hung' to stop!\r\n";
  const std::string missing = "Open the service 'missing' failed!\r\n";
  const std::vector<Case> cases = {
      {"missing", "", missing + missing, -1, "none"},
      {"stopped", "stopped", "The service 'stopped' is stoped!\r\n", 0, "none"},
      {"quick", "quick", "The service 'quick' stop successful!\r\n", 0, "none"},
      {"slow", "slow", "The service 'slow' stop successful!\r\n", 0, "none"},
      {"plugin", "slow",
       "   0|hello from the plug-in\r\n   1|The service 'plugin' stop successful!\r\n", 0, "none"},
      {"hung", "hung", timeout + timeout, -1, "there"},
      {"returning", "returning", "The service 'returning' stop failed!\r\n", 0, "marked"},
      {"refusing", "refusing", "The service 'refusing' stop failed", 0, "marked"},
      {"paused", "paused", "The service 'paused' stop successful!\r\n", 0, "none"},
      {"waits", "paused-refusing", "The service 'waits' stop failed!\r\n", 0, "marked"},
  };
  std::vector<std::future<Case>> results;
  results.reserve(cases.size());
  for (const Case& row : cases) results.push_back(std::async(std::launch::async, observed, row));
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const Case result = results[i].get();
    EXPECT_EQ(result.output, cases[i].output);
    EXPECT_EQ(result.exit_code, cases[i].exit_code) << result.name;
    EXPECT_EQ(presence(result.name), cases[i].presence) << result.name;
  }

  // A marked service is refused a second deletion, and goes with its process.
  const Result again = run(path_of("SVCINST_PROGRAM") + " -u -n refusing", "C:\\");
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
