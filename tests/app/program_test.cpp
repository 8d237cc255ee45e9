// What the program makes of its arguments and of the service manager's answers, told as a story:
// every call, every sleep and, between <>, every message in its place.
#include "app/program.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/service_operations.h"
#include "tests/support/capture.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

constexpr ScriptedStatus kStopped{SERVICE_STOPPED};
constexpr ScriptedStatus kRunning{SERVICE_RUNNING};
constexpr ScriptedStatus kPaused{SERVICE_PAUSED};

constexpr ScriptedStatus pending(DWORD checkpoint, DWORD wait_hint) {
  return {SERVICE_STOP_PENDING, checkpoint, wait_hint};
}

// A message without its prefix, between <>; of the help, what it is.
std::string shown(const std::string& message) {
  return message.starts_with("install/uninstall a executable") ? "<HELP> " : "<" + message + "> ";
}

// The story of `run`, with its result at the end.
template <class Run>
std::string story_of(const ScriptedServices& script, Run run) {
  const std::string prefix = "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ";
  play(script);
  scripted_clock.tick_count = 0xFFFFFF00;  // it begins again at 0 soon
  const CapturedStdout captured;
  const int result = run();
  std::string printed = captured.bytes();
  const auto take_message = [&] {  // what stands before the next record
    const std::string message = printed.substr(0, printed.find(prefix));
    printed.erase(0, message.size() + prefix.size());
    return message.empty() ? "" : shown(message);
  };
  std::string story = take_message();
  for (const std::string& call : call_log)
    story += call == "GetLocalTime()" ? take_message() : call + " ";  // a record reads it once
  EXPECT_EQ(open_handles(), 0U) << story;
  return story + std::to_string(result);
}

std::string story_of_program(std::vector<const char*> argv, const ScriptedServices& script = {}) {
  return story_of(script, [&] { return run_program(static_cast<int>(argv.size()), argv.data()); });
}

TEST(Program, ShowsTheHelpWithoutACommandOrWithoutItsOptions) {
  const std::vector<const char*> rows[] = {
      {"svcinst"},
      {"svcinst", "-i", "-b", "C:\\x", "-d", "x"},
      {"svcinst", "-i", "-n", "a", "-b", "C:\\x"},
      {"svcinst", "-u"},
  };
  for (const auto& arguments : rows) EXPECT_EQ(story_of_program(arguments), "<HELP> -1");
  EXPECT_EQ(story_of_program({"svcinst", "install"}), "<error at position: 1\n> <HELP> -1");
}

// Each is run with "-i" in front.
TEST(Program, RegistersWhatItsOptionsSay) {
  const struct {
    std::vector<const char*> arguments;
    const char* call;
  } rows[] = {
      {{"-n", "a", "-b", R"(C:\x)", "-d", "x"}, R"(create("a", "x", "C:\x", null))"},
      {{"-u", "--name=a", "-nb", "-b=C:/x", "-d", "x"}, R"(create("b", "x", "C:/x", null))"},
      {{"-n", "'a b'", "-b", R"(C:\a b)", "-d", "\"x\""},
       R"(create("'a b'", "x", "C:\a b", null))"},
      {{"-n", "a", "-b", R"(C:\x)", "-d", "x", "--dep", "b"},
       R"(create("a", "x", "C:\x", "b\0\0"))"},
      {{"-n", "a", "-b", R"(C:\x)", "-d", "x", "--dep", "\"\""},
       R"(create("a", "x", "C:\x", "\0"))"},
      {{"-n", "-b", "-d"}, R"(create("", null, "D:\tools\", null))"},
      {{"-n", "a", "-b", "é", "-d", "ü"}, R"(create("a", "ü", "D:\tools\é", null))"},
  };
  for (const auto& [arguments, call] : rows) {
    std::vector<const char*> argv = {R"(D:\tools\svcinst.exe)", "-i"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    EXPECT_TRUE(story_of_program(argv).ends_with(" 0"));
    EXPECT_EQ(call_log[1], call);
  }
}

TEST(Program, RefusesPathsThatAreNoText) {
  const char* const told =
      "<The path '\xff' is not valid text in the code page for file names (65001)!\n> -1";
  for (const char* command : {"-i", "-u", "-x"})
    EXPECT_EQ(story_of_program({"\xff", command, "-n", "a", "-b", "b", "-d", "x"}), told);
  EXPECT_EQ(story_of_program({"svcinst", "-i", "-n", "a", "-b", "\xff", "-d", "x"}), told);
}

TEST(Program, TellsWhichStepOfAnInstallFailed) {
  const std::string create = R"(create("a", "x", "C:\x", null))";
  const std::string reopen = " -a +a(to configure)";
  const std::string not_described = " fails <Config the service 'a' description failed!\n> ";
  const std::pair<int, std::string> rows[] = {
      {1, "+manager fails <Open the service manager failed!\n> -1"},
      {2, "+manager " + create + " fails -manager <Open the service 'a' failed!\n> -1"},
      {3, "+manager " + create + reopen + " fails describe(\"it\")" + not_described + "-manager 0"},
      {4, "+manager " + create + reopen + " describe(\"it\")" + not_described + "-a -manager 0"},
  };
  const std::vector<const char*> argv = {"svcinst", "-i", "-n=a", "-b=C:\\x", "-d=x", "--desc=it"};
  for (const auto& [failing_call, story] : rows)
    EXPECT_EQ(story_of_program(argv, {.failing_call = failing_call}), story);
}

// What stopping the service "s" comes to; 1 when it succeeds.
std::string story_of_stop(const ScriptedServices& script) {
  return story_of(script, [] { return stop_service(ByteString("s")) ? 1 : 0; });
}

const std::string settles = "+manager +s query query Sleep(1000) ";

TEST(StopService, StopsAServiceThatHasSettledOrTellsWhichStepFailed) {
  const std::string stops = settles + "stop query Sleep(1000) ";
  const struct {
    std::vector<ScriptedStatus> statuses;
    int failing_call;
    std::string story;
  } rows[] = {
      {{kStopped}, 0, settles + "<The service 's' is stoped!\n> -s -manager 1"},
      {{kRunning, kRunning, kStopped},
       0,
       stops + "<The service 's' stop successful!\n> -s -manager 1"},
      {{kPaused, kPaused, kStopped},
       0,
       stops + "<The service 's' stop successful!\n> -s -manager 1"},
      {{kRunning, kRunning, pending(0, 30000), kRunning},
       0,
       settles + "stop query Sleep(3000) <The service 's' stop failed!\n> -s -manager 1"},
      {{kStopped}, 1, "+manager fails <Open the service manager failed!\n> 0"},
      {{kStopped}, 2, "+manager +s fails -manager <Open the service 's' failed!\n> 0"},
      {{kStopped}, 3, "+manager +s query fails -s -manager <Query the service 's' failed!\n> 0"},
      {{kStopped},
       4,
       "+manager +s query query fails -s -manager <Query the service 's' failed!\n> 0"},
      {{pending(0, 0)},
       5,
       settles + "Sleep(1000) query fails -s -manager <Query the service 's' failed!\n> 0"},
      {{kRunning}, 5, settles + "stop fails -s -manager <The service 's' stop failed> 0"},
      {{kPaused}, 5, settles + "stop fails -s -manager <The service 's' stop failed!\n> 0"},
      {{kRunning}, 6, settles + "stop query fails -s -manager <Query the service 's' failed!\n> 0"},
  };
  for (const auto& [statuses, failing_call, story] : rows)
    EXPECT_EQ(story_of_stop({statuses, failing_call}), story);
}

// The first status is the one that the wait begins with.
TEST(StopService, WaitsByTheFirstHintAndTimesOutByTheLatest) {
  const std::string twice = "Sleep(1000) Sleep(1000) query";
  const std::string begin = "+manager +s query query ";
  const char* const settled = "<The service 's' is stoped!\n> -s -manager 1";
  const char* const timeout = "-s -manager <Timeout waiting for the service 's' to stop!\n> 0";
  const struct {
    std::vector<ScriptedStatus> statuses;
    std::string waits;
    const char* end;
  } rows[] = {
      {{pending(0, 10010), kStopped}, "Sleep(1001)", settled},
      {{pending(0, 99999), kStopped}, "Sleep(9999)", settled},
      {{pending(0, 200000), kStopped}, "Sleep(10000)", settled},
      {{kStopped, pending(0, 0), {SERVICE_STOPPED, 0, 2000}}, twice, settled},
      // Time runs out before the state is looked at ...
      {{kStopped, pending(0, 0), {SERVICE_STOPPED, 0, 1999}}, twice, timeout},
      // ... unless the checkpoint has moved on, which does not move the start of the wait.
      {{kStopped, pending(0, 0), pending(1, 0), pending(1, 2999)},
       twice + " Sleep(1000) query",
       timeout},
      {{pending(5, 0), pending(4, 0), pending(5, 1999)}, twice, timeout},
  };
  for (const auto& [statuses, waits, end] : rows)
    EXPECT_EQ(story_of_stop({statuses}), begin + waits + " " + end);
}

// The story of the stop, whatever that comes to, and without its result; then that of the row.
TEST(Program, UninstallDeletesTheServiceOnceItHasSettled) {
  const struct {
    std::vector<ScriptedStatus> statuses;
    int failing_call;
    const char* story;
  } rows[] = {
      {{kRunning, kRunning, kRunning}, 0, "+manager +s query Sleep(1000) delete -s -manager 0"},
      {{kRunning}, 5, "+manager +s query Sleep(1000) delete -s -manager 0"},
      {{kStopped}, 5, "+manager fails <Open the service manager failed!\n> -1"},
      {{kStopped}, 6, "+manager +s fails -manager <Open the service 's' failed!\n> -1"},
      {{kStopped}, 7, "+manager +s query fails -s -manager <Query the service 's' failed!\n> -1"},
      {{kStopped},
       8,
       "+manager +s query Sleep(1000) delete fails -s -manager "
       "<Delete the service 's' failed!\n> -1"},
  };
  for (const auto& [statuses, failing_call, story] : rows) {
    const ScriptedServices script{statuses, failing_call};
    std::string expected = story_of_stop(script);
    expected.replace(expected.rfind(' ') + 1, 1, story);
    EXPECT_EQ(story_of_program({"svcinst", "-u", "--name", "x", "-n", "\"s\""}, script), expected);
  }
}

}  // namespace
}  // namespace svcinst
