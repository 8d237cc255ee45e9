// The built program on the real Service Control Manager, run as an install script runs it. A story
// is what a line of the script printed, without the records' time and level, and its exit code.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <vector>

#include "tests/support/capture.h"

std::string story_of(const std::string& line) {
  std::FILE* const shell = _popen(('"' + line + '"').c_str(), "r");
  std::string story;
  for (int c = std::fgetc(shell); c != EOF; c = std::fgetc(shell)) {
    story += static_cast<char>(c);
    if (!story.ends_with("\033[0m] ")) continue;
    story.erase(story.size() - 18);  // the level's tag
    story.erase(story.rfind("[20"), 25);
  }
  return story + std::to_string(_pclose(shell));
}

// "path|display name|description|dependency", as the registry has them; empty for no service.
std::string registration(const std::string& name) {
  const std::string key = R"(System\CurrentControlSet\Services\)" + name;
  const auto text = [&key](const char* value) {
    char data[4096] = "";
    DWORD size = sizeof data;
    RegGetValueA(HKEY_LOCAL_MACHINE, key.c_str(), value, RRF_RT_ANY | RRF_NOEXPAND, nullptr, data,
                 &size);
    return std::string(data);
  };
  if (text("ImagePath").empty()) return "";
  return text("ImagePath") + '|' + text("DisplayName") + '|' + text("Description") + '|' +
         text("DependOnService");
}

struct EndToEnd : testing::Test {
  EndToEnd() {
    std::filesystem::create_directory(folder);
    std::filesystem::copy("svcinst.exe", folder + "/svcinst.exe");
    std::filesystem::copy("end_to_end_service.exe", folder + "/svcinst-service.exe");
  }
  ~EndToEnd() override {
    for (const std::string& service : made) {
      story_of("sc delete svcinst-" + service);
      for (int i = 0; i < 300 && !registered(service).empty(); ++i) Sleep(100);  // milliseconds
    }
  }
  [[nodiscard]] std::string story_of_tool(const std::string& options) const {
    return story_of('"' + folder + "/svcinst.exe\" " + options);
  }
  // Of the service "svcinst-NAME", its path without the folder that all of them are in.
  [[nodiscard]] std::string registered(const std::string& name) const {
    return replaced(registration("svcinst-" + name), folder, "");
  }

  TempDirectory directory;
  std::string folder = directory.path("a & b^c");
  std::vector<std::string> made;  // nothing else is touched
};

TEST_F(EndToEnd, ServicesComeAndGo) {
  const std::string text(1023, 'x');
  const std::string installs[][3] = {
      {"stopped",
       R"(--install --name svcinst-stopped --disname "A B" --binpath "C:\a b\x.exe" --dep RpcSs)",
       R"(C:\a b\x.exe|A B||RpcSs)"},
      {"running", R"(-i -nsvcinst-running -bsvcinst-service.exe -dR --desc "d e")",
       R"(\svcinst-service.exe|R|d e|)"},
      {"hung", "-i -nsvcinst-hung -bsvcinst-service.exe -dH -t x", R"(\svcinst-service.exe|H||)"},
      {"long", "-i -n svcinst-long -b x -d L --desc " + text + "cut", R"(\x|L|)" + text + "|"},
      {"d\xe9mon", "-i -n svcinst-d\xe9mon -b C:x.exe -d \xe9 --desc *", "\\C:x.exe|\xe9|*|"}};
  for (const auto& [service, options, registered_as] : installs) {
    ASSERT_EQ(story_of_tool(options), "0") << options;
    made.push_back(service);
    EXPECT_EQ(registered(service), registered_as) << options;
  }
  ASSERT_EQ(registered("missing"), "");

  for (const char* start : {"net start svcinst-running", "net start svcinst-hung"}) story_of(start);
  const std::string timeout = "Timeout waiting for the service 'svcinst-hung' to stop!\n";
  const std::string missing = "Open the service 'svcinst-missing' failed!\n";
  const std::pair<std::string, std::string> uninstalls[] = {
      {"hung", timeout + timeout + "-1"},
      {"running", "The service 'svcinst-running' stop successful!\n0"},
      {"missing", missing + missing + "-1"},
      {"STOPPED", "The service 'svcinst-STOPPED' is stoped!\n0"},
      {"d\xe9mon", "The service 'svcinst-d\xe9mon' is stoped!\n0"}};
  for (const auto& [service, story] : uninstalls) {
    EXPECT_EQ(story_of_tool("--uninstall --name svcinst-" + service), story);
    EXPECT_EQ(registered(service).empty(), service != "hung") << service;
  }
}

TEST(Plugin, SharesTheLoggerEvenBeforeTheProgramStartsUp) {
  for (const std::string plugin : {"example_plugin", "early_plugin"}) {
    const std::string story = story_of("preload.exe lib" + plugin + ".dll svcinst.exe");
    EXPECT_TRUE(story.starts_with("   0|hello from the plug-in\n   1|install/uninstall")) << story;
    EXPECT_TRUE(story.ends_with("\n\n-1")) << story;
  }
}
