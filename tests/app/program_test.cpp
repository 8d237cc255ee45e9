#include "app/program.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/capture.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

constexpr const char* kPrefix = "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ";

struct Outcome {
  int exit_code;
  std::string output;  // without the prefixes of records; the help text is cut to "HELP"
  std::vector<std::string> calls;
};

Outcome run(std::vector<const char*> arguments, const char* program = "D:\\tools\\inst.exe") {
  arguments.insert(arguments.begin(), program);
  call_log().clear();
  const CapturedStdout captured;
  const int exit_code = run_program(static_cast<int>(arguments.size()), arguments.data());
  std::string output = captured.bytes();
  for (std::size_t at = 0; (at = output.find(kPrefix)) != std::string::npos;) {
    output.erase(at, std::string(kPrefix).size());
  }
  const std::size_t help = output.find("install/uninstall a executable");
  if (help != std::string::npos) output.replace(help, output.size(), "HELP");
  return {exit_code, output, call_log()};
}

class Program : public ::testing::Test {
 protected:
  void SetUp() override { reset_scripted_services(); }
  void TearDown() override { EXPECT_EQ(open_handles(), 0U); }
};

TEST_F(Program, ShowsHelpWhenNoCommandCanRun) {
  const struct {
    std::vector<const char*> arguments;
    const char* output;
  } rows[] = {
      {{}, "HELP"},
      {{"--install"}, "HELP"},
      {{"-i", "--name", "a", "--binpath", "b"}, "HELP"},
      {{"-i", "--name", "a", "-d", "b"}, "HELP"},
      {{"-i", "-b", "a", "--disname", "b"}, "HELP"},
      {{"--uninstall"}, "HELP"},
      {{"--name", "a"}, "HELP"},
      {{"install"}, "error at position: 1\nHELP"},
      {{"--install", "-", "x"}, "HELP"},  // text behind what matches is ignored
      {{"--"}, "error at position: 3\nHELP"},
  };
  for (const auto& row : rows) {
    const Outcome result = run(row.arguments);
    EXPECT_EQ(result.output, row.output);
    EXPECT_EQ(result.exit_code, -1);
    EXPECT_EQ(result.calls, std::vector<std::string>());
  }
}

// What the manager is told: everything between the access rights' neighbours that varies.
std::string created(const Outcome& result) {
  return result.calls.size() > 1 ? result.calls[1] : "nothing";
}

std::string create_call(const std::string& name, const std::string& display,
                        const std::string& path, const std::string& dependencies) {
  return "CreateServiceA(manager#1, " + name + ", " + display + ", 0xF01FF, 0x10, 2, 1, " + path +
         ", null, null, " + dependencies + ", null, null) = service#1";
}

TEST_F(Program, InstallReadsEverySpellingOfTheOptions) {
  const struct {
    std::vector<const char*> arguments;
    const char* name;
    const char* display;
    const char* path;
    const char* dependencies;
  } rows[] = {
      {{"--install", "--name", "a", "--binpath", "C:\\x.exe", "--disname", "A b"},
       "\"a\"",
       "\"A b\"",
       "\"C:\\x.exe\"",
       "null"},
      {{"-i", "-n", "a", "-b", "C:\\P F\\x.exe", "-d", "D", "--dep", "Tcpip", "--type", "x"},
       "\"a\"",
       "\"D\"",
       "\"C:\\P F\\x.exe\"",
       "\"Tcpip\\0\\0\""},
      {{"--i", "--name=a", "-bC:/x.exe", "-d=D", "-t"}, "\"a\"", "\"D\"", "\"C:/x.exe\"", "null"},
      {{"-u", "-i", "--name", "a", "-n", "b", "-b", "C:\\", "-d", "x"},
       "\"b\"",
       "\"x\"",
       "\"C:\\\"",
       "null"},
      {{"-i", "--name", "a", "--name", "b", "-b", "C:\\", "-d", "x"},
       "\"a\"",
       "\"x\"",
       "\"C:\\\"",
       "null"},
      {{"-i", "-n", "'a b'", "-b", "C:\\", "-d", "\"q\""},
       "\"'a b'\"",
       "\"q\"",
       "\"C:\\\"",
       "null"},
      {{"-i", "-n", "-b", "-d"}, "\"\"", "null", "\"D:\\tools\\\"", "null"},
      {{"-i", "-n", "", "x", "-b", "svc.exe", "-d", "\"\"", "--dep", "\"\""},
       "\"\"",
       "\"\"",
       "\"D:\\tools\\svc.exe\"",
       "\"\\0\""},
      {{"-i", "-n", "a", "-b", "C:svc.exe", "-d", "x"},
       "\"a\"",
       "\"x\"",
       "\"D:\\tools\\C:svc.exe\"",
       "null"},
  };
  for (const auto& row : rows) {
    reset_scripted_services();
    const Outcome result = run(row.arguments);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(created(result), create_call(row.name, row.display, row.path, row.dependencies));
    EXPECT_EQ(result.calls.size(), 4U);
  }
}

TEST_F(Program, InstallResolvesRelativePathsAgainstItsOwnDirectory) {
  const struct {
    const char* program;
    const char* binary_path;
    const char* resolved;
  } rows[] = {
      {"inst.exe", "svc.exe", "\"\\svc.exe\""},
      {"D:\\inst.exe", "svc.exe", "\"D:\\\\svc.exe\""},
      {"D:\\t\\inst.exe", "\\svc.exe", "\"D:\\t\\\\svc.exe\""},
      {"\xc3\xa9/inst.exe", "\xc3\xb6.exe", "\"\xc3\xa9\\\xc3\xb6.exe\""},
  };
  for (const auto& row : rows) {
    reset_scripted_services();
    const Outcome result = run({"-i", "-n", "a", "-b", row.binary_path, "-d", "x"}, row.program);
    EXPECT_EQ(created(result), create_call("\"a\"", "\"x\"", row.resolved, "null"));
  }
}

TEST_F(Program, InstallHandsTheDescriptionOn) {
  const Outcome result = run({"-i", "-n", "a", "-b", "C:\\", "-d", "x", "--desc", "says hello"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.calls.at(4), "ChangeServiceConfig2A(service#2, 1, \"says hello\")");
}

TEST_F(Program, RefusesPathsThatAreNoText) {
  const std::string reason = " is not valid text in the code page for file names (65001)!\n";
  const struct {
    std::vector<const char*> arguments;
    const char* program;
    const char* path;
  } rows[] = {
      {{"-i", "-n", "a", "-b", "C:\\\xff", "-d", "x"}, "inst.exe", "'C:\\\xff'"},
      {{"-i", "-n", "a", "-b", "C:\\x", "-d", "x"}, "\xff/inst.exe", "'\xff/inst.exe'"},
      {{"-u", "-n", "a"}, "\xff/inst.exe", "'\xff/inst.exe'"},
      {{}, "\xff/inst.exe", "'\xff/inst.exe'"},
  };
  for (const auto& row : rows) {
    const Outcome result = run(row.arguments, row.program);
    EXPECT_EQ(result.exit_code, -1);
    EXPECT_EQ(result.output, "The path " + std::string(row.path) + reason);
    EXPECT_EQ(result.calls, std::vector<std::string>());
  }
}

TEST_F(Program, InstallFailsWithTheCreation) {
  scripted_services().failures = {{"CreateServiceA", 0}};
  const Outcome result = run({"-i", "-n", "a", "-b", "C:\\x", "-d", "x"});
  EXPECT_EQ(result.exit_code, -1);
  EXPECT_EQ(result.output, "Open the service 'a' failed!\n");
}

TEST_F(Program, UninstallStopsThenDeletes) {
  const struct {
    std::vector<const char*> arguments;
    const char* output;
  } rows[] = {
      {{"--uninstall", "--name", "x", "-n", "s v"}, "The service 's v' is stoped!\n"},
      {{"-u", "--name=\"s\"", "-ns v"}, "The service 's' is stoped!\n"},
  };
  for (const auto& row : rows) {
    reset_scripted_services();
    const Outcome result = run(row.arguments);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.output, row.output);
    EXPECT_EQ(result.calls.size(), 14U);
    EXPECT_EQ(result.calls.at(11), "DeleteService(service#2)");
  }
}

TEST_F(Program, UninstallDeletesAlsoWhatCouldNotBeStopped) {
  scripted_services().statuses = {{SERVICE_RUNNING}};
  scripted_services().failures = {{"ControlService", 0}};
  const Outcome result = run({"-u", "-n", "a"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.output, "The service 'a' stop failed");
}

TEST_F(Program, UninstallFailsWithTheDeletion) {
  const std::string open_failed = "Open the service 'a' failed!\n";
  scripted_services().failures = {{"OpenServiceA", 0}};
  const Outcome result = run({"-u", "-n", "a"});
  EXPECT_EQ(result.exit_code, -1);
  EXPECT_EQ(result.output, open_failed + open_failed);
}

}  // namespace
}  // namespace svcinst
