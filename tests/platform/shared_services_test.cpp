// What several processes, damaged files and foreign folders do to the service database.
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <vector>

#include "platform/posix/database_path.h"
#include "tests/platform/service_fixture.h"

namespace svcinst {
namespace {

using SharedServices = ServiceFixture;

// Runs `task` as a user who is not root.
bool as_user(const std::function<bool()>& task) {
  return (geteuid() != 0 || setuid(65534) == 0) && task();
}

TEST_F(SharedServices, OtherProcessesKeepAMarkedServiceUntilTheyEnd) {
  int ready[2];
  int go[2];
  ASSERT_EQ(pipe(ready) + pipe(go), 0);
  char byte = 0;
  for (const bool creates : {false, true}) {  // in the place of a marked service that nobody holds
    ASSERT_TRUE(install("svc"));
    if (creates) sql("UPDATE services SET delete_pending = 1");
    const pid_t holder = start([&] {
      SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
      SC_HANDLE held = creates ? create(manager, "SVC") : OpenServiceA(manager, "SVC", DELETE);
      return write(ready[1], "r", 1) == 1 && read(go[0], &byte, 1) == 1 && held != nullptr;
    });
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
    SC_HANDLE service = OpenServiceA(manager, "svc", SERVICE_ALL_ACCESS);
    EXPECT_TRUE(DeleteService(service));
    EXPECT_TRUE(CloseServiceHandle(service));
    service = OpenServiceA(manager, "svc", SERVICE_ALL_ACCESS);
    EXPECT_TRUE(CloseServiceHandle(service));
    EXPECT_FALSE(install("svc"));
    EXPECT_EQ(sql("SELECT delete_pending FROM services"), "1\n");
    EXPECT_EQ(write(go[1], "g", 1), 1);
    EXPECT_TRUE(succeeded(holder));  // it closed nothing
    EXPECT_EQ(OpenServiceA(manager, "svc", SERVICE_ALL_ACCESS), nullptr);
    EXPECT_EQ(sql("SELECT count(*) FROM services"), "0\n");
    EXPECT_TRUE(CloseServiceHandle(manager));
  }
  for (const int file : {ready[0], ready[1], go[0], go[1]}) close(file);
}

TEST_F(SharedServices, InstallersWaitForOneAnother) {
  std::vector<pid_t> children(12);
  for (std::size_t i = 0; i < children.size(); ++i) {
    children[i] = start([i] {
      const bool own = install(("svc" + std::to_string(i)).c_str());
      install("one");  // by one of them
      return own;
    });
  }
  for (const pid_t child : children) EXPECT_TRUE(succeeded(child));
  EXPECT_EQ(sql("SELECT count(*), count(DISTINCT name), total(name = 'one') FROM services"),
            "13|13|1.0\n");
}

TEST_F(SharedServices, KilledInstallerLeavesWholeServices) {
  for (int round = 0; round < 20; ++round) {
    const pid_t child = start([round] {
      for (int i = 0;; ++i) install(("svc" + std::to_string(round * 1000 + i)).c_str());
      return true;
    });
    usleep(static_cast<useconds_t>(2000 + 1500 * round));
    kill(child, SIGKILL);
    EXPECT_FALSE(succeeded(child));
    EXPECT_TRUE(install(("after" + std::to_string(round)).c_str()));
  }
  EXPECT_EQ(sql("PRAGMA integrity_check"), "ok\n");
  EXPECT_EQ(sql("SELECT DISTINCT binary_path, current_state FROM services"), "C:\\x.exe|1\n");
}

TEST_F(SharedServices, DamagedFileNeverCrashes) {
  ASSERT_TRUE(install("svc", "Display"));
  const std::string whole = file_bytes(path);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    if (whole[at] == '\0' || at % 3 != 0) continue;
    std::string damaged = whole;
    damaged[at] = static_cast<char>(~damaged[at]);
    std::ofstream(path, std::ios::binary) << damaged;
    SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
    SC_HANDLE service = OpenServiceA(manager, "svc", SERVICE_ALL_ACCESS);
    DeleteService(service);
    EXPECT_EQ(CloseServiceHandle(service) != FALSE, service != nullptr);
    EXPECT_EQ(CloseServiceHandle(manager) != FALSE, manager != nullptr);
  }
  std::ofstream(path, std::ios::binary) << std::string(5000, 'x');
  EXPECT_FALSE(install("svc"));
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_FALSE(install("svc"));
}

TEST_F(SharedServices, UserWithoutRightsMayOnlyLook) {
  ASSERT_TRUE(install("svc"));
  chmod(directory.path("").c_str(), 0755);
  const std::string folder = directory.path("state");
  const struct { mode_t folder, file; } rows[] = {{0555, 0444}, {0777, 0444}, {0555, 0666}};
  for (const auto& row : rows) {
    chmod(folder.c_str(), row.folder);
    chmod(path.c_str(), row.file);
    EXPECT_TRUE(succeeded(start([] {
      return as_user([] {
        SC_HANDLE reader = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
        return OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS) == nullptr &&
               OpenServiceA(reader, "svc", SERVICE_ALL_ACCESS) == nullptr &&
               OpenServiceA(reader, "svc", SERVICE_QUERY_STATUS) != nullptr;
      });
    }))) << row.folder
         << ' ' << row.file;
  }
  chmod(folder.c_str(), 0755);
}

TEST_F(SharedServices, DatabaseLiesWhereTheUserKeepsState) {
  const struct {
    const char *chosen, *state, *home, *path;
  } rows[] = {{"/a/b.db", "/s", "/h", "/a/b.db"},
              {":memory:", "/s", "/h", "./:memory:"},
              {"", "/s", "/h", "/s/svcinst/services.db"},
              {"", "relative", "/h", "/h/.local/state/svcinst/services.db"},
              {"", "", "/h", "/h/.local/state/svcinst/services.db"},
              {"", "", "", ""}};
  for (const auto& row : rows) {
    EXPECT_TRUE(succeeded(start([&] {
      setenv("SVCINST_DATABASE", row.chosen, 1);
      setenv("XDG_STATE_HOME", row.state, 1);
      setenv("HOME", row.home, 1);
      const bool root_path = geteuid() != 0 || row.chosen[0] != '\0' ||
                             database_path() == "/var/lib/svcinst/services.db";
      return root_path && as_user([&] { return database_path() == row.path; });
    }))) << row.path;
  }
}

}  // namespace
}  // namespace svcinst
