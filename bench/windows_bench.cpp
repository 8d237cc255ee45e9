// Whole runs of Windows programs under wine: the tool and a program that does no more than its
// work, in turn. Prints the row and the nanoseconds of both, a line for each pair of runs.
//
//   windows_bench BUILD PAIRS ROW...   BUILD: the folder of the build for Windows
//
// To be run through scripts/windows-prefix: the services that it installs stay in the prefix.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "bench/temp_folder.h"

namespace svcinst::bench {
namespace {

using Arguments = std::vector<std::string>;

struct Run {
  int code;
  std::string output;
  long long nanoseconds;
};

[[noreturn]] void fail(const std::string& text) {
  std::fprintf(stderr, "windows_bench: %s\n", text.c_str());
  std::exit(EXIT_FAILURE);
}

// All that comes out of a pipe until its other end is closed.
std::string read_all(int pipe) {
  std::string text;
  std::array<char, 4096> bytes;
  for (ssize_t count; (count = read(pipe, bytes.data(), bytes.size())) > 0;)
    text.append(bytes.data(), static_cast<std::size_t>(count));
  return text;
}

// Output goes into a pipe: wine takes the null device for a console and writes it byte by byte.
Run run(Arguments arguments) {
  arguments.insert(arguments.begin(), "wine64");
  std::vector<char*> words;
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  std::array<int, 2> ends{};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  if (pipe2(ends.data(), O_CLOEXEC) != 0) fail("no pipe");
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);

  const auto start = std::chrono::steady_clock::now();
  pid_t process = 0;
  if (posix_spawnp(&process, words[0], &actions, nullptr, words.data(), environ) != 0)
    fail("wine64 does not start");
  close(ends[1]);
  std::string output = read_all(ends[0]);
  int status = 0;
  waitpid(process, &status, 0);
  const std::chrono::nanoseconds time = std::chrono::steady_clock::now() - start;

  close(ends[0]);
  posix_spawn_file_actions_destroy(&actions);
  return {WEXITSTATUS(status), std::move(output), time.count()};
}

// A copy starts a little faster than the file that the linker wrote: both contestants are one.
std::string copy_of(const std::filesystem::path& program) {
  std::string copy = temp_path(program.filename());
  std::filesystem::copy_file(program, copy, std::filesystem::copy_options::skip_existing);
  return copy;
}

// Two commands that do the same. In their arguments kService stands for a name not used before.
struct Contest {
  std::string row;
  Arguments ours, peer;
  bool installs;  // otherwise it prints the help
};

const std::string kService = "NAME";

std::vector<Contest> all_contests(const std::filesystem::path& build) {
  const std::string ours = copy_of(build / "app/svcinst.exe");
  const std::string help_peer = copy_of(build / "bench/windows_help_peer.exe");
  const std::string install_peer = copy_of(build / "bench/windows_install_peer.exe");
  const std::string path = "C:\\hello\\hello.exe";
  const auto install = [&](const std::string& program) -> Arguments {
    return {program, "--install", "--name", kService, "--disname", kService, "--binpath", path};
  };
  const Arguments sc = {"sc",     "create", kService,       "binPath=", path,
                        "start=", "auto",   "DisplayName=", kService};
  return {{"windows-help", {ours}, {help_peer}, false},
          {"windows-install", install(ours), install(install_peer), true},
          {"windows-install-sc", install(ours), sc, true}};
}

// What the service manager keeps of a service, without its name.
std::string registered(const std::string& service) {
  std::string text =
      run({"reg", "query", "HKLM\\System\\CurrentControlSet\\Services\\" + service}).output;
  for (std::size_t at; (at = text.find(service)) != std::string::npos;)
    text.erase(at, service.size());
  return text;
}

std::string new_service() {
  static int count = 0;
  return "bench" + std::to_string(count++);
}

Run run_command(const Contest& contest, Arguments command, const std::string& service) {
  std::ranges::replace(command, kService, service);
  Run made = run(command);
  if (made.code != (contest.installs ? 0 : 255)) fail(contest.row + ": " + command[0] + " failed");
  return made;
}

// What is registered, or the help without its time: 23 bytes behind the "[".
std::string made_by(const Contest& contest, const Arguments& command) {
  const std::string service = new_service();
  Run made = run_command(contest, command, service);
  return contest.installs ? registered(service) : made.output.erase(1, 23);
}

long long time_of(const Contest& contest, const Arguments& command) {
  return run_command(contest, command, new_service()).nanoseconds;
}

void measure(const Contest& contest, int pairs) {
  // Warms both up, too.
  if (made_by(contest, contest.ours) != made_by(contest, contest.peer))
    fail(contest.row + ": not equal");
  for (int pair = 0; pair < pairs; ++pair) {
    const long long ours = time_of(contest, contest.ours);
    std::printf("%s %lld %lld\n", contest.row.c_str(), ours, time_of(contest, contest.peer));
  }
}

}  // namespace
}  // namespace svcinst::bench

int main(int argc, char** argv) {
  using namespace svcinst::bench;
  if (argc < 3) fail("windows_bench BUILD PAIRS ROW...");
  const std::filesystem::path build = argv[1];
  const std::vector<std::string> rows(argv + 3, argv + argc);
  const auto is_wanted = [&](const std::string& row) { return std::ranges::count(rows, row) > 0; };
  for (const Contest& contest : all_contests(build))
    if (is_wanted(contest.row)) measure(contest, std::atoi(argv[2]));
  if (!is_wanted("windows-format-mix")) return EXIT_SUCCESS;
  // Runs its pairs by itself.
  const Run format = run({copy_of(build / "bench/windows_format_bench.exe"), argv[2]});
  if (format.code != 0) fail("windows-format-mix: not equal");
  std::fputs(format.output.c_str(), stdout);
}
