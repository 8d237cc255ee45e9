#include "app/program.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/capture.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

void replace_first(std::string& text, const std::string& old, const std::string& by = "") {
  if (const auto at = text.find(old); at != std::string::npos) text.replace(at, old.size(), by);
}

// What a call tells the manager; empty for a call that each command makes. Of a creation only what
// the command line decides: name, display name, path and dependencies.
std::string essence(std::string call) {
  if (!call.starts_with("Create") && !call.starts_with("Change") && !call.starts_with("Delete"))
    return "";
  for (const char* same : {"CreateServiceA(manager#1, ", ", 0xF01FF, 0x10, 2, 1",
                           ", null, null) = service#1", ", null, null"})
    replace_first(call, same);
  return call + " ";
}

// "exit code, output, essence of the calls, their number" of a run with arguments that `|` parts;
// without the prefixes of records, the help text as HELP, `$` for a line feed.
std::string outcome(const std::string& command_line, const std::string& failing) {
  reset_scripted_services();
  scripted_services().failures = {{failing, 0}};
  if (failing == "ControlService") scripted_services().statuses = {{SERVICE_RUNNING}};
  std::string bytes = command_line;
  std::vector<const char*> argv = {bytes.c_str()};
  for (char& c : bytes) {
    if (c != '|') continue;
    c = '\0';
    argv.push_back(&c + 1);
  }
  const CapturedStdout captured;
  const int exit_code = run_program(static_cast<int>(argv.size()), argv.data());
  std::string text = std::to_string(exit_code) + " " + captured.bytes();
  for (int records = 0; records < 2; ++records)
    replace_first(text, "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ");
  const std::size_t help = text.find("install/uninstall a executable");
  if (help != std::string::npos) text.replace(help, text.size(), "HELP ");
  while (text.find('\n') != std::string::npos) replace_first(text, "\n", "$");
  for (const std::string& call : call_log()) text += essence(call);
  EXPECT_EQ(open_handles(), 0U);
  return text + std::to_string(call_log().size());
}

TEST(Program, DoesWhatTheCommandLineSays) {
  const std::string no_text = " is not valid text in the code page for file names (65001)!$0";
  const struct {
    std::string arguments;  // behind the program's name, unless that is here too
    std::string outcome;
    const char* fails = "";
  } rows[] = {
      {"", "-1 HELP 0"},
      {"|--install", "-1 HELP 0"},
      {"|-i|--name|a|--binpath|b", "-1 HELP 0"},
      {"|-i|--name|a|-d|b", "-1 HELP 0"},
      {"|-i|-b|a|--disname|b", "-1 HELP 0"},
      {"|--uninstall", "-1 HELP 0"},
      {"|--name|a", "-1 HELP 0"},
      {"|install", "-1 error at position: 1$HELP 0"},
      {"|--install|-|x", "-1 HELP 0"},  // text behind what matches is ignored
      {"|--", "-1 error at position: 3$HELP 0"},
      // Every spelling of the options.
      {R"(|--install|--name|a|--binpath|C:\x|--disname|A b)", R"(0 "a", "A b", "C:\x", null 4)"},
      {R"(|-i|-n|a|-b|C:\P F\x|-d|D|--dep|Tcpip|-t|x)", R"(0 "a", "D", "C:\P F\x", "Tcpip\0\0" 4)"},
      {"|--i|--name=a|-bC:/x.exe|-d=D|-t", R"(0 "a", "D", "C:/x.exe", null 4)"},
      {R"(|-u|-i|--name|a|-n|b|-b|C:\|-d|x)", R"(0 "b", "x", "C:\", null 4)"},
      {R"(|-i|--name|a|--name|b|-b|C:\|-d|x)", R"(0 "a", "x", "C:\", null 4)"},
      {R"(|-i|-n|'a b'|-b|C:\|-d|"q")", R"(0 "'a b'", "q", "C:\", null 4)"},
      {"|-i|-n|-b|-d", R"(0 "", null, "D:\tools\", null 4)"},
      {R"(|-i|-n||x|-b|s|-d|""|--dep|"")", R"(0 "", "", "D:\tools\s", "\0" 4)"},
      {R"(|-i|-n|a|-b|\|-d|x|--desc|"")", R"(0 "a", "x", "D:\tools\\", null 4)"},
      {R"(|-i|-n|a|-b|C:\|-d|x|--desc|says it)",
       R"(0 "a", "x", "C:\", null ChangeServiceConfig2A(service#2, 1, "says it") 7)"},
      // Relative paths, and bytes that are no text.
      {"|-i|-n|a|-b|C:s|-d|x", R"(0 "a", "x", "D:\tools\C:s", null 4)"},
      {"inst.exe|-i|-n|a|-b|s|-d|x", R"(0 "a", "x", "\s", null 4)"},
      {R"(D:\inst.exe|-i|-n|a|-b|s|-d|x)", R"(0 "a", "x", "D:\\s", null 4)"},
      {"\u00e9/i|-i|-n|a|-b|\u00f6|-d|x", "0 \"a\", \"x\", \"\u00e9\\\u00f6\", null 4"},
      {"|-i|-n|a|-b|C:\\\xff|-d|x", "-1 The path 'C:\\\xff'" + no_text},
      {"\xff/i|-i|-n|a|-b|C:\\x|-d|x", "-1 The path '\xff/i'" + no_text},
      {"\xff/i|-u|-n|a", "-1 The path '\xff/i'" + no_text},
      {"\xff/i", "-1 The path '\xff/i'" + no_text},
      // Uninstalling, and what fails.
      {"|--uninstall|--name|x|-n|s v",
       "0 The service 's v' is stoped!$DeleteService(service#2) 14"},
      {R"(|-u|--name="s"|-ns v)", "0 The service 's' is stoped!$DeleteService(service#2) 14"},
      {"|-i|-n|a|-b|C:\\|-d|x",
       R"(-1 Open the service 'a' failed!$"a", "x", "C:\", null, null, null) = null 3)",
       "CreateServiceA"},
      {"|-u|-n|a", "0 The service 'a' stop failedDeleteService(service#2) 15", "ControlService"},
      {"|-u|-n|a", "-1 Open the service 'a' failed!$Open the service 'a' failed!$6",
       "OpenServiceA"},
  };
  for (const auto& row : rows) {
    const bool named = !row.arguments.empty() && row.arguments[0] != '|';
    EXPECT_EQ(outcome((named ? "" : R"(D:\tools\inst.exe)") + row.arguments, row.fails),
              row.outcome)
        << row.arguments;
  }
}

}  // namespace
}  // namespace svcinst
