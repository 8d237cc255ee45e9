// The service database, and a shell that leaves the arguments as they are.
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>

#include "tests/end_to_end/machine.h"
#include "tests/support/capture.h"

namespace svcinst {

const char* const chosen_program = std::getenv("SVCINST_PROGRAM");
const std::string program = chosen_program != nullptr ? chosen_program : "../../app/svcinst";
const std::string service_program = program;  // the database starts none: any program will do
// The sanitizers' program bears no cancelled thread.
const std::vector<std::string> plugins =
    chosen_program != nullptr ? std::vector<std::string>{"example_plugin", "early_plugin"}
                              : std::vector<std::string>{"example_plugin"};

namespace {

std::string sql(const std::string& statement) {
  const Result found =
      run_line("sqlite3 -cmd '.timeout 10000' \"$SVCINST_DATABASE\" \"" + statement + '"');
  return found.output.substr(0, found.output.find('\n'));
}

}  // namespace

Result run_line(const std::string& line) {
  static const TempDirectory state;
  const std::string set_up =
      "export SVCINST_DATABASE='" + state.path("a/services.db") + "'; set -f; ";
  std::FILE* const shell = popen((set_up + line).c_str(), "r");
  std::string output;
  for (int c = std::fgetc(shell); c != EOF; c = std::fgetc(shell)) output += static_cast<char>(c);
  return {static_cast<signed char>(WEXITSTATUS(pclose(shell))), output};
}

Result run_with(const std::string& plugin) {
  // The sanitizers' library would like to come first.
  return run_line("ASAN_OPTIONS=$ASAN_OPTIONS:verify_asan_link_order=0 LD_PRELOAD=./lib" + plugin +
                  ".so '" + program + "'");
}

std::string registration(const std::string& name) {
  return sql(
      "SELECT binary_path, display_name, description, dependencies, service_type || ' ' ||"
      " start_type || ' ' || error_control || ' ' || account"
      " FROM services WHERE name = '" +
      name + "' COLLATE NOCASE");
}

void start(const std::string& name) {
  const std::string state = name == "svcinst-running" ? "4" : "3";  // SERVICE_RUNNING, SERVICE_STOP_PENDING
  sql("UPDATE services SET current_state = " + state + " WHERE name = '" + name + "'");
}

}  // namespace svcinst
