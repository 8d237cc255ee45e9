// The service database, and what is left behind when memory runs out. Only locks take time.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <new>

#include "app/service_handle.h"
#include "tests/support/story.h"

using namespace svcinst;

int requests_until_failure = 0;  // of memory; 0: none fails

extern "C" const char* __asan_default_options() {  // NOLINT: the name is the sanitizer's
  return "alloc_dealloc_mismatch=0";
}

void* operator new(std::size_t size) {  // NOLINT: its delete frees by free, too
  if (requests_until_failure > 0 && --requests_until_failure == 0) throw std::bad_alloc();
  return std::malloc(size);
}

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

TEST_F(Database, LeavesAFileThatIsNotItsOwnOrHasTwoNamesAsItIs) {
  for (const char* line :
       {"rm $f; sqlite3 $f 'CREATE TABLE services(name)'", "sqlite3 $f 'CREATE TABLE other(x)'",
        "yes | head -c 1 >$f", "yes | dd of=$f bs=1 seek=4096 count=99 conv=notrunc 2>/dev/null",
        "ln $f $f.2"}) {
    std::filesystem::remove(path);
    EXPECT_EQ(install("a", "b"), "0");
    shell(line);
    const std::string bytes = file_bytes(path);
    EXPECT_EQ(install("c", "d"), "> Open the service manager failed!\n-1") << line;
    EXPECT_TRUE(file_bytes(path) == bytes) << line;
  }
}

TEST_F(Database, StoresWhatAServiceIsTold) {
  EXPECT_EQ(story_of_program({"tool", "-i", "-na", "-bC:\\x", "-db", "--dep=c", "--desc=d"}), "0");
  shell(
      "sqlite3 $f 'SELECT name, display_name, binary_path, quote(dependencies), description,"
      " account, service_type, start_type, error_control, current_state, controls_accepted,"
      " win32_exit_code FROM services' | grep -Fxq "
      "'a|b|C:\\x|X'\\''630000'\\''|d|LocalSystem|16|2|1|1|0|1077'");
}

TEST_F(Database, TellsEachFieldOfAStatusAndStopsWhatRunsOrIsPaused) {
  install("a", "b");
  shell(
      "sqlite3 $f 'UPDATE services SET service_type = 10, current_state = 11,"
      " controls_accepted = 12, win32_exit_code = 13, service_specific_exit_code = 14,"
      " checkpoint = 15, wait_hint = 16, process_id = 17, service_flags = 18'");
  const ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  const ServiceHandle service(OpenServiceA(manager.get(), "A", SERVICE_ALL_ACCESS));
  SERVICE_STATUS_PROCESS status;
  auto* const fields = reinterpret_cast<DWORD*>(&status);
  auto* const bytes = reinterpret_cast<LPBYTE>(&status);
  DWORD needed = 0;
  QueryServiceStatusEx(service.get(), SC_STATUS_PROCESS_INFO, bytes, sizeof status, &needed);
  for (DWORD i = 0; i < 9; ++i) EXPECT_EQ(fields[i], 10 + i);
  for (const DWORD state : {1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
    shell("sqlite3 $f 'UPDATE services SET current_state = " + std::to_string(state) + "'");
    const bool stops = state == SERVICE_RUNNING || state == SERVICE_PAUSED;
    const BOOL told = ControlService(service.get(), SERVICE_CONTROL_STOP, &status);
    EXPECT_EQ(told != FALSE && status.dwCurrentState == SERVICE_STOPPED, stops) << state;
  }
}

TEST_F(Database, RefusesNamesThatAreTakenInWhateverCaseOrNotAllowed) {
  const std::string text(257, 'n');
  const char* const too_long = text.c_str();
  EXPECT_EQ(install("Name", "Display"), "0");
  EXPECT_EQ(install(too_long + 1, std::string(256, '/').c_str()), "0");
  for (const char* name : {"b", "c"}) EXPECT_EQ(install(name, "\"\""), "0") << "an empty one";
  EXPECT_EQ(install("d", ""), "0") << "no display name";
  for (const std::string name : {"NAME", "display", "", "a/b", "a\\b", too_long})
    EXPECT_EQ(install(name.c_str(), "new"), "> Open the service '" + name + "' failed!\n-1");
  for (const char* display_name : {"DISPLAY", "name", too_long})
    EXPECT_EQ(install("new", display_name), "> Open the service 'new' failed!\n-1") << display_name;
  EXPECT_EQ(story_of_program({"svcinst", "-u", "-n=nAME"}),
            "Sleep(1000) > The service 'nAME' is stoped!\nSleep(1000) 0");
  EXPECT_EQ(install("Name", "Display"), "0") << "it is gone";
}

TEST_F(Database, WaitsForAnotherProgramsLock) {
  install("a", "b");
  shell(
      "sqlite3 $f 'BEGIN EXCLUSIVE' \".shell touch $f.locked; sleep 2\" 'COMMIT' &"
      "until [ -e $f.locked ]; do sleep 0.01; done");
  EXPECT_EQ(install("c", "d"), "0");
}

// Root has a place of its own when no database is chosen.
TEST_F(Database, LiesWhereTheUserWantsIt) {
  const std::string rows[][4] = {
      // chosen, XDG_STATE_HOME, HOME: where it lies then
      {"a/b.db", "", "", "a/b.db"},
      {":memory:", "", "", ":memory:"},
      {"", folder.path("state"), folder.path(""), "state/svcinst/services.db"},
      {"", "relative", folder.path("home"), "home/.local/state/svcinst/services.db"},
      {"", "", "relative", ""}};
  std::filesystem::permissions(folder.path(""), std::filesystem::perms::all);
  std::filesystem::current_path(folder.path(""));
  const uid_t user = geteuid();
  EXPECT_EQ(seteuid(user == 0 ? 12345 : user), 0);
  umask(0);
  for (const auto& [chosen, state_home, home, file] : rows) {
    setenv("SVCINST_DATABASE", chosen.c_str(), 1);
    setenv("XDG_STATE_HOME", state_home.c_str(), 1);
    setenv("HOME", home.c_str(), 1);
    EXPECT_EQ(install("a", "b"), file.empty() ? "> Open the service manager failed!\n-1" : "0");
    EXPECT_EQ(file_bytes(folder.path(file)).empty(), file.empty()) << file;
  }
  EXPECT_EQ(seteuid(user), 0);
  std::filesystem::current_path("/");
  shell("test \"$(stat -c %a ${f%/*}/a ${f%/*}/home/.local)\" = '755\n755'");
}

// What is left behind, open handles too, the leak check finds at the end. SQLite asks for memory in
// its own way.
TEST_F(Database, LeavesNothingBehindWhenMemoryRunsOutAtAnyRequest) {
  const char* const to_install[] = {"svcinst", "-i", "-n=a", "-b=x", "-d=x", "--dep=y", "--desc=z"};
  const char* const to_uninstall[] = {"svcinst", "-u", "-n=a"};
  int requests = 0;
  for (bool runs_out = true; runs_out; ++requests) {
    std::filesystem::remove(path);
    requests_until_failure = requests + 1;
    try {
      EXPECT_EQ(run_program(7, to_install), 0);
      EXPECT_EQ(run_program(3, to_uninstall), 0);
      EXPECT_EQ(run_program(1, to_uninstall), -1);
      runs_out = false;
    } catch (const std::bad_alloc&) {
    }
    requests_until_failure = 0;
  }
  EXPECT_GT(requests, 400);
}
