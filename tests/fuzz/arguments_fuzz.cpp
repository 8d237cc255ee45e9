// Any arguments, one a line, through the whole program. The first line says how the service manager
// answers: its last byte which call fails, every byte one status.
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "app/program.h"
#include "tests/support/scripted_services.h"

using namespace svcinst;

namespace {

ScriptedServices script_of(const std::string& answers) {
  ScriptedServices script;
  for (const char answer : answers) {
    const auto byte = static_cast<unsigned char>(answer);
    script.failing_call = byte % 16;
    script.statuses.push_back({byte & 7U, byte >> 3 & 3U, (byte >> 5) * 1000U});
  }
  return script;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  std::getline(lines, line);
  play(script_of(line));
  std::vector<std::string> arguments = {"svcinst"};
  while (std::getline(lines, line)) arguments.push_back(line);
  std::vector<const char*> argv;
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  const int result = run_program(static_cast<int>(argv.size()), argv.data());

  bool done = false;
  for (const std::string& call : call_log()) {
    if (call == "-a closed handle") std::abort();
    done |= call == "delete" || (call.starts_with("create(") && call.ends_with(")"));
  }
  // What was opened is closed, and the exit code tells whether something was created or deleted.
  if (open_handles() != 0 || result != (done ? 0 : -1)) std::abort();
  return 0;
}
