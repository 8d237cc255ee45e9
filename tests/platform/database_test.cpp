// The service database, as the program, its files and sqlite3 show it. No time passes.
#include <unistd.h>

#include <cstdlib>

#include "tests/support/story.h"

namespace svcinst {
namespace {

struct Database : testing::Test {
  Database() { setenv("SVCINST_DATABASE", path.c_str(), 1); }

  // A line of the shell, which finds the database's path in $f.
  void shell(const std::string& line) const {
    EXPECT_EQ(std::system(("f='" + path + "'; " + line).c_str()), 0) << line;
  }

  TempDirectory folder;
  std::string path = folder.path("services.db");
};

std::string install(const char* name, const char* display_name) {
  return story_of_program({"svcinst", "-i", "-b=x", "-n", name, "-d", display_name});
}

std::string uninstall(const char* name) {
  return story_of_program({"svcinst", "-u", "-n", name});
}

TEST_F(Database, LeavesAFileThatIsNotItsOwnAsItIs) {
  for (const char* line :
       {"rm $f; sqlite3 $f 'CREATE TABLE services(name)'", "sqlite3 $f 'CREATE TABLE other(x)'",
        "yes | head -c 1 >$f", "yes | dd of=$f bs=1 seek=4096 count=99 conv=notrunc 2>/dev/null"}) {
    std::filesystem::remove(path);
    EXPECT_EQ(install("a", "b"), "0");
    shell(line);
    const std::string bytes = file_bytes(path);
    EXPECT_EQ(install("c", "d"), "Open the service manager failed!\n-1") << line;
    EXPECT_TRUE(file_bytes(path) == bytes) << line;
  }
}

TEST_F(Database, FindsNamesInWhateverCase) {
  EXPECT_EQ(install("Name", "Display"), "0");
  EXPECT_EQ(install("NAME", "other"), "Open the service 'NAME' failed!\n-1");
  EXPECT_EQ(install("other", "DISPLAY"), "Open the service 'other' failed!\n-1");
  EXPECT_EQ(install("a/b", "c"), "Open the service 'a/b' failed!\n-1");
  shell("sqlite3 $f 'UPDATE services SET current_state = 4'");
  EXPECT_EQ(uninstall("nAME"),
            "Sleep(1000) Sleep(1000) The service 'nAME' stop successful!\nSleep(1000) 0");
}

// Root has a place of its own when no database is chosen.
TEST_F(Database, LiesWhereTheUserWantsIt) {
  const struct {
    std::string database, state_home, file;
  } rows[] = {{"a/b.db", "", "a/b.db"},
              {":memory:", "", ":memory:"},
              {"", folder.path("state"), "state/svcinst/services.db"},
              {"", "relative", "home/.local/state/svcinst/services.db"}};
  std::filesystem::permissions(folder.path(""), std::filesystem::perms::all);
  std::filesystem::current_path(folder.path(""));
  const uid_t user = geteuid();
  EXPECT_EQ(seteuid(user == 0 ? 12345 : user), 0);
  for (const auto& row : rows) {
    setenv("SVCINST_DATABASE", row.database.c_str(), 1);
    setenv("XDG_STATE_HOME", row.state_home.c_str(), 1);
    setenv("HOME", folder.path("home").c_str(), 1);
    EXPECT_EQ(install("a", "b"), "0") << row.file;
    EXPECT_NE(file_bytes(folder.path(row.file)), "") << row.file;
  }
  EXPECT_EQ(seteuid(user), 0);
  std::filesystem::current_path("/");
}

}  // namespace
}  // namespace svcinst
