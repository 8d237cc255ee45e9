// What one process sees of the Service Control Manager's stand-in.
#include <array>

#include "tests/platform/service_fixture.h"

namespace svcinst {
namespace {

class Services : public ServiceFixture {
 protected:
  ~Services() override { CloseServiceHandle(manager); }

  SC_HANDLE open(const char* name, DWORD access = SERVICE_ALL_ACCESS) const {
    return OpenServiceA(manager, name, access);
  }

  SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
};

// Every call on `handle` whose success would mean that it is an open service handle with the right.
struct Calls {
  bool query, control, describe, remove;
};
Calls try_all(SC_HANDLE handle) {
  SERVICE_STATUS_PROCESS status{};
  DWORD needed = 0;
  char text[] = "text";
  SERVICE_DESCRIPTIONA description{text};
  const auto* bytes = reinterpret_cast<BYTE*>(&status);
  return {QueryServiceStatusEx(handle, SC_STATUS_PROCESS_INFO, const_cast<BYTE*>(bytes),
                               sizeof status, &needed) != FALSE,
          ControlService(handle, SERVICE_CONTROL_STOP,
                         reinterpret_cast<SERVICE_STATUS*>(&status)) != FALSE,
          ChangeServiceConfig2A(handle, SERVICE_CONFIG_DESCRIPTION, &description) != FALSE,
          DeleteService(handle) != FALSE};
}

TEST_F(Services, RowHoldsAllThatWasGiven) {
  SC_HANDLE full = CreateServiceA(manager, "svc", "The Service", SERVICE_ALL_ACCESS, 0x10, 2, 1,
                                  "C:\\\xFF\x80 x.exe", nullptr, nullptr,
                                  "Tcpip\0Afd\0\0(not read)", ".\\user", nullptr);
  SC_HANDLE bare = CreateServiceA(manager, "bare", nullptr, 1, 0x20, 3, 0, "", nullptr, nullptr, "",
                                  nullptr, nullptr);
  EXPECT_TRUE(CloseServiceHandle(bare));
  char text[] = "it's \xC3\xA4";
  SERVICE_DESCRIPTIONA description{text};
  EXPECT_TRUE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, &description));
  EXPECT_EQ(
      sql("SELECT quote(name), quote(display_name), service_type, start_type, error_control,"
          " hex(binary_path), quote(dependencies), account, quote(description) FROM services"),
      "'svc'|'The Service'|16|2|1|433A5CFF8020782E657865|X'546370697000416664"
      "0000'|"
      ".\\user|'it''s \xC3\xA4'\n"
      "'bare'|NULL|32|3|0||X'00'|LocalSystem|NULL\n");
  EXPECT_EQ(sql("SELECT current_state, controls_accepted, win32_exit_code,"
                " service_specific_exit_code, checkpoint, wait_hint, process_id, service_flags,"
                " delete_pending FROM services WHERE name = 'svc'"),
            "1|0|1077|0|0|0|0|0|0\n");
  description.lpDescription = nullptr;  // no text: no change
  EXPECT_TRUE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, &description));
  EXPECT_EQ(sql("SELECT count(description) FROM services"), "1\n");
  text[0] = '\0';
  description.lpDescription = text;
  EXPECT_FALSE(ChangeServiceConfig2A(full, 2, &description));
  EXPECT_FALSE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, nullptr));
  EXPECT_TRUE(ChangeServiceConfig2A(full, SERVICE_CONFIG_DESCRIPTION, &description));
  EXPECT_EQ(sql("SELECT count(description) FROM services"), "0\n");
  EXPECT_TRUE(CloseServiceHandle(full));
}

TEST_F(Services, NamesAllowedAndTaken) {
  ASSERT_TRUE(install("Spooler", "Print Queue"));
  ASSERT_TRUE(
      install("\xC3\xBC"
              "ber"));
  ASSERT_TRUE(install("blank", ""));
  const std::string most(256, 'n');
  const std::string most_and_x = most + "x";
  const std::string emoji = "\xF0\x9F\x98\x80";  // two characters
  std::string wide;
  for (int i = 0; i < 128; ++i) wide += emoji;
  const struct {
    std::string name;
    const char* display;
    bool allowed;
  } rows[] = {{"", "d", false},
              {"a/b", nullptr, false},
              {"a\\b", nullptr, false},
              {most, nullptr, true},
              {most + "n", "d1", false},
              {wide, nullptr, true},
              {wide + "x", "d2", false},
              {"long", most.c_str(), false},  // as the name of `most`
              {"d3", most_and_x.c_str(), false},
              {"d4", "any/\\thing", true},
              {"spooler", "d5", false},
              {"PRINT queue", "d6", false},
              {"d7", "SPOOLER", false},
              {"d8", "print QUEUE", false},
              {"\xC3\x9C"
               "BER",
               nullptr, false},
              {"uber", nullptr, true},
              {"Spoole", nullptr, true},
              {"Spoolers", nullptr, true},
              {"own", "OWN", true},
              {"blank2", "", true},
              {"\xFF\xFE", nullptr, true},
              {"\xFF\xFD", nullptr, true}};
  for (const auto& row : rows)
    EXPECT_EQ(install(row.name.c_str(), row.display), row.allowed) << row.name;
  EXPECT_EQ(create(manager, nullptr), nullptr);
  SC_HANDLE found = open("SPOOLER");
  EXPECT_TRUE(CloseServiceHandle(found));
  EXPECT_EQ(open("Print Queue"), nullptr);
  EXPECT_EQ(open(nullptr), nullptr);
}

TEST_F(Services, RightsAskedForAreEnforced) {
  const struct {
    DWORD access;
    Calls allowed;
  } rows[] = {
      {SERVICE_ALL_ACCESS, {true, true, true, true}},
      {SERVICE_QUERY_STATUS, {true, false, false, false}},
      {SERVICE_STOP, {false, true, false, false}},
      {SERVICE_CHANGE_CONFIG, {false, false, true, false}},
      {DELETE, {false, false, false, true}},
      {SERVICE_ALL_ACCESS & ~(SERVICE_QUERY_STATUS | SERVICE_STOP | SERVICE_CHANGE_CONFIG | DELETE),
       {false, false, false, false}}};
  for (const auto& row : rows) {
    SC_HANDLE service = create(manager, "svc", nullptr, SERVICE_ALL_ACCESS);
    sql("UPDATE services SET current_state = 4");
    SC_HANDLE limited = open("svc", row.access);
    const Calls done = try_all(limited);
    EXPECT_EQ(done.query, row.allowed.query) << row.access;
    EXPECT_EQ(done.control, row.allowed.control) << row.access;
    EXPECT_EQ(done.describe, row.allowed.describe) << row.access;
    EXPECT_EQ(done.remove, row.allowed.remove) << row.access;
    DeleteService(service);
    EXPECT_TRUE(CloseServiceHandle(limited));
    EXPECT_TRUE(CloseServiceHandle(service));
  }
  EXPECT_EQ(open("svc", 0x400), nullptr);  // no such right
  SC_HANDLE reader = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS & ~2U);
  EXPECT_EQ(create(reader, "svc"), nullptr);
  EXPECT_EQ(create(manager, "svc", nullptr, 0x400), nullptr);
  EXPECT_TRUE(CloseServiceHandle(reader));
  EXPECT_EQ(OpenSCManagerA(nullptr, nullptr, 0x40), nullptr);
  EXPECT_EQ(OpenSCManagerA("other", nullptr, SC_MANAGER_ALL_ACCESS), nullptr);
  EXPECT_EQ(OpenSCManagerA(nullptr, "other", SC_MANAGER_ALL_ACCESS), nullptr);
}

TEST_F(Services, OnlyOpenHandlesOfTheRightKindAreTaken) {
  SC_HANDLE service = create(manager, "svc");
  SC_HANDLE closed = create(manager, "closed");
  EXPECT_TRUE(CloseServiceHandle(closed));
  SC_HANDLE later = open("closed");  // must not come to life again as another handle
  for (SC_HANDLE handle : {static_cast<SC_HANDLE>(nullptr), closed, manager}) {
    const Calls done = try_all(handle);
    EXPECT_FALSE(done.query || done.control || done.describe || done.remove);
  }
  for (SC_HANDLE handle : {static_cast<SC_HANDLE>(nullptr), closed, service}) {
    EXPECT_EQ(OpenServiceA(handle, "svc", SERVICE_ALL_ACCESS), nullptr);
    EXPECT_EQ(create(handle, "other"), nullptr);
  }
  EXPECT_FALSE(CloseServiceHandle(nullptr));
  EXPECT_FALSE(CloseServiceHandle(closed));
  EXPECT_TRUE(CloseServiceHandle(later));
  EXPECT_TRUE(CloseServiceHandle(service));
}

TEST_F(Services, StatusAndStop) {
  SC_HANDLE service = create(manager, "svc");
  std::array<DWORD, 10> record{};
  auto* bytes = reinterpret_cast<BYTE*>(record.data());
  DWORD needed = 0;
  EXPECT_FALSE(QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, bytes, 35, &needed));
  EXPECT_EQ(needed, 36U);
  EXPECT_FALSE(QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, nullptr, 0, &needed));
  for (DWORD state = 0; state <= 8; ++state) {
    sql("UPDATE services SET current_state = " + std::to_string(state) +
        ", controls_accepted = 11, win32_exit_code = 12, service_specific_exit_code = 13,"
        " checkpoint = 14, wait_hint = 15, process_id = 16, service_flags = 17");
    const bool real = state >= SERVICE_STOPPED && state <= SERVICE_PAUSED;
    const std::array<DWORD, 10> full{0x10, state, 11, 12, 13, 14, 15, 16, 17, 99};
    record = {};
    record[9] = 99;
    const BOOL known = QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, bytes, 36, &needed);
    EXPECT_EQ(known != FALSE, real) << state;
    if (!real) continue;
    EXPECT_EQ(record, full);
    record = {1, 2, 3, 4, 5, 6, 7, 8, 9, 99};
    const BOOL stopped = ControlService(service, 1, reinterpret_cast<SERVICE_STATUS*>(bytes));
    const bool can_stop = state == SERVICE_RUNNING || state == SERVICE_PAUSED;
    EXPECT_EQ(stopped != FALSE, can_stop) << state;
    EXPECT_EQ(record, can_stop
                          ? (std::array<DWORD, 10>{0x10, SERVICE_STOPPED, 0, 0, 0, 0, 0, 8, 9, 99})
                          : (std::array<DWORD, 10>{0x10, state, 11, 12, 13, 14, 15, 8, 9, 99}));
    EXPECT_EQ(sql("SELECT process_id, service_flags FROM services"),
              can_stop ? "0|0\n" : "16|17\n");
  }
  sql("UPDATE services SET current_state = 4, wait_hint = 4294967296");
  EXPECT_FALSE(QueryServiceStatusEx(service, SC_STATUS_PROCESS_INFO, bytes, 36, &needed));
  EXPECT_FALSE(ControlService(service, 2, reinterpret_cast<SERVICE_STATUS*>(bytes)));
  EXPECT_EQ(sql("SELECT current_state FROM services"), "4\n");
  EXPECT_TRUE(CloseServiceHandle(service));
}

TEST_F(Services, DeletedServiceGoesWithItsLastHandle) {
  SC_HANDLE first = create(manager, "svc", "Display");
  SC_HANDLE second = open("svc");
  EXPECT_TRUE(DeleteService(first));
  const Calls done = try_all(second);
  EXPECT_TRUE(done.query);
  EXPECT_FALSE(done.describe || done.remove);
  EXPECT_FALSE(install("SVC") || install("other", "display"));
  SC_HANDLE third = open("svc");
  EXPECT_TRUE(CloseServiceHandle(first));
  EXPECT_TRUE(CloseServiceHandle(third));
  EXPECT_EQ(sql("SELECT name, delete_pending FROM services"), "svc|1\n");
  EXPECT_TRUE(CloseServiceHandle(second));
  EXPECT_EQ(sql("SELECT count(*) FROM services"), "0\n");
  EXPECT_TRUE(install("svc", "Display"));
}

}  // namespace
}  // namespace svcinst
