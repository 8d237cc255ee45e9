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

using Lines = std::vector<std::string>;

const ByteString svc_name("svc");

class ServiceOperations : public ::testing::Test {
 protected:
  void SetUp() override { restart(); }
  void TearDown() override { EXPECT_EQ(open_handles(), 0U); }

  static void restart() {
    reset_scripted_services();
    scripted_clock().record_local_time = true;
  }

  // Every call so far, with each message in its place among them: a record reads the time once.
  Lines story() {
    Lines lines = call_log();
    std::string logged = captured_.bytes().substr(seen_);
    seen_ += logged.size();
    for (std::string& line : lines) {
      if (line != "GetLocalTime()") continue;
      const std::string prefix = kPrefix;
      EXPECT_TRUE(logged.starts_with(prefix)) << logged;
      const std::size_t next = std::min(logged.find(prefix, 1), logged.size());
      line = logged.substr(prefix.size(), next - prefix.size());
      logged.erase(0, next);
    }
    EXPECT_EQ(logged, "");
    return lines;
  }

 private:
  CapturedStdout captured_;
  std::size_t seen_ = 0;
};

const std::string kOpenManager = "OpenSCManagerA(null, null, 0xF003F) = manager#1";
const std::string kOpenService = "OpenServiceA(manager#1, \"svc\", 0xF01FF) = service#1";
const std::string kQuery = "QueryServiceStatusEx(service#1, 0, 36)";
const std::string kStop = "ControlService(service#1, 1)";
const std::string kCloseService = "CloseServiceHandle(service#1)";
const std::string kCloseManager = "CloseServiceHandle(manager#1)";

TEST_F(ServiceOperations, InstallPassesEveryValueOn) {
  const ByteString display("Shown");
  const ByteString dependencies(TextView("Tcpip\0\0", 7));
  const ByteString description("what it does");
  EXPECT_TRUE(
      install_service(svc_name, ByteString("C:\\x y.exe"), &display, &dependencies, &description));
  EXPECT_EQ(story(), (Lines{kOpenManager,
                            "CreateServiceA(manager#1, \"svc\", \"Shown\", 0xF01FF, 0x10, 2, 1, "
                            "\"C:\\x y.exe\", null, null, \"Tcpip\\0\\0\", null, null) = service#1",
                            kCloseService, "OpenServiceA(manager#1, \"svc\", 0x2) = service#2",
                            "ChangeServiceConfig2A(service#2, 1, \"what it does\")",
                            "CloseServiceHandle(service#2)", kCloseManager}));
}

TEST_F(ServiceOperations, InstallWithoutExtrasMakesNoDescriptionCall) {
  const ByteString empty;
  EXPECT_TRUE(install_service(empty, empty, nullptr, nullptr, &empty));
  EXPECT_EQ(story(),
            (Lines{kOpenManager,
                   "CreateServiceA(manager#1, \"\", null, 0xF01FF, 0x10, 2, 1, \"\", null, "
                   "null, null, null, null) = service#1",
                   kCloseService, kCloseManager}));
}

TEST_F(ServiceOperations, InstallCutsTheDescription) {
  for (const std::uint64_t length : {1023U, 1024U, 2000U}) {
    restart();
    ByteString description;
    resize(description, length, 'd');
    EXPECT_TRUE(install_service(svc_name, svc_name, nullptr, nullptr, &description));
    EXPECT_EQ(story()[4],
              "ChangeServiceConfig2A(service#2, 1, \"" + std::string(1023, 'd') + "\")");
  }
}

TEST_F(ServiceOperations, InstallReportsTheStepThatFails) {
  const ByteString text("x");
  const std::string create =
      "CreateServiceA(manager#1, \"svc\", null, 0xF01FF, 0x10, 2, 1, \"x\", null, null, null, "
      "null, "
      "null) = ";
  const std::string config_failed = "Config the service 'svc' description failed!\n";
  const struct {
    const char* fails;
    bool installed;
    Lines story;
  } rows[] = {
      {"OpenSCManagerA",
       false,
       {"OpenSCManagerA(null, null, 0xF003F) = null", "Open the service manager failed!\n"}},
      {"CreateServiceA",
       false,
       {kOpenManager, create + "null", kCloseManager, "Open the service 'svc' failed!\n"}},
      {"OpenServiceA",
       true,
       {kOpenManager, create + "service#1", kCloseService,
        "OpenServiceA(manager#1, \"svc\", 0x2) = null",
        "ChangeServiceConfig2A(null, 1, \"x\") = FALSE", config_failed, kCloseManager}},
      {"ChangeServiceConfig2A",
       true,
       {kOpenManager, create + "service#1", kCloseService,
        "OpenServiceA(manager#1, \"svc\", 0x2) = service#2",
        "ChangeServiceConfig2A(service#2, 1, \"x\") = FALSE", config_failed,
        "CloseServiceHandle(service#2)", kCloseManager}},
  };
  for (const auto& row : rows) {
    restart();
    scripted_services().failures = {{row.fails, 0}};
    EXPECT_EQ(install_service(svc_name, text, nullptr, nullptr, &text), row.installed) << row.fails;
    EXPECT_EQ(story(), row.story);
  }
}

TEST_F(ServiceOperations, StopFollowsTheSettledState) {
  const std::string sleep = "Sleep(1000)";
  const Lines close = {kCloseService, kCloseManager};
  const Lines stopped = {kQuery, kQuery, sleep};
  const Lines sent = {kQuery, kQuery, sleep, kStop, kQuery, sleep};
  const Lines refused = {kQuery, kQuery, sleep, kStop + " = FALSE"};
  const std::string failed = kQuery + " = FALSE";
  const struct {
    std::vector<ScriptedStatus> statuses;
    std::pair<std::string, int> failure;
    bool result;
    Lines steps;  // behind the opening of manager and service, without the closing
    const char* message;
  } rows[] = {
      {{{}}, {}, true, stopped, "The service 'svc' is stoped!\n"},
      {{{SERVICE_RUNNING}, {SERVICE_RUNNING}, {SERVICE_STOPPED}},
       {},
       true,
       sent,
       "The service 'svc' stop successful!\n"},
      {{{SERVICE_PAUSED}, {SERVICE_PAUSED}, {SERVICE_STOP_PENDING}, {SERVICE_STOPPED}},
       {},
       true,
       sent,
       "The service 'svc' stop successful!\n"},
      {{{SERVICE_RUNNING}, {SERVICE_RUNNING}, {SERVICE_STOP_PENDING}, {SERVICE_RUNNING}},
       {},
       true,
       sent,
       "The service 'svc' stop failed!\n"},
      {{{SERVICE_PAUSED}}, {}, true, sent, "The service 'svc' stop failed!\n"},
      {{{SERVICE_RUNNING}}, {"ControlService", 0}, false, refused, "The service 'svc' stop failed"},
      {{{SERVICE_PAUSED}},
       {"ControlService", 0},
       false,
       refused,
       "The service 'svc' stop failed!\n"},
      {{{}}, {"QueryServiceStatusEx", 1}, false, {failed}, "Query the service 'svc' failed!\n"},
      {{{}},
       {"QueryServiceStatusEx", 2},
       false,
       {kQuery, failed},
       "Query the service 'svc' failed!\n"},
      {{{SERVICE_RUNNING}},
       {"QueryServiceStatusEx", 3},
       false,
       {kQuery, kQuery, sleep, kStop, failed},
       "Query the service 'svc' failed!\n"},
      {{{SERVICE_START_PENDING}},
       {"QueryServiceStatusEx", 3},
       false,
       {kQuery, kQuery, sleep, sleep, failed},
       "Query the service 'svc' failed!\n"},
  };
  for (const auto& row : rows) {
    restart();
    scripted_services().statuses = row.statuses;
    if (!row.failure.first.empty()) scripted_services().failures = {row.failure};
    EXPECT_EQ(stop_service(svc_name), row.result) << row.message;
    Lines expected = {kOpenManager, kOpenService};
    expected.insert(expected.end(), row.steps.begin(), row.steps.end());
    if (row.result) expected.emplace_back(row.message);
    expected.insert(expected.end(), close.begin(), close.end());
    if (!row.result) expected.emplace_back(row.message);
    EXPECT_EQ(story(), expected);
  }
}

// The wait hint of the record after the control sets the second wait's interval.
TEST_F(ServiceOperations, StopWaitsByTheHintOfTheControl) {
  scripted_services().statuses = {
      {SERVICE_RUNNING}, {SERVICE_RUNNING}, {SERVICE_STOP_PENDING, 0, 30000}, {SERVICE_STOPPED}};
  EXPECT_TRUE(stop_service(svc_name));
  EXPECT_EQ(story()[7], "Sleep(3000)");
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
    restart();
    scripted_clock().tick_count = row.start_tick;
    scripted_services().statuses = row.statuses;
    ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    ServiceHandle service(OpenServiceA(manager.get(), "svc", SERVICE_ALL_ACCESS));
    SERVICE_STATUS_PROCESS status{};
    status.dwCheckPoint = row.known.checkpoint;
    status.dwWaitHint = row.known.wait_hint;
    EXPECT_EQ(wait_service_settled(svc_name, manager, service, status), row.settled);
    EXPECT_EQ(status.dwCurrentState, row.statuses.back().state);
    EXPECT_EQ(static_cast<bool>(service), row.settled);
    EXPECT_EQ(static_cast<bool>(manager), row.settled);
    const std::string sleep = "Sleep(" + std::to_string(row.interval) + ")";
    Lines expected = {kOpenManager, kOpenService, kQuery, sleep};
    for (int query = 1; query < row.queries; ++query) {
      expected.insert(expected.end(), {sleep, kQuery});
    }
    if (!row.settled) {
      expected.insert(expected.end(), {kCloseService, kCloseManager,
                                       "Timeout waiting for the service 'svc' to stop!\n"});
    }
    EXPECT_EQ(story(), expected);
  }
}

TEST_F(ServiceOperations, DeleteWaitsAndReportsTheStepThatFails) {
  const std::string wait = "Sleep(1000)";
  const struct {
    const char* fails;
    bool deleted;
    Lines story;
  } rows[] = {
      {"none",
       true,
       {kOpenManager, kOpenService, kQuery, wait, "DeleteService(service#1)", kCloseService,
        kCloseManager}},
      {"DeleteService",
       false,
       {kOpenManager, kOpenService, kQuery, wait, "DeleteService(service#1) = FALSE", kCloseService,
        kCloseManager, "Delete the service 'svc' failed!\n"}},
      {"QueryServiceStatusEx",
       false,
       {kOpenManager, kOpenService, kQuery + " = FALSE", kCloseService, kCloseManager,
        "Query the service 'svc' failed!\n"}},
      {"OpenServiceA",
       false,
       {kOpenManager, "OpenServiceA(manager#1, \"svc\", 0xF01FF) = null", kCloseManager,
        "Open the service 'svc' failed!\n"}},
      {"OpenSCManagerA",
       false,
       {"OpenSCManagerA(null, null, 0xF003F) = null", "Open the service manager failed!\n"}},
  };
  for (const auto& row : rows) {
    restart();
    scripted_services().failures = {{row.fails, 0}};
    EXPECT_EQ(delete_service(svc_name), row.deleted) << row.fails;
    EXPECT_EQ(story(), row.story);
  }
}

}  // namespace
}  // namespace svcinst
