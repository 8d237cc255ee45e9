// Registering services: what the tool says, and what the manager and its registry keys then hold.
#include <gtest/gtest.h>

#include "tests/support/capture.h"
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

  void expect_registered(const std::string& options, const std::string& registered,
                         const std::string& name = "s1") const {
    const Result result = tool(options);
    EXPECT_EQ(result.output, "") << options;
    EXPECT_EQ(result.exit_code, 0) << options;
    EXPECT_EQ(configuration(name), registered) << options;
    remove(name);
    EXPECT_EQ(configuration(name), "none") << options;
  }

  TempDirectory temporary_;
  std::string folder_;
};

TEST_F(Install, RegistersWhatEverySpellingOfTheOptionsSays) {
  const std::string long_text(2000, 'x');
  const struct {
    std::string options;
    std::string path;  // "." stands for the tool's folder
    std::string rest;
  } rows[] = {
      {R"(--install --name s1 --binpath C:\x.exe --disname "S one")", R"(C:\x.exe)",
       "|S one|LocalSystem|"},
      {R"(-i -n s1 -b "C:\P F\x.exe" -d D --desc "says hello" --type x)", R"(C:\P F\x.exe)",
       "|D|LocalSystem|says hello"},
      {"--i --name=s1 -bC:/x.exe -d=D -t", "C:/x.exe", "|D|LocalSystem|"},
      {"-u -i -n s1 -b svc.exe -d D --desc *", R"(.\svc.exe)", "|D|LocalSystem|*"},
      {R"(-i -n s1 -b C:x.exe -d D --desc "")", R"(.\C:x.exe)", "|D|LocalSystem|"},
      {R"(-i -n s1 -b \x.exe -d "'a b'")", R"(.\\x.exe)", "|'a b'|LocalSystem|"},
      {R"(-i --name s2 -n s1 -b \\host\share\x.exe -d D --desc )" + long_text,
       R"(\\host\share\x.exe)", "|D|LocalSystem|" + long_text.substr(0, 1023)},
      // Bytes of the ANSI code page, and UTF-8, which is just other bytes of it.
      {"-i -n s1 -b C:\\t\xe4t\\x.exe -d \xfcml --desc \xe9t\xe9", "C:\\t\xe4t\\x.exe",
       "|\xfcml|LocalSystem|\xe9t\xe9"},
      {"-i -n s1 -b C:\\\xc3\xa9\\x.exe -d \xc3\xa9", "C:\\\xc3\xa9\\x.exe",
       "|\xc3\xa9|LocalSystem|"},
  };
  for (const auto& row : rows) {
    const std::string path = row.path[0] == '.' ? folder_ + row.path.substr(1) : row.path;
    expect_registered(row.options, "16 2 1|" + path + row.rest);
  }
}

TEST_F(Install, RegistersNonAsciiNames) {
  work_in("t\xe9st");
  const std::string path = folder_ + R"(\svc.exe)";
  for (const char* name : {"d\xe9mon", "d\xc3\xa9mon"})
    expect_registered(std::string("-i -b svc.exe -d D -n ") + name,
                      "16 2 1|" + path + "|D|LocalSystem|", name);
}

TEST_F(Install, RegistersNothingOtherwise) {
  const struct {
    const char* options;
    const char* output;
  } rows[] = {
      {"", "HELP\r\n"},
      {"-i -n s1 -b x", "HELP\r\n"},
      {"-i -n s1 -d D", "HELP\r\n"},
      {"-i -b x -d D", "HELP\r\n"},
      {"-n s1 -b x -d D", "HELP\r\n"},
      {"install -n s1 -b x -d D", "error at position: 1\r\nHELP\r\n"},
      {R"(-i -n s1 -d D --binpath="C:\a b\x.exe")", "HELP\r\n"},
      {"-i -n -b x -d D", "Open the service '' failed!\r\n"},
      {"-i -n a/b -b x -d D", "Open the service 'a/b' failed!\r\n"},
  };
  for (const auto& row : rows) {
    const Result result = tool(row.options);
    EXPECT_EQ(result.output, row.output) << row.options;
    EXPECT_EQ(result.exit_code, -1) << row.options;
    EXPECT_EQ(presence("s1"), "none") << row.options;
  }
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
