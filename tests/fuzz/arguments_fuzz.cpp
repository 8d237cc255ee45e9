// Any arguments, one a line, through the whole program. The first line says how the service manager
// answers: each byte is a status, the last one also the number of the call that fails.
#include <cassert>
#include <sstream>
#include <string>
#include <vector>

#include "app/program.h"
#include "tests/support/scripted_services.h"

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  std::getline(lines, line);
  scripted_clock = {};
  scripted_services = {};
  for (const char answer : line) {
    const auto byte = static_cast<unsigned char>(answer);
    scripted_services.failing_call = byte % 16;
    scripted_services.statuses.push_back({byte & 7U, byte >> 3 & 3U, (byte >> 5) * 1000U});
  }
  std::vector<std::string> arguments = {"svcinst"};
  while (std::getline(lines, line)) arguments.push_back(line);
  std::vector<const char*> argv;
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  const int result = run_program(static_cast<int>(argv.size()), argv.data());
  assert(result == (scripted_services.changed ? 0 : -1));
  return 0;
}
