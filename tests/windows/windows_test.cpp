// What only Windows has: the example script for its command prompt, and the checks that end a program.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/end_to_end/machine.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

namespace files = std::filesystem;

constexpr char kUsage[] = "usage: ";
constexpr char kNoService[] = "There is no service";
constexpr char kFailed[] = "install.bat failed";

const struct {
  files::path folder;
  std::string argument;
  int exit_code;
  std::string said;
  bool is_registered;  // afterwards
} kRuns[] = {{u8"a&b^c_démon", "", 1, kUsage, false},
             {u8"a&b^c_démon", "/?", 1, kUsage, false},
             {u8"a&b^c_démon", "uninstall", 1, kUsage, false},
             {u8"a&b^c_démon", "install twice", 1, kUsage, false},
             {u8"a&b^c_démon", "remove", 0, kNoService, false},
             {u8"a&b^c_démon", "INSTALL", 0, "started successfully", true},
             {u8"a&b^c_démon", "install", 1, kFailed, true},
             {u8"a&b^c_démon", "/?", 1, kUsage, true},
             {u8"a&b^c_démon", "Upgrade", 0, "started successfully", true},
             {u8"a b", "upgrade", 1, "has a blank", true},
             {u8"a b", "REMOVE", 0, "stop successful", false},
             {u8"a b", "install", 1, "has a blank", false},
             {u8"a&b^c_démon", "upgrade", 0, kNoService, true},
             {u8"no_administrator", "remove", 1, "no administrator", true},
             {u8"a&b^c_démon", "remove", 0, "stop successful", false},
             {u8"no_administrator", "install", 1, "no administrator", false},
             {u8"no_program", "install", 1, kFailed, true},
             {u8"no_program", "remove", 0, "is stoped", false}};

TEST(InstallScript, DoesWhatItIsToldOrSaysWhyNot) {
  ASSERT_EQ(registration("hello"), "");
  const TempDirectory directory;
  const files::path start = files::current_path();
  for (const auto& [name, argument, exit_code, said, is_registered] : kRuns) {
    const files::path folder = directory.path("") / name;
    if (files::create_directory(folder)) {
      files::copy(program, folder / "svcinst.exe");
      files::copy("examples/install.bat", folder / "install.bat");
      if (name != "no_program") files::copy(service_program, folder / "hello.exe");
      if (name == "no_administrator") files::copy(program, folder / "fltmc.exe");  // fails, too
    }
    files::current_path(folder);
    const Result result = run_line("\"install.bat\" " + argument);
    files::current_path(start);
    EXPECT_EQ(result.exit_code, exit_code) << name << argument;
    EXPECT_NE(result.output.find(said), std::string::npos) << name << argument << result.output;
    EXPECT_EQ(!registration("hello").empty(), is_registered) << name << argument;
  }
}

TEST(Checks, EndTheProgram) {
  const int stack_buffer_overrun = static_cast<int>(0xC0000409);  // STATUS_STACK_BUFFER_OVERRUN
  const struct {
    std::string argument, message;
  } rows[] = {{"", "stack smashing"}, {" with-a-checked-size", "buffer overflow"}};
  for (const auto& [argument, message] : rows) {
    const Result result = run_line("smashed_stack.exe" + argument + " 2>&1");
    EXPECT_EQ(result.output, "*** " + message + " detected ***: terminated\n");
    EXPECT_EQ(result.exit_code, stack_buffer_overrun) << argument;
  }
}

}  // namespace
}  // namespace svcinst
