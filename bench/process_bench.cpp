// Whole processes, from their start to their end: the tool, and C programs that do no more than its
// work.
#include <fcntl.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/contest.h"
#include "bench/temp_folder.h"

namespace svcinst::bench {
namespace {

using Arguments = std::vector<const char*>;

// Runs a program until it ends, with its standard output in `output`. Returns its exit code.
int run_program(Arguments arguments, const char* output) {
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t process = 0;
  auto** const words = const_cast<char**>(arguments.data());
  const int failed = posix_spawn(&process, words[0], &actions, nullptr, words, environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = -1;
  if (failed != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

void expect(int code, int wanted) {
  if (code == wanted) return;
  std::fprintf(stderr, "a program ended with %d\n", code);
  std::exit(EXIT_FAILURE);
}

void help_ours() {
  expect(run_program({SVCINST_PROGRAM}, "/dev/null"), 255);
}

void help_peer() {
  expect(run_program({HELP_PEER}, "/dev/null"), 255);
}

// A database that isn't there yet.
std::string new_database() {
  static int count = 0;
  return temp_path(std::to_string(count++) + ".db");
}

void install_ours_in(const std::string& database) {
  setenv("SVCINST_DATABASE", database.c_str(), 1);
  const Arguments arguments = {
      SVCINST_PROGRAM, "--install", "--name", "hello",     "--disname",
      "Hello",         "--dep",     "Tcpip",  "--binpath", "C:\\hello\\hello.exe"};
  expect(run_program(arguments, "/dev/null"), 0);
}

void install_peer_in(const std::string& database) {
  expect(run_program({INSTALL_PEER, database.c_str()}, "/dev/null"), 0);
}

void install_ours() {
  install_ours_in(new_database());
}

void install_peer() {
  install_peer_in(new_database());
}

// The statement that made the table, and the bytes of every row.
std::string content(const std::string& database) {
  sqlite3* opened = nullptr;
  sqlite3_open(database.c_str(), &opened);
  std::string text;
  const auto add_row = [](void* to, int count, char** values, char**) {
    for (int i = 0; i < count; ++i)
      *static_cast<std::string*>(to) += values[i] != nullptr ? values[i] : "NULL";
    return 0;
  };
  sqlite3_exec(opened, "SELECT sql FROM sqlite_schema", add_row, &text, nullptr);
  sqlite3_exec(opened, "SELECT *, hex(dependencies) FROM services", add_row, &text, nullptr);
  sqlite3_close(opened);
  return text;
}

bool equal_help() {
  const std::string ours_file = temp_path("ours");
  const std::string peer_file = temp_path("peer");
  expect(run_program({SVCINST_PROGRAM}, ours_file.c_str()), 255);
  expect(run_program({HELP_PEER}, peer_file.c_str()), 255);
  std::string ours = file_bytes(ours_file);
  const std::string peer = file_bytes(peer_file);
  // Only the time differs: 23 bytes behind the "[".
  if (ours.size() >= 24) ours.replace(1, 23, peer, 1, 23);
  return ours == peer;
}

bool equal_install() {
  const std::string ours = new_database();
  const std::string peer = new_database();
  install_ours_in(ours);
  install_peer_in(peer);
  return content(ours) == content(peer) && content(ours).find("Tcpip") != std::string::npos;
}

bool equal() {
  const bool help = equal_help();
  if (!help) std::fprintf(stderr, "the help texts differ\n");
  const bool install = equal_install();
  if (!install) std::fprintf(stderr, "the databases differ\n");
  return help && install;
}

constexpr Contestant kContestants[] = {{"run-help/ours", nullptr, help_ours},
                                       {"run-help/c", nullptr, help_peer},
                                       {"run-install/ours", nullptr, install_ours},
                                       {"run-install/c", nullptr, install_peer}};

}  // namespace
}  // namespace svcinst::bench

int main(int argc, char** argv) {
  using namespace svcinst::bench;
  return run_contest(argc, argv, kContestants, Clock::wall, equal);
}
