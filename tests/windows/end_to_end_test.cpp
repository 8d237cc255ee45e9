// The built program on the real Service Control Manager, run as an install script runs it.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <future>
#include <regex>
#include <vector>

#include "tests/support/capture.h"

namespace svcinst {
namespace {

struct Result {
  int exit_code;
  std::string output;
};

// Runs a line of an install script.
Result run_line(const std::string& line) {
  std::FILE* const shell = _popen(('"' + line + '"').c_str(), "rb");
  std::string output;
  for (int c = std::fgetc(shell); c != EOF; c = std::fgetc(shell)) output += static_cast<char>(c);
  return {_pclose(shell), output};
}

// "path|display name|description|dependency|type start error account", as the registry has them;
// empty for no service.
std::string registration(const std::string& name) {
  const std::string key = R"(System\CurrentControlSet\Services\)" + name;
  const auto text = [&key](const char* value) {
    char data[4096] = "";
    DWORD size = sizeof data;
    RegGetValueA(HKEY_LOCAL_MACHINE, key.c_str(), value, RRF_RT_ANY | RRF_NOEXPAND, nullptr, data,
                 &size);
    return std::string(data);
  };
  const auto number = [&text](const char* value) { return std::to_string(*text(value).c_str()); };
  if (text("ImagePath").empty()) return "";
  return text("ImagePath") + '|' + text("DisplayName") + '|' + text("Description") + '|' +
         text("DependOnService") + '|' + number("Type") + ' ' + number("Start") + ' ' +
         number("ErrorControl") + ' ' + text("ObjectName");
}

// What was printed, without the records' times and tags.
std::string told(const std::string& output) {
  static const std::regex not_told("\\[20.*\033\\[0m\\] |\r");
  return std::regex_replace(output, not_told, "");
}

class EndToEnd : public testing::Test {
 protected:
  EndToEnd() {
    std::filesystem::create_directory(folder);
    std::filesystem::copy("svcinst.exe", folder + "/svcinst.exe");
    std::filesystem::copy("end_to_end_service.exe", folder + "/svcinst-service.exe");
  }

  void expect(const std::string& options, const std::string& messages, int exit_code) const {
    const Result result = run_line('"' + folder + "/svcinst.exe\" " + options);
    EXPECT_EQ(told(result.output), messages) << options;
    EXPECT_EQ(result.exit_code, exit_code) << options;
  }

  // Of the service "svcinst-NAME", its path without the folder that all of them are in.
  [[nodiscard]] std::string registered(const std::string& name) const {
    std::string text = registration("svcinst-" + name);
    return text.starts_with(folder) ? text.substr(folder.size()) : text;
  }

  TempDirectory directory;
  std::string folder = directory.path("a & b^c");
};

TEST_F(EndToEnd, ServicesComeAndGo) {
  const std::string text(1023, 'x');
  const struct {
    std::string service, options, registered;
  } installs[] = {
      {"stopped",
       R"(--install --name svcinst-stopped --disname "A B" --binpath "C:\a b\x.exe" --dep RpcSs)",
       R"(C:\a b\x.exe|A B||RpcSs)"},
      {"running", R"(-i -nsvcinst-running -bsvcinst-service.exe -dR --desc "d e")",
       R"(\svcinst-service.exe|R|d e|)"},
      {"hung", "-i -nsvcinst-hung -bsvcinst-service.exe -dH -t x", R"(\svcinst-service.exe|H||)"},
      {"long", "-i -n svcinst-long -b x -d L --desc " + text + "cut", R"(\x|L|)" + text + "|"},
      {"d\xe9mon", "-i -n svcinst-d\xe9mon -b C:x.exe -d \xe9 --desc *", "\\C:x.exe|\xe9|*|"}};
  for (const auto& [service, options, registered_as] : installs) {
    expect(options, "", 0);
    EXPECT_EQ(registered(service), registered_as + "|16 2 1 LocalSystem") << options;
  }

  for (const char* start : {"net start svcinst-running", "net start svcinst-hung"}) run_line(start);
  const std::string timeout = "Timeout waiting for the service 'svcinst-hung' to stop!\n";
  const std::string missing = "Open the service 'svcinst-missing' failed!\n";
  const struct {
    std::string service, messages;
    int exit_code;
  } uninstalls[] = {{"missing", missing + missing, -1},
                    {"STOPPED", "The service 'svcinst-STOPPED' is stoped!\n", 0},
                    {"running", "The service 'svcinst-running' stop successful!\n", 0},
                    {"hung", timeout + timeout, -1},
                    {"d\xe9mon", "The service 'svcinst-d\xe9mon' is stoped!\n", 0}};
  std::vector<std::future<void>> side_by_side;  // the tool waits for seconds
  for (const auto& row : uninstalls) {
    side_by_side.push_back(std::async(std::launch::async, [this, &row] {
      expect("--uninstall --name svcinst-" + row.service, row.messages, row.exit_code);
      EXPECT_EQ(registered(row.service).empty(), row.service != "hung") << row.service;
    }));
  }
}

TEST(Plugin, SharesTheLoggerEvenBeforeTheProgramStartsUp) {
  for (const std::string plugin : {"example_plugin", "early_plugin"}) {
    const Result result = run_line("preload.exe lib" + plugin + ".dll svcinst.exe");
    EXPECT_TRUE(told(result.output).starts_with("hello from the plug-in\ninstall/uninstall"));
    EXPECT_NE(result.output.find("|   1|"), std::string::npos) << result.output;
    EXPECT_EQ(result.exit_code, -1) << plugin;
  }
}

}  // namespace
}  // namespace svcinst
