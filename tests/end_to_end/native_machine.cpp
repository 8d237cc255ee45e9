// The service database, and a shell that leaves the arguments as they are.
#include <sys/wait.h>

#include <cstdio>

#include "tests/end_to_end/machine.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

std::string sql(const std::string& statement) {
  const Result found =
      run_line("sqlite3 -cmd '.timeout 10000' $SVCINST_DATABASE \"" + statement + '"');
  return found.output.substr(0, found.output.find('\n'));
}

}  // namespace

Result run_line(const std::string& line) {
  static const TempDirectory state;
  const std::string set_up =
      "export SVCINST_DATABASE=" + state.path("a/services.db") + "; set -f; ";
  std::FILE* const shell = popen((set_up + line).c_str(), "r");
  std::string output;
  for (int c = std::fgetc(shell); c != EOF; c = std::fgetc(shell)) output += static_cast<char>(c);
  return {static_cast<signed char>(WEXITSTATUS(pclose(shell))), output};
}

std::string registration(const std::string& name) {
  return sql(
      "SELECT binary_path, display_name, description, dependencies, service_type || ' ' ||"
      " start_type || ' ' || error_control || ' ' || account"
      " FROM services WHERE name = '" +
      name + "'");
}

void start(const std::string& name) {
  const std::string state = name == "running" ? "4" : "3";  // SERVICE_RUNNING, SERVICE_STOP_PENDING
  sql("UPDATE services SET current_state = " + state + " WHERE name = '" + name + "'");
}

}  // namespace svcinst
