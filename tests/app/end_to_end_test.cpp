// The built program, run as a user runs it, against a service database of its own.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "tests/support/capture.h"

namespace svcinst {
namespace {

struct Result {
  int status;
  std::string output;
};

class EndToEnd : public ::testing::Test {
 protected:
  EndToEnd() { setenv("SVCINST_DATABASE", directory_.path("services.db").c_str(), 1); }

  Result shell(const std::string& command) {
    const std::string file = directory_.path("output");
    const int status = std::system((command + " > '" + file + "' 2>&1").c_str());  // NOLINT
    return {WEXITSTATUS(status), file_bytes(file)};
  }

  Result run(const std::string& arguments) {
    return shell(std::string(SVCINST_PROGRAM) + " " + arguments);
  }

  std::string query(const std::string& sql) {
    return shell("sqlite3 '" + directory_.path("services.db") + "' \"" + sql + "\"").output;
  }

 private:
  TempDirectory directory_;
};

TEST_F(EndToEnd, RegistersAndRemovesAService) {
  const Result installed =
      run("--install --name hello --disname 'Hello you' --binpath 'C:\\hello\\hello.exe' "
          "--dep Tcpip --desc 'says hello'");
  EXPECT_EQ(installed.output, "");
  EXPECT_EQ(installed.status, 0);
  EXPECT_EQ(query("select name, display_name, binary_path, hex(dependencies), description "
                  "from services"),
            "hello|Hello you|C:\\hello\\hello.exe|54637069700000|says hello\n");

  const Result again = run("-i -n HELLO -d Other -b 'C:\\x'");
  EXPECT_TRUE(again.output.ends_with("Open the service 'HELLO' failed!\n")) << again.output;
  EXPECT_EQ(again.status, 255);

  const Result removed = run("--uninstall --name hello");
  EXPECT_TRUE(removed.output.ends_with("The service 'hello' is stoped!\n")) << removed.output;
  EXPECT_EQ(removed.status, 0);
  EXPECT_EQ(query("select count(*) from services"), "0\n");
}

TEST_F(EndToEnd, ShowsHelpWithoutTouchingTheDatabase) {
  const Result help = run("");
  EXPECT_EQ(help.status, 255);
  EXPECT_NE(help.output.find("\033[36;40minfo\033[0m] install/uninstall a executable file"),
            std::string::npos);
  EXPECT_EQ(shell("ls " + std::string(std::getenv("SVCINST_DATABASE"))).status, 2);
}

}  // namespace
}  // namespace svcinst
