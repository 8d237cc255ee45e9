// What the program makes of its arguments and of the service manager's answers. A story is what it
// printed, the scripted calls and sleeps among its messages, with the result at the end.
#include "app/command_line.h"
#include "app/program_paths.h"
#include "app/service_operations.h"
#include "cmdline/option_lookup.h"
#include "cmdline/option_registry.h"
#include "grammar/matcher.h"
#include "tests/support/examples.h"
#include "tests/support/story.h"

using namespace svcinst;

constexpr ScriptedStatus kStopped{SERVICE_STOPPED};
constexpr ScriptedStatus kRunning{SERVICE_RUNNING};
constexpr ScriptedStatus kPaused{SERVICE_PAUSED};

constexpr ScriptedStatus pending(DWORD checkpoint, DWORD wait_hint) {
  return {SERVICE_STOP_PENDING, checkpoint, wait_hint};
}

// As the program does it: the last of an option's names that has a value decides.
std::string looked_up(const std::string& arguments, const std::string& names) {
  std::vector<const char*> argv{"svcinst"};
  const std::vector<std::string> texts = texts_of(arguments);
  for (const std::string& argument : texts) argv.push_back(argument.c_str());
  const ByteString line = join_arguments(static_cast<int>(argv.size()), argv.data());
  Grammar grammar;
  furthest_failure = nullptr;
  grammar.result = match(grammar.start_rule, line.data, line.length, *grammar.rules);
  if (!grammar.result) return "fails at " + std::to_string(furthest_failure - line.data);
  bool given = false;
  TextView value;
  for (const std::string& name : texts_of(names))
    given |= get_option_value(grammar, TextView(name).substr(name.find_first_not_of('-')), value);
  if (is_absent(value)) return given ? "none" : "not given";
  return value.empty() ? "empty" : std::string(strip_quotes(value));
}

std::string registered(const std::string& program, const std::string& path) {
  const std::string typed = text_of(program);
  return c_str(*resolve_binary_path(*program_directory(typed), text_of(path)));
}

TEST(CommandLine, IsReadAsThePageShows) {
  check_examples("command-line.md", "command line", looked_up);
  check_examples("command-line.md", "path", registered);
}

// As README.md shows it.
std::string help() {
  const std::string page = file_bytes("README.md");
  const std::size_t start = page.find("install/uninstall a");
  return replaced(page.substr(start, page.find("    $", start) - start), "\n    ", "\n") + "\n-1";
}

TEST(Program, ShowsTheHelpWithoutACommandOrWithoutItsOptions) {
  const std::vector<const char*> rows[] = {
      {"svcinst"},
      {"svcinst", "-i", "-b", "C:\\x", "-d", "x"},
      {"svcinst", "-i", "-n", "a", "-d", "x"},
      {"svcinst", "-i", "-n", "a", "-b", "C:\\x"},
      {"svcinst", "-u"},
  };
  for (const auto& arguments : rows) EXPECT_EQ(story_of_program(arguments), "> " + help());
  EXPECT_EQ(story_of_program({"svcinst", "install"}), "error at position: 1\n> " + help());
}

TEST(Help, HasEachNameOnceAnd32BytesForTheNames) {
  OptionRegistry registry("tool");
  CaptureStdout();
  for (const auto& [letter, word] :
       {std::pair("a", "word"), std::pair("a", "word"), std::pair("a", "other"),
        std::pair("", "a-word-of-more-than-28-letters")})
    add_option(registry, {ByteString(letter), ByteString(word), ByteString("text")});
  EXPECT_EQ(GetCapturedStdout(), "exists same long name.\nexists same short name.\n");
  EXPECT_EQ(registry.count, 2U);
  EXPECT_EQ(view(build_help_text(registry)),
            "tool\n\n\n\n"
            "  -a, --word                    text\n"
            "  --a-word-of-more-than-28-lettetext\n");
}

// Each is run with "--install" in front.
TEST(Program, RegistersWhatItsOptionsSay) {
  const std::pair<std::vector<const char*>, std::string> rows[] = {
      {{"-u", "--name=a", "-nb", "-b=C:/x", "-dx"}, R"(create("b", "x", "C:/x", null) -b)"},
      {{"-na", "--binpath=C:/a", "-dx", "--desc", "\"\""}, R"(create("a", "x", "C:/a", null) -a)"},
      {{"--name=a", "-b=A:/x", "-dx", "--dep=b"}, R"(create("a", "x", "A:/x", "b\0\0") -a)"},
      {{"-na", "-b=C:/x", "--disname=x", "--dep", "\"\""}, R"(create("a", "x", "C:/x", "\0") -a)"},
      {{"-n", "-b", "-d"}, R"(create("", null, "D:\café\", null) -)"},
      {{"-n", "", "a", "-b=a:/", "-dx"}, R"(create("", "x", "a:/", null) -)"},
      {{"-na", "-bé", "-dü", "--dep", ""}, R"(create("a", "ü", "D:\café\é", null) -a)"},
  };
  for (const auto& [arguments, calls] : rows) {
    std::vector<const char*> argv = {R"(D:\café\svcinst.exe)", "--install"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(story_of_program(argv), "+manager " + calls + " -manager 0");
  }
}

TEST(Program, RefusesPathsThatAreNoText) {
  const char* const told =
      "> The path '\xff' is not valid text in the code page for file names (65001)!\n-1";
  for (const char* command : {"-i", "-u", "-x"})
    EXPECT_EQ(story_of_program({"\xff", command, "-n", "a", "-b", "b", "-d", "x"}), told);
  EXPECT_EQ(story_of_program({"svcinst", "-i", "-n", "a", "-b", "\xff", "-d", "x"}), told);
}

TEST(Program, CutsADescriptionAndTellsWhichStepOfAnInstallFailed) {
  const std::string kept(1023, 'x');
  const std::string option = "--desc=" + kept + "cut";
  const std::string create = R"(+manager create("a", "x", "C:\x", null) )";
  const std::string reopen = create + "-a +a(to configure) ";
  const std::string describe = "describe(\"" + kept + "\") ";
  const std::string not_described = "fails > Config the service 'a' description failed!\n";
  const std::pair<std::string, std::string> rows[] = {
      {"none", reopen + describe + "-a -manager 0"},
      {"+manager 1", "+manager fails > Open the service manager failed!\n-1"},
      {"create 1", create + "fails -manager > Open the service 'a' failed!\n-1"},
      {"+a 1", reopen + "fails " + describe + not_described + "-manager 0"},
      {"describe 1", reopen + describe + not_described + "-a -manager 0"},
  };
  const std::vector<const char*> argv = {"svcinst", "-i", "-na", "-bC:\\x", "-dx", option.c_str()};
  for (const auto& [failing_call, story] : rows)
    EXPECT_EQ(story_of_program(argv, {.failing_call = failing_call}), story);
}

// What stopping the service "s" comes to; 1 when it succeeds.
std::string story_of_stop(const ScriptedServices& script) {
  return story_of([] { return stop_service(ByteString("s")) ? 1 : 0; }, script);
}

const std::string settles = "+manager +s query query Sleep(1000) ";
const std::string not_queried = "fails -s -manager > Query the service 's' failed!\n";

TEST(StopService, StopsAServiceThatHasSettledOrTellsWhichStepFailed) {
  const std::string stops = settles + "stop query Sleep(1000) ";
  const std::string stopped = "> The service 's' stop successful!\n-s -manager 1";
  const std::string not_stopped = "> The service 's' stop failed!\n-s -manager 1";
  const std::pair<ScriptedServices, std::string> rows[] = {
      {{{kStopped}}, settles + "> The service 's' is stoped!\n-s -manager 1"},
      {{{kRunning, kRunning, kStopped}}, stops + stopped},
      {{{kPaused, kPaused, kStopped}}, stops + stopped},
      {{{kRunning, kRunning, pending(0, 0), kPaused}}, stops + not_stopped},
      {{{kPaused, kPaused, pending(0, 30000), kRunning}},
       settles + "stop query Sleep(3000) " + not_stopped},
      {{{kStopped}, "+manager 1"}, "+manager fails > Open the service manager failed!\n0"},
      {{{kStopped}, "+s 1"}, "+manager +s fails -manager > Open the service 's' failed!\n0"},
      {{{kStopped}, "query 1"}, "+manager +s query " + not_queried + "0"},
      {{{kStopped}, "query 2"}, "+manager +s query query " + not_queried + "0"},
      {{{pending(0, 0)}, "query 3"}, settles + "Sleep(1000) query " + not_queried + "0"},
      {{{kRunning}, "stop 1"}, settles + "stop fails -s -manager > The service 's' stop failed0"},
      {{{kPaused}, "stop 1"}, settles + "stop fails -s -manager > The service 's' stop failed!\n0"},
      {{{kRunning}, "query 3"}, settles + "stop query " + not_queried + "0"},
  };
  for (const auto& [script, story] : rows) EXPECT_EQ(story_of_stop(script), story);
}

// The first status is the one that the wait begins with.
TEST(StopService, WaitsByTheFirstHintAndTimesOutByTheLatest) {
  const std::string settled = "> The service 's' is stoped!\n-s -manager 1";
  const std::string timeout = "-s -manager > Timeout waiting for the service 's' to stop!\n0";
  const std::string twice = "Sleep(1000) Sleep(1000) query ";
  const std::pair<std::vector<ScriptedStatus>, std::string> rows[] = {
      {{pending(0, 10010), kStopped}, "Sleep(1001) " + settled},
      {{pending(0, 200000), kStopped}, "Sleep(10000) " + settled},
      {{kStopped, pending(0, 0), {SERVICE_STOPPED, 0, 2000}}, twice + settled},
      // Time runs out before the state is looked at ...
      {{kStopped, pending(0, 0), {SERVICE_STOPPED, 0, 1999}}, twice + timeout},
      // ... unless the checkpoint has moved on, which does not move the start of the wait.
      {{kStopped, pending(0, 0), pending(1, 0), pending(1, 2999)},
       twice + "Sleep(1000) query " + timeout},
      {{pending(5, 0), pending(3, 0), pending(4, 1999)}, twice + timeout},
  };
  for (const auto& [statuses, waits] : rows)
    EXPECT_EQ(story_of_stop({statuses}), "+manager +s query query " + waits);
  for (const DWORD state : {0U, 2U, 3U, 5U, 6U, 8U})
    EXPECT_EQ(story_of_stop({{{state}}}), "+manager +s query query " + twice + timeout) << state;
}

// Whatever its stop comes to; the wait before the removal begins anew.
TEST(Program, UninstallDeletesTheServiceOnceItHasSettled) {
  const std::string stopped = "> The service 's' is stoped!\n-s -manager ";
  const std::string refused = settles + "stop fails -s -manager > The service 's' stop failed";
  const std::string deletes = "+manager +s query Sleep(1000) delete ";
  const std::pair<ScriptedServices, std::string> rows[] = {
      {{{pending(0, 20000), kStopped}},
       "+manager +s query query Sleep(2000) " + stopped + deletes + "-s -manager 0"},
      {{{kRunning}, "stop 1"}, refused + deletes + "-s -manager 0"},
      {{{kStopped}, "+manager 2"},
       settles + stopped + "+manager fails > Open the service manager failed!\n-1"},
      {{{kStopped}, "+s 2"},
       settles + stopped + "+manager +s fails -manager > Open the service 's' failed!\n-1"},
      {{{kStopped}, "query 3"}, settles + stopped + "+manager +s query " + not_queried + "-1"},
      {{{kStopped}, "delete 1"},
       settles + stopped + deletes + "fails -s -manager > Delete the service 's' failed!\n-1"},
  };
  for (const auto& [script, story] : rows)
    EXPECT_EQ(story_of_program({"svcinst", "--uninstall", "--name=x", "-n=\"s\""}, script), story);
}
