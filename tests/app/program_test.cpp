// What the program makes of its arguments and of the service manager's answers. A story is what it
// printed, the scripted calls and sleeps among its messages, with the result at the end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/service_operations.h"
#include "cmdline/option_registry.h"
#include "cmdline/usage.h"
#include "tests/support/scripted_services.h"
#include "tests/support/story.h"

namespace svcinst {
namespace {

constexpr ScriptedStatus kStopped{SERVICE_STOPPED};
constexpr ScriptedStatus kRunning{SERVICE_RUNNING};
constexpr ScriptedStatus kPaused{SERVICE_PAUSED};

constexpr ScriptedStatus pending(DWORD checkpoint, DWORD wait_hint) {
  return {SERVICE_STOP_PENDING, checkpoint, wait_hint};
}

std::string story_of_program(const ScriptedServices& script, const std::vector<const char*>& argv) {
  scripted_services = script;
  return svcinst::story_of_program(argv);
}

TEST(Program, ShowsTheHelpWithoutACommandOrWithoutItsOptions) {
  const std::vector<const char*> rows[] = {
      {"svcinst"},
      {"svcinst", "-i", "-b", "C:\\x", "-d", "x"},
      {"svcinst", "-i", "-n", "a", "-b", "C:\\x"},
      {"svcinst", "-u"},
  };
  const std::string help = story_of([] { return print_usage(), -1; });
  for (const auto& arguments : rows) EXPECT_EQ(story_of_program({}, arguments), help);
  EXPECT_EQ(story_of_program({}, {"svcinst", "install"}), "error at position: 1\n" + help);
}

TEST(Help, HasEachNameOnceAnd32BytesForTheNames) {
  OptionRegistry registry("tool");
  const auto add = [&registry](const char* letter, const char* word) {
    return add_option(registry, {ByteString(letter), ByteString(word), ByteString("text")});
  };
  const CapturedStdout captured;
  EXPECT_TRUE(add("a", "word"));
  EXPECT_FALSE(add("b", "word"));
  EXPECT_FALSE(add("a", "other"));
  EXPECT_TRUE(add("", "a-word-of-more-than-28-letters-is-cut"));
  EXPECT_EQ(captured.bytes(), "exists same long name.\nexists same short name.\n");
  EXPECT_EQ(view(build_help_text(registry)),
            "tool\n\n\n\n"
            "  -a, --word                    text\n"
            "  --a-word-of-more-than-28-lettetext\n");
}

// Each is run with "-i" in front.
TEST(Program, RegistersWhatItsOptionsSay) {
  const std::pair<std::vector<const char*>, std::string> rows[] = {
      {{"-n", "a", "-b", "C:\\x", "-d", "x"}, R"(create("a", "x", "C:\x", null) -a)"},
      {{"-u", "--name=a", "-nb", "-b=C:/x", "-dx"}, R"(create("b", "x", "C:/x", null) -b)"},
      {{"-na", "-b=C:/a", "-dx", "--desc", "\"\""}, R"(create("a", "x", "C:/a", null) -a)"},
      {{"-na", "-b=C:/x", "-dx", "--dep=b"}, R"(create("a", "x", "C:/x", "b\0\0") -a)"},
      {{"-na", "-b=C:/x", "-dx", "--dep", "\"\""}, R"(create("a", "x", "C:/x", "\0") -a)"},
      {{"-n", "-b", "-d"}, R"(create("", null, "D:\tools\", null) -)"},
      {{"-na", "-b", "é", "-d", "ü"}, R"(create("a", "ü", "D:\tools\é", null) -a)"},
  };
  for (const auto& [arguments, calls] : rows) {
    std::vector<const char*> argv = {R"(D:\tools\svcinst.exe)", "-i"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(story_of_program({}, argv), "+manager " + calls + " -manager 0");
  }
}

TEST(Program, RefusesPathsThatAreNoText) {
  const char* const told =
      "The path '\xff' is not valid text in the code page for file names (65001)!\n-1";
  for (const char* command : {"-i", "-u", "-x"})
    EXPECT_EQ(story_of_program({}, {"\xff", command, "-n", "a", "-b", "b", "-d", "x"}), told);
  EXPECT_EQ(story_of_program({}, {"svcinst", "-i", "-n", "a", "-b", "\xff", "-d", "x"}), told);
}

TEST(Program, TellsWhichStepOfAnInstallFailed) {
  const std::string create = R"(+manager create("a", "x", "C:\x", null) )";
  const std::string reopen = create + "-a +a(to configure) ";
  const std::string not_described = "fails Config the service 'a' description failed!\n";
  const std::pair<int, std::string> rows[] = {
      {1, "+manager fails Open the service manager failed!\n-1"},
      {2, create + "fails -manager Open the service 'a' failed!\n-1"},
      {3, reopen + "fails describe(\"it\") " + not_described + "-manager 0"},
      {4, reopen + "describe(\"it\") " + not_described + "-a -manager 0"},
  };
  const std::vector<const char*> argv = {"svcinst", "-i", "-n=a", "-b=C:\\x", "-d=x", "--desc=it"};
  for (const auto& [failing_call, story] : rows)
    EXPECT_EQ(story_of_program({.failing_call = failing_call}, argv), story);
}

// What stopping the service "s" comes to; 1 when it succeeds.
std::string story_of_stop(const ScriptedServices& script) {
  scripted_services = script;
  return story_of([] { return stop_service(ByteString("s")) ? 1 : 0; });
}

const std::string opens = "+manager +s ";
const std::string settles = opens + "query query Sleep(1000) ";
const std::string not_queried = "fails -s -manager Query the service 's' failed!\n";

TEST(StopService, StopsAServiceThatHasSettledOrTellsWhichStepFailed) {
  const std::string stops = settles + "stop query Sleep(1000) ";
  const std::string stopped = stops + "The service 's' stop successful!\n-s -manager 1";
  const std::string came_back = settles + "stop query Sleep(3000) The service 's' stop failed!\n";
  const std::pair<ScriptedServices, std::string> rows[] = {
      {{{kStopped}, 0}, settles + "The service 's' is stoped!\n-s -manager 1"},
      {{{kRunning, kRunning, kStopped}, 0}, stopped},
      {{{kRunning, kRunning, pending(0, 30000), kRunning}, 0}, came_back + "-s -manager 1"},
      {{{kStopped}, 1}, "+manager fails Open the service manager failed!\n0"},
      {{{kStopped}, 2}, opens + "fails -manager Open the service 's' failed!\n0"},
      {{{kStopped}, 3}, opens + "query " + not_queried + "0"},
      {{{kStopped}, 4}, opens + "query query " + not_queried + "0"},
      {{{pending(0, 0)}, 5}, settles + "Sleep(1000) query " + not_queried + "0"},
      {{{kRunning}, 5}, settles + "stop fails -s -manager The service 's' stop failed0"},
      {{{kPaused}, 5}, settles + "stop fails -s -manager The service 's' stop failed!\n0"},
      {{{kRunning}, 6}, settles + "stop query " + not_queried + "0"},
  };
  for (const auto& [script, story] : rows) EXPECT_EQ(story_of_stop(script), story);
}

// The first status is the one that the wait begins with.
TEST(StopService, WaitsByTheFirstHintAndTimesOutByTheLatest) {
  const std::string settled = "The service 's' is stoped!\n-s -manager 1";
  const std::string timeout = "-s -manager Timeout waiting for the service 's' to stop!\n0";
  const std::string twice = "Sleep(1000) Sleep(1000) query ";
  const std::pair<std::vector<ScriptedStatus>, std::string> rows[] = {
      {{pending(0, 10010), kStopped}, "Sleep(1001) " + settled},
      {{pending(0, 99999), kStopped}, "Sleep(9999) " + settled},
      {{pending(0, 200000), kStopped}, "Sleep(10000) " + settled},
      {{kStopped, pending(0, 0), {SERVICE_STOPPED, 0, 2000}}, twice + settled},
      // Time runs out before the state is looked at ...
      {{kStopped, pending(0, 0), {SERVICE_STOPPED, 0, 1999}}, twice + timeout},
      // ... unless the checkpoint has moved on, which does not move the start of the wait.
      {{kStopped, pending(0, 0), pending(1, 0), pending(1, 2999)},
       twice + "Sleep(1000) query " + timeout},
      {{pending(5, 0), pending(4, 0), pending(5, 1999)}, twice + timeout},
  };
  for (const auto& [statuses, waits] : rows)
    EXPECT_EQ(story_of_stop({statuses}), opens + "query query " + waits);
}

// The story of the stop, whatever that comes to, and without its result; then that of the row.
TEST(Program, UninstallDeletesTheServiceOnceItHasSettled) {
  const std::string deletes = opens + "query Sleep(1000) delete ";
  const std::pair<ScriptedServices, std::string> rows[] = {
      {{{kRunning, kRunning, kRunning}}, deletes + "-s -manager 0"},
      {{{kRunning}, 5}, deletes + "-s -manager 0"},
      {{{kStopped}, 5}, "+manager fails Open the service manager failed!\n-1"},
      {{{kStopped}, 6}, opens + "fails -manager Open the service 's' failed!\n-1"},
      {{{kStopped}, 7}, opens + "query " + not_queried + "-1"},
      {{{kStopped}, 8}, deletes + "fails -s -manager Delete the service 's' failed!\n-1"},
  };
  for (const auto& [script, story] : rows) {
    std::string expected = story_of_stop(script);
    expected.pop_back();
    expected += story;
    EXPECT_EQ(story_of_program(script, {"svcinst", "-u", "--name", "x", "-n", "\"s\""}), expected);
  }
}

}  // namespace
}  // namespace svcinst
