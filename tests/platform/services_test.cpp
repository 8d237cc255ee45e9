// The Service Control Manager's stand-in: what one process sees of it, and several.
#include <sys/stat.h>

#include <array>
#include <fstream>

#include "platform/posix/database_path.h"
#include "tests/platform/service_fixture.h"

namespace svcinst {
namespace {

SC_HANDLE open_manager(DWORD access = SC_MANAGER_ALL_ACCESS) {
  return OpenSCManagerA(nullptr, nullptr, access);
}

SC_HANDLE create(SC_HANDLE manager, const char* name, const char* display = nullptr,
                 DWORD access = SERVICE_ALL_ACCESS) {
  return CreateServiceA(manager, name, display, access, 0x10, 2, 1, "C:\\x.exe", nullptr, nullptr,
                        nullptr, nullptr, nullptr);
}

// Creates a service and closes its handle. False when that fails.
bool install(const char* name, const char* display = nullptr) {
  SC_HANDLE manager = open_manager();
  const bool installed = CloseServiceHandle(create(manager, name, display)) != FALSE;
  CloseServiceHandle(manager);
  return installed;
}

// Which calls on `handle` succeed: 1 queries, 2 stops, 4 describes, 8 deletes.
int try_all(SC_HANDLE handle) {
  SERVICE_STATUS_PROCESS status{};
  auto* const bytes = reinterpret_cast<BYTE*>(&status);
  DWORD needed = 0;
  char text[] = "text";
  SERVICE_DESCRIPTIONA description{text};
  return QueryServiceStatusEx(handle, SC_STATUS_PROCESS_INFO, bytes, sizeof status, &needed) +
         2 * ControlService(handle, 1, reinterpret_cast<SERVICE_STATUS*>(&status)) +
         4 * ChangeServiceConfig2A(handle, 1, &description) + 8 * DeleteService(handle);
}

// Runs `task` as a user who is not root.
bool as_user(const std::function<bool()>& task) {
  return (geteuid() != 0 || setuid(65534) == 0) && task();
}

class Services : public ServiceFixture {
 protected:
  ~Services() override { CloseServiceHandle(manager); }

  SC_HANDLE open(const char* name, DWORD access = SERVICE_ALL_ACCESS) const {
    return OpenServiceA(manager, name, access);
  }

  SC_HANDLE manager = open_manager();
};

TEST_F(Services, RowHoldsAllThatWasGiven) {
  SC_HANDLE full =
      CreateServiceA(manager, "svc", "The Service", SERVICE_ALL_ACCESS, 0x10, 2, 1, "C:\\\xFF x",
                     nullptr, nullptr, "Tcp\0Afd\0\0(not read)", ".\\user", nullptr);
  EXPECT_TRUE(CloseServiceHandle(CreateServiceA(manager, "bare", nullptr, 1, 0x20, 3, 0, "",
                                                nullptr, nullptr, "", nullptr, nullptr)));
  char text[] = "it's";
  SERVICE_DESCRIPTIONA description{text};
  EXPECT_TRUE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, &description));
  EXPECT_EQ(sql("SELECT name, quote(display_name), service_type, start_type, error_control,"
                " hex(binary_path), hex(dependencies), account, quote(description), current_state,"
                " controls_accepted, win32_exit_code, service_specific_exit_code, checkpoint,"
                " wait_hint, process_id, service_flags, delete_pending FROM services"),
            "svc|'The Service'|16|2|1|433A5CFF2078|5463700041666400"
            "00|.\\user|'it''s'|1|0|1077|0|0|0|0|0|0\n"
            "bare|NULL|32|3|0||00|LocalSystem|NULL|1|0|1077|0|0|0|0|0|0\n");
  description.lpDescription = nullptr;  // no text: no change
  EXPECT_TRUE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, &description));
  description.lpDescription = text + 4;
  EXPECT_FALSE(ChangeServiceConfig2A(full, 2, &description));
  EXPECT_FALSE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, nullptr));
  EXPECT_EQ(sql("SELECT count(description) FROM services"), "1\n");
  EXPECT_TRUE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, &description));
  EXPECT_EQ(sql("SELECT count(description) FROM services"), "0\n");
  EXPECT_TRUE(CloseServiceHandle(full));
}

TEST_F(Services, NamesAllowedAndTaken) {
  const std::string most(256, 'n');
  std::string wide;  // each of these letters counts twice
  for (int i = 0; i < 128; ++i) wide += "\xF0\x9F\x98\x80";
  const struct {
    std::string name, display;
    bool allowed;
  } rows[] = {{"Spooler", "Print Queue", true},
              {"\xC3\xBC", "", true},
              {"", "d", false},
              {"a/b", "", false},
              {"a\\b", "", false},
              {most, "", true},
              {most + "n", "", false},
              {wide, "", true},
              {wide + "x", "", false},
              {"d2", most, false},
              {"d3", most + "x", false},
              {"d4", "any/\\thing", true},
              {"spooler", "d5", false},
              {"PRINT queue", "d6", false},
              {"d7", "SPOOLER", false},
              {"d8", "print QUEUE", false},
              {"\xC3\x9C", "", false},
              {"Spoole", "", true},
              {"Spoolers", "", true},
              {"own", "OWN", true},
              {"\xFF\xFE", "", true},
              {"\xFF\xFD", "", true}};
  for (const auto& row : rows)
    EXPECT_EQ(install(row.name.c_str(), row.display.c_str()), row.allowed) << row.name;
  EXPECT_EQ(create(manager, nullptr), nullptr);
  EXPECT_TRUE(CloseServiceHandle(open("SPOOLER")));
  EXPECT_EQ(open("Print Queue"), nullptr);
  EXPECT_EQ(open(nullptr), nullptr);
}

TEST_F(Services, RightsAskedForAreEnforced) {
  const struct {
    DWORD access;
    int allowed;
  } rows[] = {{SERVICE_ALL_ACCESS, 15},
              {SERVICE_QUERY_STATUS, 1},
              {SERVICE_STOP, 2},
              {SERVICE_CHANGE_CONFIG, 4},
              {DELETE, 8}};
  for (const auto& row : rows) {
    EXPECT_TRUE(install("svc"));
    sql("UPDATE services SET current_state = 4");
    SC_HANDLE limited = open("svc", row.access);
    EXPECT_EQ(try_all(limited), row.allowed);
    SC_HANDLE all = open("svc");
    DeleteService(all);
    EXPECT_TRUE(CloseServiceHandle(limited) && CloseServiceHandle(all));
  }
  SC_HANDLE reader = open_manager(SC_MANAGER_ALL_ACCESS & ~2U);
  EXPECT_EQ(create(reader, "svc"), nullptr);
  EXPECT_TRUE(CloseServiceHandle(reader) && install("svc"));
  EXPECT_EQ(open("svc", 0x400), nullptr);  // no such right
  EXPECT_EQ(create(manager, "new", nullptr, 0x400), nullptr);
  EXPECT_EQ(open_manager(0x40), nullptr);
  EXPECT_EQ(OpenSCManagerA("other", nullptr, SC_MANAGER_ALL_ACCESS), nullptr);
  EXPECT_EQ(OpenSCManagerA(nullptr, "other", SC_MANAGER_ALL_ACCESS), nullptr);
  SC_HANDLE closed = open("svc");
  EXPECT_TRUE(CloseServiceHandle(closed));
  SC_HANDLE service = open("svc");  // must not bring `closed` to life again
  for (SC_HANDLE handle : {SC_HANDLE{}, closed, manager}) EXPECT_EQ(try_all(handle), 0);
  for (SC_HANDLE handle : {SC_HANDLE{}, closed, service}) {
    EXPECT_EQ(OpenServiceA(handle, "svc", SERVICE_ALL_ACCESS), nullptr);
    EXPECT_EQ(create(handle, "other"), nullptr);
  }
  EXPECT_FALSE(CloseServiceHandle(nullptr) || CloseServiceHandle(closed));
  EXPECT_TRUE(CloseServiceHandle(service));
}

TEST_F(Services, StatusAndStop) {
  SC_HANDLE service = create(manager, "svc");
  using Record = std::array<DWORD, 10>;
  Record record{};
  auto* const bytes = reinterpret_cast<BYTE*>(record.data());
  DWORD needed = 0;
  EXPECT_FALSE(QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, bytes, 35, &needed));
  EXPECT_EQ(needed, 36U);
  EXPECT_FALSE(QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, nullptr, 36, &needed));
  for (DWORD state = 0; state <= 8; ++state) {
    sql("UPDATE services SET controls_accepted = 11, win32_exit_code = 12, checkpoint = 14,"
        " service_specific_exit_code = 13, wait_hint = 15, process_id = 16, service_flags = 17,"
        " current_state = " +
        std::to_string(state));
    record = {1, 2, 3, 4, 5, 6, 7, 8, 9, 99};
    const bool known =
        QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, bytes, 36, &needed) != FALSE;
    EXPECT_EQ(known, state >= 1 && state <= 7) << state;
    if (!known) continue;
    EXPECT_EQ(record, (Record{0x10, state, 11, 12, 13, 14, 15, 16, 17, 99}));
    record[7] = 8;
    const BOOL stopped = ControlService(service, 1, reinterpret_cast<SERVICE_STATUS*>(bytes));
    EXPECT_EQ(stopped != FALSE, state == SERVICE_RUNNING || state == SERVICE_PAUSED) << state;
    EXPECT_EQ(record, stopped ? (Record{0x10, SERVICE_STOPPED, 0, 0, 0, 0, 0, 8, 17, 99})
                              : (Record{0x10, state, 11, 12, 13, 14, 15, 8, 17, 99}));
    EXPECT_EQ(sql("SELECT process_id, service_flags FROM services"), stopped ? "0|0\n" : "16|17\n");
  }
  sql("UPDATE services SET current_state = 4, wait_hint = 4294967296");
  EXPECT_EQ(try_all(service) & 1, 0);
  sql("UPDATE services SET current_state = 4");
  EXPECT_FALSE(ControlService(service, 2, reinterpret_cast<SERVICE_STATUS*>(bytes)));
  EXPECT_TRUE(CloseServiceHandle(service));
}

TEST_F(Services, DeletedServiceGoesWithItsLastHandle) {
  SC_HANDLE first = create(manager, "svc", "Display");
  SC_HANDLE second = open("svc");
  EXPECT_TRUE(DeleteService(first));
  EXPECT_EQ(try_all(second), 1);
  EXPECT_FALSE(install("SVC") || install("other", "display"));
  EXPECT_TRUE(CloseServiceHandle(first) && CloseServiceHandle(open("svc")));
  EXPECT_EQ(sql("SELECT name, delete_pending FROM services"), "svc|1\n");
  EXPECT_TRUE(CloseServiceHandle(second));
  EXPECT_EQ(sql("SELECT count(*) FROM services"), "0\n");
  EXPECT_TRUE(succeeded(start([this] {  // with locks of its own
    return CloseServiceHandle(manager) != FALSE && install("svc", "Display");
  })));
}

TEST_F(ServiceFixture, OtherProcessesKeepAMarkedServiceUntilTheyEnd) {
  int ready[2];
  int go[2];
  ASSERT_EQ(pipe(ready) + pipe(go), 0);
  char byte = 0;
  for (const bool creates : {false, true}) {  // in the place of a marked service that nobody holds
    ASSERT_TRUE(install("svc"));
    if (creates) sql("UPDATE services SET delete_pending = 1");
    const pid_t holder = start([&] {
      SC_HANDLE manager = open_manager();
      SC_HANDLE held = creates ? create(manager, "SVC") : OpenServiceA(manager, "SVC", DELETE);
      return write(ready[1], "r", 1) == 1 && read(go[0], &byte, 1) == 1 && held != nullptr;
    });
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    SC_HANDLE manager = open_manager();
    for (const bool first : {true, false}) {
      SC_HANDLE service = OpenServiceA(manager, "svc", SERVICE_ALL_ACCESS);
      EXPECT_EQ(DeleteService(service) != FALSE, first);
      EXPECT_TRUE(CloseServiceHandle(service));
    }
    EXPECT_FALSE(install("svc"));
    EXPECT_EQ(write(go[1], "g", 1), 1);
    EXPECT_TRUE(succeeded(holder));  // it closed nothing
    EXPECT_EQ(OpenServiceA(manager, "svc", SERVICE_ALL_ACCESS), nullptr);
    EXPECT_EQ(sql("SELECT count(*) FROM services"), "0\n");
    EXPECT_TRUE(CloseServiceHandle(manager));
  }
  for (const int file : {ready[0], ready[1], go[0], go[1]}) close(file);
}

TEST_F(ServiceFixture, UserWithoutRightsMayOnlyLook) {
  ASSERT_TRUE(install("svc"));
  const std::string folder = directory.path("state");
  chmod(directory.path("").c_str(), 0755);
  const struct { mode_t folder, file; } rows[] = {{0555, 0444}, {0777, 0444}, {0555, 0666}};
  for (const auto& row : rows) {
    EXPECT_EQ(chmod(folder.c_str(), row.folder) + chmod(path.c_str(), row.file), 0);
    EXPECT_TRUE(succeeded(start([] {
      return as_user([] {
        SC_HANDLE reader = open_manager(SC_MANAGER_CONNECT);
        return open_manager() == nullptr && OpenServiceA(reader, "svc", DELETE) == nullptr &&
               OpenServiceA(reader, "svc", SERVICE_QUERY_STATUS) != nullptr;
      });
    }))) << row.folder
         << ' ' << row.file;
  }
  chmod(folder.c_str(), 0755);
  std::ofstream(path) << std::string(5000, 'x');
  EXPECT_FALSE(install("svc"));
}

TEST_F(ServiceFixture, DatabaseLiesWhereTheUserKeepsState) {
  const struct {
    const char *chosen, *state, *home, *path;
  } rows[] = {{"/a/b.db", "/s", "/h", "/a/b.db"},
              {":memory:", "/s", "/h", "./:memory:"},
              {"", "/s", "/h", "/s/svcinst/services.db"},
              {"", "relative", "/h", "/h/.local/state/svcinst/services.db"},
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
