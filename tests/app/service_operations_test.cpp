#include "app/service_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/capture.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

constexpr const char* kPrefix = "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ";

const ByteString svc_name("svc");

// The calls that a story abbreviates, M and S for opening the manager and the service svc, m and s
// for closing them; a call that fails keeps its result.
const std::pair<std::string, std::string> short_names[] = {
    {"OpenSCManagerA(null, null, 0xF003F)", "M"},
    {"OpenServiceA(manager#1, \"svc\", 0xF01FF)", "S"},
    {"CloseServiceHandle(service#1)", "s"},
    {"CloseServiceHandle(service#2)", "s2"},
    {"CloseServiceHandle(manager#1)", "m"},
    {"QueryServiceStatusEx(service#1, 0, 36)", "query"},
    {"ControlService(service#1, 1)", "stop"},
    {"DeleteService(service#1)", "delete"},
    {" = manager#1", ""},
    {" = service#1", ""},
    {" = service#2", ""},
    {"Sleep", "sleep"},
};

class ServiceOperations : public ::testing::Test {
 protected:
  void SetUp() override { restart(); }
  void TearDown() override { EXPECT_EQ(open_handles(), 0U); }

  static void restart(const std::vector<ScriptedStatus>& statuses = {{}},
                      const std::pair<std::string, int>& failure = {"none", 0}) {
    reset_scripted_services();
    scripted_clock().record_local_time = true;
    scripted_services().statuses = statuses;
    scripted_services().failures = {failure};
  }

  // Every call so far, abbreviated, with each message in its place: a record reads the time once.
  std::string story() {
    std::string logged = captured_.bytes().substr(seen_);
    seen_ += logged.size();
    std::string all;
    for (std::string line : call_log()) {
      if (line == "GetLocalTime()") {
        const std::string prefix = kPrefix;
        EXPECT_TRUE(logged.starts_with(prefix)) << logged;
        const std::size_t next = std::min(logged.find(prefix, 1), logged.size());
        line = "<" + logged.substr(prefix.size(), next - prefix.size()) + ">";
        logged.erase(0, next);
      }
      for (const auto& [call, name] : short_names) {
        const std::size_t at = line.find(call);
        if (at != std::string::npos) line.replace(at, call.size(), name);
      }
      all += (all.empty() ? "" : " ") + line;
    }
    EXPECT_EQ(logged, "");
    return all;
  }

 private:
  CapturedStdout captured_;
  std::size_t seen_ = 0;
};

TEST_F(ServiceOperations, InstallPassesEveryValueOn) {
  const ByteString display("Shown");
  const ByteString dependencies(TextView("Tcpip\0\0", 7));
  const ByteString description("what it does");
  EXPECT_TRUE(
      install_service(svc_name, ByteString("C:\\x y.exe"), &display, &dependencies, &description));
  EXPECT_EQ(story(),
            "M CreateServiceA(manager#1, \"svc\", \"Shown\", 0xF01FF, 0x10, 2, 1, \"C:\\x y.exe\", "
            "null, null, \"Tcpip\\0\\0\", null, null) s OpenServiceA(manager#1, \"svc\", 0x2) "
            "ChangeServiceConfig2A(service#2, 1, \"what it does\") s2 m");
}

TEST_F(ServiceOperations, InstallWithoutExtrasMakesNoDescriptionCall) {
  const ByteString empty;
  EXPECT_TRUE(install_service(empty, empty, nullptr, nullptr, &empty));
  EXPECT_EQ(story(),
            "M CreateServiceA(manager#1, \"\", null, 0xF01FF, 0x10, 2, 1, \"\", null, null, null, "
            "null, null) s m");
}

TEST_F(ServiceOperations, InstallCutsTheDescription) {
  for (const std::uint64_t length : {1023U, 1024U, 2000U}) {
    restart();
    ByteString description;
    resize(description, length, 'd');
    EXPECT_TRUE(install_service(svc_name, svc_name, nullptr, nullptr, &description));
    EXPECT_TRUE(story().ends_with("(service#2, 1, \"" + std::string(1023, 'd') + "\") s2 m"));
  }
}

TEST_F(ServiceOperations, InstallReportsTheStepThatFails) {
  const ByteString text("x");
  const std::string create =
      "CreateServiceA(manager#1, \"svc\", null, 0xF01FF, 0x10, 2, 1, \"x\", null, null, null, "
      "null, "
      "null)";
  const std::string reopen = " s OpenServiceA(manager#1, \"svc\", 0x2)";
  const std::string config_failed = " <Config the service 'svc' description failed!\n>";
  const struct {
    const char* fails;
    bool installed;
    std::string story;
  } rows[] = {
      {"OpenSCManagerA", false, "M = null <Open the service manager failed!\n>"},
      {"CreateServiceA", false, "M " + create + " = null m <Open the service 'svc' failed!\n>"},
      {"OpenServiceA", true,
       "M " + create + reopen + " = null ChangeServiceConfig2A(null, 1, \"x\") = FALSE" +
           config_failed + " m"},
      {"ChangeServiceConfig2A", true,
       "M " + create + reopen + " ChangeServiceConfig2A(service#2, 1, \"x\") = FALSE" +
           config_failed + " s2 m"},
  };
  for (const auto& row : rows) {
    restart({{}}, {row.fails, 0});
    EXPECT_EQ(install_service(svc_name, text, nullptr, nullptr, &text), row.installed) << row.fails;
    EXPECT_EQ(story(), row.story);
  }
}

TEST_F(ServiceOperations, StopFollowsTheSettledState) {
  constexpr ScriptedStatus kStopped{SERVICE_STOPPED};
  constexpr ScriptedStatus kRunning{SERVICE_RUNNING};
  constexpr ScriptedStatus kPaused{SERVICE_PAUSED};
  constexpr ScriptedStatus kPending{SERVICE_STOP_PENDING};
  constexpr ScriptedStatus kSlow{SERVICE_STOP_PENDING, 0, 30000};
  const std::string settle = "M S query query sleep(1000)";
  const std::string sent = settle + " stop query sleep(1000)";
  const std::string successful = " <The service 'svc' stop successful!\n> s m";
  const std::string failed = " <The service 'svc' stop failed!\n> s m";
  const std::string no_query = " = FALSE s m <Query the service 'svc' failed!\n>";
  const struct {
    std::vector<ScriptedStatus> statuses;
    std::pair<std::string, int> failure;
    bool result;
    std::string story;
  } rows[] = {
      {{kStopped}, {}, true, settle + " <The service 'svc' is stoped!\n> s m"},
      {{kRunning, kRunning, kStopped}, {}, true, sent + successful},
      {{kPaused, kPaused, kPending, kStopped}, {}, true, sent + successful},
      {{kRunning, kRunning, kPending, kRunning}, {}, true, sent + failed},
      {{kPaused}, {}, true, sent + failed},
      // The record that the control refreshed sets the second wait's interval.
      {{kRunning, kRunning, kSlow, kStopped},
       {},
       true,
       settle + " stop query sleep(3000)" + successful},
      {{kRunning},
       {"ControlService", 0},
       false,
       settle + " stop = FALSE s m <The service 'svc' stop failed>"},
      {{kPaused},
       {"ControlService", 0},
       false,
       settle + " stop = FALSE s m <The service 'svc' stop failed!\n>"},
      {{kStopped}, {"QueryServiceStatusEx", 1}, false, "M S query" + no_query},
      {{kStopped}, {"QueryServiceStatusEx", 2}, false, "M S query query" + no_query},
      {{kRunning}, {"QueryServiceStatusEx", 3}, false, settle + " stop query" + no_query},
      {{kPending}, {"QueryServiceStatusEx", 3}, false, settle + " sleep(1000) query" + no_query},
  };
  for (const auto& row : rows) {
    restart(row.statuses, row.failure.first.empty() ? std::pair("none", 0) : row.failure);
    EXPECT_EQ(stop_service(svc_name), row.result) << row.story;
    EXPECT_EQ(story(), row.story);
  }
}

TEST_F(ServiceOperations, WaitPollsByTheFirstHintAndTimesOutByTheLatest) {
  constexpr DWORD kPending = SERVICE_STOP_PENDING;
  const struct {
    ScriptedStatus known;  // the caller's record on entry
    std::vector<ScriptedStatus> statuses;
    bool settled;
    DWORD interval;
    int queries;
    DWORD start_tick = 0;
  } rows[] = {
      {{kPending, 0, 0}, {{SERVICE_STOPPED}}, true, 1000, 1},
      {{kPending, 0, 9999}, {{SERVICE_RUNNING}}, true, 1000, 1},
      {{kPending, 0, 10010}, {{SERVICE_PAUSED}}, true, 1001, 1},
      {{kPending, 0, 99999}, {{SERVICE_PAUSED}}, true, 9999, 1},
      {{kPending, 0, 200000}, {{SERVICE_STOPPED}}, true, 10000, 1},
      // Time runs out before the state is looked at.
      {{}, {{kPending}, {SERVICE_STOPPED, 0, 2000}}, true, 1000, 2},
      {{}, {{kPending}, {SERVICE_STOPPED, 0, 1999}}, false, 1000, 2},
      {{}, {{kPending}, {kPending, 0, 2000}}, false, 1000, 3},
      // A checkpoint that moves on puts the time-out off.
      {{}, {{kPending, 1}, {kPending, 1}, {kPending, 2}, {kPending, 2}}, false, 1000, 4},
      {{kPending, 5}, {{kPending, 5}, {kPending, 5}}, false, 1000, 2},
      {{kPending, 5}, {{kPending, 4}, {kPending, 6}, {kPending, 6, 2999}}, false, 1000, 3},
      {{},
       {{SERVICE_START_PENDING},
        {SERVICE_CONTINUE_PENDING, 1},
        {SERVICE_PAUSE_PENDING, 2},
        {0, 3},
        {8, 4},
        {SERVICE_STOPPED, 5}},
       true,
       1000,
       6},
      // The tick count begins again at 0 during the wait.
      {{}, {{kPending}, {kPending, 0, 2500}}, false, 1000, 3, 0xFFFFFF00},
  };
  for (const auto& row : rows) {
    restart(row.statuses);
    scripted_clock().tick_count = row.start_tick;
    ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    ServiceHandle service(OpenServiceA(manager.get(), "svc", SERVICE_ALL_ACCESS));
    SERVICE_STATUS_PROCESS status{};
    status.dwCheckPoint = row.known.checkpoint;
    status.dwWaitHint = row.known.wait_hint;
    EXPECT_EQ(wait_service_settled(svc_name, manager, service, status), row.settled);
    EXPECT_EQ(status.dwCurrentState, row.statuses.back().state);
    EXPECT_EQ(static_cast<bool>(service), row.settled);
    EXPECT_EQ(static_cast<bool>(manager), row.settled);
    const std::string sleep = " sleep(" + std::to_string(row.interval) + ")";
    std::string expected = "M S query" + sleep;
    for (int query = 1; query < row.queries; ++query) expected += sleep + " query";
    if (!row.settled) expected += " s m <Timeout waiting for the service 'svc' to stop!\n>";
    EXPECT_EQ(story(), expected);
  }
}

TEST_F(ServiceOperations, DeleteWaitsAndReportsTheStepThatFails) {
  const struct {
    const char* fails;
    const char* story;
  } rows[] = {
      {"none", "M S query sleep(1000) delete s m"},
      {"DeleteService",
       "M S query sleep(1000) delete = FALSE s m <Delete the service 'svc' failed!\n>"},
      {"QueryServiceStatusEx", "M S query = FALSE s m <Query the service 'svc' failed!\n>"},
      {"OpenServiceA", "M S = null m <Open the service 'svc' failed!\n>"},
      {"OpenSCManagerA", "M = null <Open the service manager failed!\n>"},
  };
  for (const auto& row : rows) {
    restart({{}}, {row.fails, 0});
    EXPECT_EQ(delete_service(svc_name), std::string(row.fails) == "none") << row.fails;
    EXPECT_EQ(story(), row.story);
  }
}

}  // namespace
}  // namespace svcinst
