#include "app/service_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "tests/support/capture.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

const ByteString svc("svc");

// How a story abbreviates a call; one that fails keeps its result.
const std::pair<std::string, std::string> short_names[] = {
    {"OpenSCManagerA(null, null, 0xF003F)", "M"},
    {"OpenServiceA(manager#1, \"svc\", 0xF01FF)", "S"},
    {"CreateServiceA(manager#1, \"svc\", \"Shown\", 0xF01FF, 0x10, 2, 1, \"C:\\x y\", null, null, "
     "\"Tcpip\\0\\0\", null, null)",
     "create"},
    {"OpenServiceA(manager#1, \"svc\", 0x2)", "reopen"},
    {"ChangeServiceConfig2A(service#2, 1, \"text\")", "describe"},
    {"CloseServiceHandle(service#1)", "s"},
    {"CloseServiceHandle(service#2)", "s2"},
    {"CloseServiceHandle(manager#1)", "m"},
    {"QueryServiceStatusEx(service#1, 0, 36)", "query"},
    {"ControlService(service#1, 1)", "stop"},
    {"DeleteService(service#1)", "delete"},
    {" = manager#1", ""},
    {" = service#1", ""},
    {" = service#2", ""},
    {"\n", "$"}};

// Statuses as words, a letter for the state (stopped, begins, ends, Running, continues, pauses,
// Paused), then "checkpoint/wait hint".
std::vector<ScriptedStatus> statuses(const std::string& notation) {
  std::vector<ScriptedStatus> all;
  std::istringstream words(notation);
  for (std::string word; words >> word;) {
    char* end = nullptr;
    const auto state = static_cast<DWORD>(std::string("0sbeRcpP8").find(word[0]));
    const auto checkpoint = static_cast<DWORD>(std::strtoul(word.c_str() + 1, &end, 10));
    const auto hint = static_cast<DWORD>(*end == '/' ? std::strtoul(end + 1, nullptr, 10) : 0);
    all.push_back({state, checkpoint, hint});
  }
  return all;
}

bool install(std::uint64_t description_length = 4) {
  const ByteString display("Shown");
  const ByteString dependencies(TextView("Tcpip\0\0", 7));
  ByteString description("text");
  resize(description, description_length, 'd');
  return install_service(svc, ByteString("C:\\x y"), &display, &dependencies, &description);
}

class ServiceOperations : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(open_handles(), 0U); }

  // The tick count begins again at 0 soon.
  static void restart(const std::string& notation, int failing_call = 0) {
    reset_scripted_services();
    scripted_clock().tick_count = 0xFFFFFF00;
    scripted_clock().record_local_time = true;
    scripted_services().statuses = statuses(notation);
    scripted_services().failing_call = failing_call;
  }

  // Every call so far, abbreviated, with each message in its place: a record reads the time once.
  std::string story() {
    const std::string prefix = "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ";
    std::string logged = captured_.bytes().substr(seen_);
    seen_ += logged.size();
    std::string all;
    for (std::string line : call_log()) {
      if (line == "GetLocalTime()") {
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

TEST_F(ServiceOperations, TellWhatFails) {
  const auto stop = [] { return stop_service(svc); };
  const auto remove = [] { return delete_service(svc); };
  const auto add = [] { return install(); };
  const std::string settle = "M S query query Sleep(1000)";
  const std::string sent = settle + " stop query Sleep(1000)";
  const std::string no_manager = "M = null <Open the service manager failed!$>";
  const std::string no_service = " = null m <Open the service 'svc' failed!$>";
  const std::string no_query = " = FALSE s m <Query the service 'svc' failed!$>";
  const std::string unset = " = FALSE <Config the service 'svc' description failed!$>";
  const std::string stopped = sent + " <The service 'svc' stop successful!$> s m";
  const std::string failed = " <The service 'svc' stop failed!$> s m";
  const struct {
    bool (*operation)();
    const char* statuses;
    int failing_call;
    bool result;
    std::string story;
  } rows[] = {
      {add, "s", 0, true, "M create s reopen describe s2 m"},
      {add, "s", 1, false, no_manager},
      {add, "s", 2, false, "M create" + no_service},
      {add, "s", 4, true,
       "M create s reopen = null ChangeServiceConfig2A(null, 1, \"text\")" + unset + " m"},
      {add, "s", 5, true, "M create s reopen describe" + unset + " s2 m"},
      {stop, "s", 0, true, settle + " <The service 'svc' is stoped!$> s m"},
      {stop, "R R s", 0, true, stopped},
      {stop, "P P e s", 0, true, stopped},
      {stop, "R R e R", 0, true, sent + failed},
      {stop, "P", 0, true, sent + failed},
      // The record that the control refreshed sets the second wait's interval.
      {stop, "R R e0/30000 R", 0, true, settle + " stop query Sleep(3000)" + failed},
      {stop, "s", 1, false, no_manager},
      {stop, "s", 2, false, "M S" + no_service},
      {stop, "s", 3, false, "M S query" + no_query},
      {stop, "s", 4, false, "M S query query" + no_query},
      {stop, "R", 5, false, settle + " stop = FALSE s m <The service 'svc' stop failed>"},
      {stop, "P", 5, false, settle + " stop = FALSE s m <The service 'svc' stop failed!$>"},
      {stop, "R", 6, false, settle + " stop query" + no_query},
      {stop, "e", 5, false, settle + " Sleep(1000) query" + no_query},
      {remove, "s", 0, true, "M S query Sleep(1000) delete s m"},
      {remove, "s", 3, false, "M S query" + no_query},
      {remove, "s", 4, false,
       "M S query Sleep(1000) delete = FALSE s m <Delete the service 'svc' failed!$>"},
  };
  for (const auto& row : rows) {
    restart(row.statuses, row.failing_call);
    EXPECT_EQ(row.operation(), row.result) << row.story;
    EXPECT_EQ(story(), row.story);
  }
}

TEST_F(ServiceOperations, InstallCutsTheDescription) {
  for (const std::uint64_t length : {1022U, 1023U, 1024U, 2000U}) {
    restart("s");
    EXPECT_TRUE(install(length));
    const std::string cut = "text" + std::string(std::min<std::size_t>(length, 1023) - 4, 'd');
    EXPECT_TRUE(story().ends_with("(service#2, 1, \"" + cut + "\") s2 m"));
  }
}

TEST_F(ServiceOperations, WaitPollsByTheFirstHintAndTimesOutByTheLatest) {
  const struct {
    const char* known;  // the caller's record on entry
    const char* statuses;
    bool settled;
    DWORD interval;
    int polls;
  } rows[] = {
      {"e0/9999", "R", true, 1000, 0},
      {"e0/10010", "P", true, 1001, 0},
      {"e0/99999", "P", true, 9999, 0},
      {"e0/200000", "s", true, 10000, 0},
      // Time runs out before the state is looked at.
      {"s", "e s0/2000", true, 1000, 1},
      {"s", "e s0/1999", false, 1000, 1},
      {"s", "e e0/2000", false, 1000, 2},
      // A checkpoint that moves on puts the time-out off.
      {"s", "e1 e1 e2 e2", false, 1000, 3},
      {"e5", "e5 e5", false, 1000, 1},
      {"e5", "e4 e6 e6/2999", false, 1000, 2},
      {"s", "b c1 p2 03 84 s5", true, 1000, 5},
  };
  for (const auto& row : rows) {
    restart(row.statuses);
    ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    ServiceHandle service(OpenServiceA(manager.get(), "svc", SERVICE_ALL_ACCESS));
    SERVICE_STATUS_PROCESS status{};
    status.dwCheckPoint = statuses(row.known)[0].checkpoint;
    status.dwWaitHint = statuses(row.known)[0].wait_hint;
    EXPECT_EQ(wait_service_settled(svc, manager, service, status), row.settled);
    EXPECT_EQ(status.dwCurrentState, statuses(row.statuses).back().state);
    EXPECT_EQ(static_cast<bool>(service), row.settled);
    EXPECT_EQ(static_cast<bool>(manager), row.settled);
    const std::string sleep = " Sleep(" + std::to_string(row.interval) + ")";
    std::string expected = "M S query" + sleep;
    for (int poll = 0; poll < row.polls; ++poll) expected += sleep + " query";
    if (!row.settled) expected += " s m <Timeout waiting for the service 'svc' to stop!$>";
    EXPECT_EQ(story(), expected);
  }
}

}  // namespace
}  // namespace svcinst
