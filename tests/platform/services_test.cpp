// The Service Control Manager's stand-in: what one process sees of it, and several.
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iomanip>
#include <map>
#include <sstream>

#include "platform/posix/database_path.h"
#include "tests/platform/service_fixture.h"

namespace svcinst {
namespace {

DWORD number_of(const std::string& word, DWORD otherwise) {
  return word == "null" ? otherwise : static_cast<DWORD>(std::stoul(word, nullptr, 0));
}

// Plays scripts of steps with semicolons between, "CALL HANDLE ARGUMENT..". What has a '!' in front
// must fail. Handles are letters: m the manager that is asked, others what was opened, or null.
class Services : public ServiceFixture {
 protected:
  Services() { play("manager m"); }
  ~Services() override {
    for (SC_HANDLE handle : opened) CloseServiceHandle(handle);
  }

  void play(const std::string& script) {
    std::istringstream steps(script);
    for (std::string step; std::getline(steps, step, ';');) {
      std::istringstream words(step);
      const bool fails = (words >> std::ws).peek() == '!';
      words.ignore(fails ? 1 : 0);
      EXPECT_EQ(take_step(words) == 0, fails) << step;
    }
  }

  int take_step(std::istream& words) {
    std::string call;
    std::string letter;
    std::string one = "null";  // where there is no such argument
    std::string two = "null";
    std::string three = "null";
    words >> call >> letter >> std::quoted(one) >> std::quoted(two) >> std::quoted(three);
    if (call == "set") return sql("UPDATE services SET " + letter).empty();
    if (call == "left") {  // in the database
      return sql("SELECT name, delete_pending, process_id, service_flags FROM services") ==
             (letter.empty() ? "" : letter + "\n");
    }
    if (call == "user") return geteuid() != 0 || setuid(65534) == 0;
    if (call == "wait") return raise(SIGSTOP) == 0;
    SC_HANDLE& handle = handles[letter];
    auto* const bytes = reinterpret_cast<BYTE*>(record.data());
    auto* const status = reinterpret_cast<SERVICE_STATUS*>(bytes);
    char* const text = one == "null" ? nullptr : one.data();
    SERVICE_DESCRIPTIONA description{text};
    if (call == "close") return CloseServiceHandle(handle);
    if (call == "delete") return DeleteService(handle);
    if (call == "describe") return ChangeServiceConfig2A(handle, number_of(two, 1), &description);
    if (call == "stop") return ControlService(handle, number_of(one, 1), status);
    if (call == "query") {
      return QueryServiceStatusEx(handle, SC_STATUS_PROCESS_INFO, bytes, number_of(one, 36),
                                  &needed);
    }
    if (call == "manager") {
      handle = OpenSCManagerA(nullptr, nullptr, number_of(one, SC_MANAGER_ALL_ACCESS));
    } else if (call == "open") {
      handle = OpenServiceA(handles["m"], text, number_of(two, SERVICE_ALL_ACCESS));
    } else if (call == "create") {
      handle = CreateServiceA(handles["m"], text, two == "null" ? nullptr : two.c_str(),
                              number_of(three, SERVICE_ALL_ACCESS), 0x10, 2, 1, "C:\\\xFF x",
                              nullptr, nullptr, "Tcp\0Afd\0\0(not read)", ".\\user", nullptr);
    } else {
      ADD_FAILURE() << call;
    }
    opened.push_back(handle);
    return handle != nullptr;
  }

  pid_t start_playing(const std::string& script) {
    return start([&] {
      play(script);
      return !HasFailure();
    });
  }

  std::map<std::string, SC_HANDLE> handles;
  std::vector<SC_HANDLE> opened;
  std::array<DWORD, 10> record{};
  DWORD needed = 0;
};

TEST_F(Services, RowHoldsAllThatWasGiven) {
  play("create a svc \"The Service\"; describe a it's");
  handles["b"] = CreateServiceA(handles["m"], "bare", nullptr, 1, 0x20, 3, 0, "", nullptr, nullptr,
                                "", nullptr, nullptr);
  const char* const dump =
      "SELECT name, quote(display_name), service_type, start_type, error_control,"
      " hex(binary_path), hex(dependencies), account, current_state, controls_accepted,"
      " win32_exit_code, service_specific_exit_code, checkpoint, wait_hint, process_id,"
      " service_flags, delete_pending, quote(description) FROM services";
  const std::string bare = "\nbare|NULL|32|3|0||00|LocalSystem|1|0|1077|0|0|0|0|0|0|NULL\n";
  const std::string svc =
      "svc|'The Service'|16|2|1|433A5CFF2078|546370004166640000|.\\user|1|0|1077|0|0|0|0|0|0|";
  EXPECT_EQ(sql(dump), svc + "'it''s'" + bare);
  play("describe a; !describe a x 2");
  EXPECT_FALSE(ChangeServiceConfig2A(handles["a"], SERVICE_CONFIG_DESCRIPTION, nullptr));
  EXPECT_EQ(sql(dump), svc + "'it''s'" + bare);
  play("describe a \"\"; close b");
  EXPECT_EQ(sql(dump), svc + "NULL" + bare);
}

TEST_F(Services, NamesAllowedAndTaken) {
  const std::string most(256, 'n');
  std::string wide;
  for (int i = 0; i < 128; ++i) wide += "\U00010000";  // each counts twice
  play("create a " + most + "; !create a n" + most + "; create a " + wide + "; !create a x" + wide +
       "; !create a d1 " + most + "; create a d2 d" + most.substr(1) + "; !create a d3 d" + most +
       R"(; create a Spooler "Print Queue"; create a ü ""; !create a "" d; !create a a/b;
       !create a a\b; create a d4 any/\thing; !create a spooler d5; !create a d6 "PRINT queue";
       !create a d7 SPOOLER; !create a d8 "print QUEUE"; !create a Ü; create a Spoole;
       create a Spoolers ""; create a own OWN; !create a null d; open a SPOOLER;
       !open a "Print Queue"; !open a null)");
  play("create a \xFF\xFE; create a \xFF\xFD");
}

TEST_F(Services, RightsAskedForAreEnforced) {
  play(
      R"(create a svc null 0x04; set current_state=4; query a; !stop a; !describe a; !delete a; close a;
      open a svc 0x20; !query a; stop a; !describe a; !delete a; close a; set current_state=4;
      open a svc 0x02; !query a; !stop a; describe a; !delete a; close a;
      !open a svc 0x400; !create a new d 0x400; !manager a 0x40; open s svc; open c svc; close c;
      close s; open s svc; !query c; !stop c; !describe c; !delete c; !close c;
      !query 0; !stop 0; !describe 0; !delete 0; !close 0; !query m; !stop m; !describe m; !delete m;
      open a svc 0x10000; !query a; !stop a; !describe a; delete a; close a)");
  for (const char* letter : {"0", "c", "s"}) {
    handles["m"] = handles[letter];
    play("!open a svc; !create a other");
  }
  play("manager m 0xF003D; !create a other");  // all but SC_MANAGER_CREATE_SERVICE
  EXPECT_EQ(OpenSCManagerA("other", nullptr, SC_MANAGER_ALL_ACCESS), nullptr);
  EXPECT_EQ(OpenSCManagerA(nullptr, "other", SC_MANAGER_ALL_ACCESS), nullptr);
}

TEST_F(Services, StatusAndStop) {
  play("create a svc; !query a 35");
  EXPECT_EQ(needed, 36U);
  EXPECT_FALSE(QueryServiceStatusEx(handles["a"], SC_STATUS_PROCESS_INFO, nullptr, 36, &needed));
  using Record = std::array<DWORD, 10>;
  for (DWORD state = SERVICE_STOPPED; state <= SERVICE_PAUSED; ++state) {
    record[9] = 99;
    sql("UPDATE services SET (controls_accepted, win32_exit_code, service_specific_exit_code,"
        " checkpoint, wait_hint, process_id, service_flags, current_state) ="
        " (11, 12, 13, 14, 15, 16, 17, " +
        std::to_string(state) + ")");
    play("query a; set process_id=8,checkpoint=10");
    EXPECT_EQ(record, (Record{0x10, state, 11, 12, 13, 14, 15, 16, 17, 99}));
    const bool stops = state == SERVICE_RUNNING || state == SERVICE_PAUSED;
    play(stops ? "stop a; left svc|0|0|0" : "!stop a; left svc|0|8|17");
    EXPECT_EQ(record, stops ? (Record{0x10, SERVICE_STOPPED, 0, 0, 0, 0, 0, 16, 17, 99})
                            : (Record{0x10, state, 11, 12, 13, 10, 15, 16, 17, 99}));
  }
  play("set current_state=0; !query a; set current_state=8; !query a");
  play("set current_state=4; !stop a 2; set wait_hint=4294967296; !query a");
}

TEST_F(Services, DeletedServiceGoesWithItsLastHandle) {
  play(R"(create a svc Display; open b svc; delete a; query b; !stop b; !describe b x; !delete b;
      !create x SVC; !create x other display; close a; open a svc; close a; left svc|1|0|0; close b;
      left)");
  // Another process has locks of its own.
  EXPECT_TRUE(succeeded(start_playing("close m; manager m; create a svc Display")));
  // It finds the place free of a marked service in whose stead another one was created.
  play(R"(create a one; create b last; close a; close b; set delete_pending=1; create a last;
      close a)");
  EXPECT_TRUE(
      succeeded(start_playing("close m; manager m; !open a svc; !open a one; open a last; delete "
                              "a; close a; left; create a x")));
}

TEST_F(Services, OtherProcessesKeepAMarkedServiceUntilTheyEnd) {
  for (const char* opens : {"open a SVC 0x10000; wait", "create a SVC; wait"}) {
    play("create a svc; close a");
    if (*opens == 'c') play("set delete_pending=1");  // nobody holds it: it makes room
    const pid_t holder = start_playing(std::string("close m; manager m;") + opens);
    EXPECT_EQ(waitpid(holder, nullptr, WUNTRACED), holder);
    play("create b other; delete b; close b; !open b other");
    play("open a svc; delete a; close a; open a svc; !delete a; close a; !create a svc");
    kill(holder, SIGCONT);
    EXPECT_TRUE(succeeded(holder));  // it closed nothing
    play("!open a svc; left");
  }
}

TEST_F(Services, UserWithoutRightsMayOnlyLook) {
  play("create a svc; close a; close m");
  const std::string folder = directory.path("state");
  chmod(directory.path("").c_str(), 0755);
  const mode_t modes[][2] = {{0555, 0444}, {0777, 0444}, {0555, 0666}};
  for (const auto& [folder_mode, file_mode] : modes) {
    EXPECT_EQ(chmod(folder.c_str(), folder_mode) + chmod(path.c_str(), file_mode), 0);
    EXPECT_TRUE(succeeded(
        start_playing("user; !manager a; manager m 1; !open a svc 0x10000; open a svc 0x4")));
  }
  chmod(folder.c_str(), 0755);
  std::ofstream(path) << std::string(5000, 'x');
  play("!manager m");
}

TEST_F(Services, DatabaseLiesWhereTheUserKeepsState) {
  const char* const rows[][4] = {{"/a/b.db", "/s", "/h", "/a/b.db"},
                                 {":memory:", "/s", "/h", "./:memory:"},
                                 {"", "/s", "/h", "/s/svcinst/services.db"},
                                 {"", "relative", "/h", "/h/.local/state/svcinst/services.db"},
                                 {"", "", "", ""}};
  for (const auto& row : rows) {
    EXPECT_TRUE(succeeded(start([&] {
      setenv("SVCINST_DATABASE", row[0], 1);
      setenv("XDG_STATE_HOME", row[1], 1);
      setenv("HOME", row[2], 1);
      const std::string of_root = *row[0] == '\0' ? "/var/lib/svcinst/services.db" : row[3];
      EXPECT_EQ(database_path(), geteuid() == 0 ? of_root : row[3]);
      play("user");
      return database_path() == row[3] && !HasFailure();
    }))) << row[3];
  }
}

}  // namespace
}  // namespace svcinst
