// Command lines, and the story of what each does: the calls of the Service Control Manager, the
// waits and the messages between them.
#include "app/program.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "app/service_operations.h"
#include "tests/support/capture.h"
#include "tests/support/check_cases.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

const std::string record_prefix = "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ";

// How a story shortens the calls, in this order. Which handle a call uses shows in its result: one
// that is not open makes it fail.
const std::pair<std::string, std::string> short_forms[] = {
    {"OpenSCManagerA(null, null, 0xF003F) = manager", "M"},
    {"CreateServiceA(manager, ", "C("},
    {", 0xF01FF, 0x10, 0x2, 0x1, ", ", "},
    {", null, null) = service", ")"},
    {", null, null, ", ", "},
    {"OpenServiceA(manager, ", "S("},
    {", 0xF01FF) = service", ")"},
    {"S(\"svc\")", "S"},
    {"ChangeServiceConfig2A(service, 0x1, ", "describe("},
    {"QueryServiceStatusEx(service, 0x0, 0x24)", "q"},
    {"ControlService(service, 0x1)", "stop"},
    {"DeleteService(service)", "delete"},
    {"CloseServiceHandle(service)", "s"},
    {"CloseServiceHandle(manager)", "m"},
    {"Sleep(1000)", "wait"},
    {"M S q wait delete s m", "deleted"},
    {"M S q q wait <The service 'svc' is stoped!\n> s m", "idle"},
    {"\n", "$"}};

// Statuses as words, a letter for the state (stopped, begins, ends, Running, continues, pauses,
// Paused), then "checkpoint/wait hint".
std::vector<ScriptedStatus> statuses(const std::string& notation) {
  std::vector<ScriptedStatus> all;
  std::istringstream words(notation);
  for (std::string word; words >> word;) {
    const auto state = static_cast<DWORD>(std::string("0sbeRcpP8").find(word[0]));
    const std::size_t slash = word.find('/');
    all.push_back(
        {state, static_cast<DWORD>(std::atoi(word.c_str() + 1)),
         slash < word.size() ? static_cast<DWORD>(std::stoul(word.substr(slash + 1))) : 0});
  }
  return all;
}

// Begins a script; the tick count begins again at 0 soon.
void restart(const std::string& notation, int failing_call = 0) {
  reset_scripted_services();
  scripted_clock().tick_count = 0xFFFFFF00;
  scripted_services().statuses = statuses(notation);
  scripted_services().failing_call = failing_call;
}

// The result of `run`, what it printed before its first call, then every call, with each message in
// its place, since a record reads the time once.
std::string story_of(const std::function<int()>& run) {
  std::string all;
  std::string printed;
  {
    const CapturedStdout captured;
    all = std::to_string(run());
    printed = captured.bytes();
  }
  const std::size_t help = printed.find("install/uninstall a executable");
  if (help < printed.size()) printed.replace(help, printed.size(), "HELP");
  const std::size_t first_record = std::min(printed.find(record_prefix), printed.size());
  all += printed.substr(0, first_record);
  printed.erase(0, first_record);
  for (const std::string& line : call_log()) {
    const bool is_record = line == "GetLocalTime()";
    const std::size_t end = std::min(printed.find(record_prefix, 1), printed.size());
    all += ' ' + (is_record
                      ? '<' + printed.substr(record_prefix.size(), end - record_prefix.size()) + '>'
                      : line);
    if (is_record) printed.erase(0, end);
  }
  for (const auto& [call, name] : short_forms) {
    for (std::size_t at = 0; (at = all.find(call, at)) != std::string::npos; at += name.size())
      all.replace(at, call.size(), name);
  }
  EXPECT_EQ(printed, "");
  EXPECT_EQ(open_handles(), 0U);
  return all;
}

// The story of the program run with arguments that `|` parts.
std::string outcome(std::string arguments) {
  std::vector<const char*> argv = {arguments.c_str()};
  for (char& c : arguments) {
    if (c != '|') continue;
    c = '\0';
    argv.push_back(&c + 1);
  }
  return story_of([&] { return run_program(static_cast<int>(argv.size()), argv.data()); });
}

// "arguments behind the program's name -> outcome", or the name too; ~ is a byte that is no text.
TEST(Program, ReadsTheCommandLine) {
  const auto outcome_of = [](std::string arguments) {
    const bool named = !arguments.empty() && arguments[0] != '|';
    if (!named) arguments.insert(0, R"(D:\tools\inst.exe)");
    std::replace(arguments.begin(), arguments.end(), '~', '\xff');
    restart("s");
    std::string told = outcome(arguments);
    std::replace(told.begin(), told.end(), '\xff', '~');
    return told;
  };
  check_cases(R"( -> -1 <HELP>
|--install -> -1 <HELP>
|-i|--name|a|--binpath|b -> -1 <HELP>
|-i|--name|a|-d|b -> -1 <HELP>
|-i|-b|a|--disname|b -> -1 <HELP>
|--uninstall -> -1 <HELP>
|--name|a -> -1 <HELP>
|install -> -1error at position: 1$ <HELP>
|--install|-|x -> -1 <HELP>
|-- -> -1error at position: 3$ <HELP>
|--install|--name|a|--binpath|C:\x|--disname|A b -> 0 M C("a", "A b", "C:\x", null) s m
|-i|-n|a|-b|C:\P F\x|-d|D|--dep|Tcpip|-t|x -> 0 M C("a", "D", "C:\P F\x", "Tcpip\0\0") s m
|--i|--name=a|-bC:/x.exe|-d=D|-t -> 0 M C("a", "D", "C:/x.exe", null) s m
|-u|-i|--name|a|-n|b|-b|C:\|-d|x -> 0 M C("b", "x", "C:\", null) s m
|-i|--name|a|--name|b|-b|C:\|-d|x -> 0 M C("a", "x", "C:\", null) s m
|-i|-n|'a b'|-b|C:\|-d|"q" -> 0 M C("'a b'", "q", "C:\", null) s m
|-i|-n|-b|-d -> 0 M C("", null, "D:\tools\", null) s m
|-i|-n||x|-b|s|-d|""|--dep|"" -> 0 M C("", "", "D:\tools\s", "\0") s m
|-i|-n|a|-b|\|-d|x|--desc|"" -> 0 M C("a", "x", "D:\tools\\", null) s m
|-i|-n|a|-b|C:s|-d|x -> 0 M C("a", "x", "D:\tools\C:s", null) s m
|-i|-n|svc|-b|C:\|-d|x|--desc|it -> 0 M C("svc", "x", "C:\", null) s S("svc", 0x2) = service describe("it") s m
inst.exe|-i|-n|a|-b|s|-d|x -> 0 M C("a", "x", "\s", null) s m
D:\inst.exe|-i|-n|a|-b|s|-d|x -> 0 M C("a", "x", "D:\\s", null) s m
b/i|-i|-n|a|-b|s|-d|x -> 0 M C("a", "x", "b\s", null) s m
é/i|-i|-n|a|-b|ö|-d|x -> 0 M C("a", "x", "é\ö", null) s m
|-i|-n|a|-b|C:\~|-d|x -> -1 <The path 'C:\~' is not valid text in the code page for file names (65001)!$>
~/i|-i|-n|a|-b|C:\x|-d|x -> -1 <The path '~/i' is not valid text in the code page for file names (65001)!$>
~/i|-u|-n|a -> -1 <The path '~/i' is not valid text in the code page for file names (65001)!$>
~/i -> -1 <The path '~/i' is not valid text in the code page for file names (65001)!$>
|--uninstall|--name|x|-n|svc -> 0 idle deleted
|-u|--name="svc"|-ns v -> 0 idle deleted)",
              outcome_of, "\n");
}

// "statuses#number of the call that fails -> whether stop_service succeeds, outcome" of removing a
// service; the outcome of installing one where there are no statuses.
TEST(Program, TellsWhatTheServiceDidAndWhatFailed) {
  check_cases(R"(s#0 -> 1 0 idle deleted
R R s#0 -> 1 0 M S q q wait stop q wait <The service 'svc' stop successful!$> s m deleted
P P e s#0 -> 1 0 M S q q wait stop q wait <The service 'svc' stop successful!$> s m deleted
R R e R#0 -> 1 0 M S q q wait stop q wait <The service 'svc' stop failed!$> s m deleted
P#0 -> 1 0 M S q q wait stop q wait <The service 'svc' stop failed!$> s m deleted
R R e0/30000 R#0 -> 1 0 M S q q wait stop q Sleep(3000) <The service 'svc' stop failed!$> s m deleted
s#1 -> 0 0 OpenSCManagerA(null, null, 0xF003F) = null <Open the service manager failed!$> deleted
s#2 -> 0 0 M S("svc", 0xF01FF) = null m <Open the service 'svc' failed!$> deleted
s#3 -> 0 0 M S q = FALSE s m <Query the service 'svc' failed!$> deleted
s#4 -> 0 0 M S q q = FALSE s m <Query the service 'svc' failed!$> deleted
R#5 -> 0 0 M S q q wait stop = FALSE s m <The service 'svc' stop failed> deleted
P#5 -> 0 0 M S q q wait stop = FALSE s m <The service 'svc' stop failed!$> deleted
R#6 -> 0 0 M S q q wait stop q = FALSE s m <Query the service 'svc' failed!$> deleted
e e s#5 -> 0 0 M S q q wait wait q = FALSE s m <Query the service 'svc' failed!$> deleted
s#7 -> 1 -1 idle OpenSCManagerA(null, null, 0xF003F) = null <Open the service manager failed!$>
s#8 -> 1 -1 idle M S("svc", 0xF01FF) = null m <Open the service 'svc' failed!$>
s#9 -> 1 -1 idle M S q = FALSE s m <Query the service 'svc' failed!$>
s#10 -> 1 -1 idle M S q wait delete = FALSE s m <Delete the service 'svc' failed!$>
#1 -> -1 OpenSCManagerA(null, null, 0xF003F) = null <Open the service manager failed!$>
#2 -> -1 M C("svc", "D", "\", null, null, null) = null m <Open the service 'svc' failed!$>
#4 -> 0 M C("svc", "D", "\", null) s S("svc", 0x2) = null ChangeServiceConfig2A(null, 0x1, "text") = FALSE <Config the service 'svc' description failed!$> m
#5 -> 0 M C("svc", "D", "\", null) s S("svc", 0x2) = service describe("text") = FALSE <Config the service 'svc' description failed!$> s m)",
              [](const std::string& script) {
                const std::size_t end = script.find('#');
                const std::string all_statuses = end > 0 ? script.substr(0, end) : "s";
                const int failing_call = std::atoi(&script[end + 1]);
                restart(all_statuses, failing_call);
                if (end == 0) return outcome(R"(|-i|-n|svc|-d|D|-b||--desc|text)");
                const std::string stopped =
                    story_of([] { return stop_service(ByteString("svc")) ? 1 : 0; });
                restart(all_statuses, failing_call);
                return stopped.substr(0, 2) + outcome("|-u|-n|svc");
              },
              "\n");
}

TEST(Program, CutsTheDescription) {
  for (const std::size_t length : {1022U, 1023U, 1024U, 2000U}) {
    restart("s");
    const std::string text(std::min<std::size_t>(length, 1023), 'd');
    const std::string made = outcome(R"(|-i|-n|a|-d|x|-b|C:\|--desc|)" + std::string(length, 'd'));
    EXPECT_TRUE(made.ends_with(" describe(\"" + text + "\") s m"));
  }
}

// "checkpoint/wait hint of the caller's record, statuses -> whether it settles, story". Time runs
// out before the state is looked at; a checkpoint that moves on puts that off.
TEST(Program, WaitsByTheFirstHintAndTimesOutByTheLatest) {
  check_cases(R"(e0/9999 R -> 1 M S q wait s m
e0/10010 P -> 1 M S q Sleep(1001) s m
e0/99999 P -> 1 M S q Sleep(9999) s m
e0/200000 s -> 1 M S q Sleep(10000) s m
s e s0/2000 -> 1 M S q wait wait q s m
s e s0/1999 -> 0 M S q wait wait q s m <Timeout waiting for the service 'svc' to stop!$>
s e e0/2000 -> 0 M S q wait wait q wait q s m <Timeout waiting for the service 'svc' to stop!$>
s e1 e1 e2 e2 -> 0 M S q wait wait q wait q wait q s m <Timeout waiting for the service 'svc' to stop!$>
e5 e5 e5 -> 0 M S q wait wait q s m <Timeout waiting for the service 'svc' to stop!$>
e5 e4 e6 e6/2999 -> 0 M S q wait wait q wait q s m <Timeout waiting for the service 'svc' to stop!$>
s b c1 p2 03 84 s5 -> 1 M S q wait wait q wait q wait q wait q wait q s m)",
              [](const std::string& words) {
                restart(words.substr(words.find(' ')));
                return story_of([known = statuses(words)[0], last = statuses(words).back()] {
                  ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
                  ServiceHandle service(OpenServiceA(manager.get(), "svc", SERVICE_ALL_ACCESS));
                  SERVICE_STATUS_PROCESS status{};
                  status.dwCheckPoint = known.checkpoint;
                  status.dwWaitHint = known.wait_hint;
                  const bool settled =
                      wait_service_settled(ByteString("svc"), manager, service, status);
                  EXPECT_EQ(status.dwCurrentState, last.state);
                  EXPECT_TRUE(!service == !settled && !manager == !settled);
                  return settled ? 1 : 0;
                });
              },
              "\n");
}

}  // namespace
}  // namespace svcinst
