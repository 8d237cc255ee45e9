// Registering services: what the tool says, and what the manager and its registry keys then hold.
#include <gtest/gtest.h>

#include <regex>

#include "tests/support/capture.h"
#include "tests/support/check_cases.h"
#include "tests/windows/service_manager.h"

namespace svcinst {
namespace {

// Runs the tool as an administrator would: its folder's name in front of its own.
class Install : public ::testing::Test {
 protected:
  Install() { work_in("tool"); }
  ~Install() override { remove("s1"); }

  void work_in(const char* folder) {
    folder_ = temporary_.path("") + folder;
    CreateDirectoryA(folder_.c_str(), nullptr);
    CopyFileA(path_of("SVCINST_PROGRAM").c_str(), (folder_ + R"(\svcinst.exe)").c_str(), TRUE);
  }

  [[nodiscard]] Result tool(const std::string& options) const {
    return run('"' + folder_ + R"(\svcinst.exe" )" + options, folder_);
  }

  // What is registered by these options: "path|display name|account|description", the path with "."
  // for the tool's folder. "~" stands for a byte of the ANSI code page.
  [[nodiscard]] std::string registered(std::string options, const std::string& name = "s1") const {
    std::replace(options.begin(), options.end(), '~', '\xe9');
    const Result result = tool(options);
    EXPECT_EQ(result.output, "") << options;
    EXPECT_EQ(result.exit_code, 0) << options;
    std::string text = configuration(name);
    EXPECT_TRUE(text.starts_with("16 2 1|")) << text;
    text.erase(0, 7);
    if (text.starts_with(folder_)) text.replace(0, folder_.size(), ".");
    remove(name);
    EXPECT_EQ(configuration(name), "none") << options;
    std::replace(text.begin(), text.end(), '\xe9', '~');
    return text;
  }

  TempDirectory temporary_;
  std::string folder_;
};

TEST_F(Install, RegistersWhatEverySpellingOfTheOptionsSays) {
  check_cases(
      R"(--install --name s1 --binpath C:\x.exe --disname "S one" -> C:\x.exe|S one|LocalSystem|
-i -n s1 -b "C:\P F\x.exe" -d D --desc "says hello" --type x -> C:\P F\x.exe|D|LocalSystem|says hello
--i --name=s1 -bC:/x.exe -d=D -t -> C:/x.exe|D|LocalSystem|
-u -i -n s1 -b svc.exe -d D --desc * -> .\svc.exe|D|LocalSystem|*
-i -n s1 -b C:x.exe -d D --desc "" -> .\C:x.exe|D|LocalSystem|
-i -n s1 -b \x.exe -d "'a b'" -> .\\x.exe|'a b'|LocalSystem|
-i -n s1 -b C:\t~t\x.exe -d ~ml --desc ~t~ -> C:\t~t\x.exe|~ml|LocalSystem|~t~
-i -n s1 -b C:\é\x.exe -d é -> C:\é\x.exe|é|LocalSystem|)",
      [this](const std::string& options) { return registered(options); }, "\n");
  const std::string text(2000, 'x');
  EXPECT_EQ(registered(R"(-i --name s2 -n s1 -b \\host\share\x.exe -d D --desc )" + text),
            R"(\\host\share\x.exe|D|LocalSystem|)" + text.substr(0, 1023));
}

TEST_F(Install, RegistersNonAsciiNames) {
  work_in("t\xe9st");
  for (const std::string name : {"d\xe9mon", "d\xc3\xa9mon"})
    EXPECT_EQ(registered("-i -b svc.exe -d D -n " + name, name), R"(.\svc.exe|D|LocalSystem|)");
}

TEST_F(Install, RegistersNothingOtherwise) {
  check_cases(R"( -> HELP
-i -n s1 -b x -> HELP
-i -n s1 -d D -> HELP
-i -b x -d D -> HELP
-n s1 -b x -d D -> HELP
install -n s1 -b x -d D -> error at position: 1 HELP
-i -n s1 -d D --binpath="C:\a b\x.exe" -> HELP
-i -n -b x -d D -> Open the service '' failed!
-i -n a/b -b x -d D -> Open the service 'a/b' failed!)",
              [this](const std::string& options) {
                const Result result = tool(options);
                EXPECT_EQ(result.exit_code, -1) << options;
                EXPECT_EQ(presence("s1"), "none") << options;
                const std::string told = std::regex_replace(result.output, std::regex("\r\n"), " ");
                return told.substr(0, told.size() - 1);
              },
              "\n");
}

TEST_F(Install, KeepsATakenName) {
  EXPECT_EQ(tool(R"(-i -n s1 -b C:\x.exe -d first)").exit_code, 0);
  const Result again = tool(R"(-i -n S1 -b C:\y.exe -d second)");
  EXPECT_EQ(again.output, "Open the service 'S1' failed!\r\n");
  EXPECT_EQ(again.exit_code, -1);
  EXPECT_EQ(configuration("s1"), R"(16 2 1|C:\x.exe|first|LocalSystem|)");
}

TEST_F(Install, ExampleScriptInstallsStartsAndRemoves) {
  const std::string script = path_of("SVCINST_EXAMPLES") + R"(\install.bat)";
  CopyFileA(script.c_str(), (folder_ + R"(\install.bat)").c_str(), TRUE);
  CopyFileA(path_of("SVCINST_SERVICE").c_str(), (folder_ + R"(\hello.exe)").c_str(), TRUE);
  const Result installed = run("cmd /c install.bat", folder_);
  EXPECT_EQ(installed.exit_code, 0) << installed.output;
  EXPECT_EQ(configuration("hello"), "16 2 1|" + folder_ + R"(\hello.exe|Hello service|)" +
                                        "LocalSystem|Says hello to the network.");
  EXPECT_EQ(registry_value("hello", "DependOnService"), std::string("RpcSs\0\0", 7));
  const Result again = run("cmd /c install.bat", folder_);
  EXPECT_EQ(again.exit_code, 1) << again.output;
  const Result removed = run("cmd /c install.bat remove", folder_);
  EXPECT_EQ(removed.exit_code, 0) << removed.output;
  EXPECT_EQ(presence("hello"), "none");
}

}  // namespace
}  // namespace svcinst
