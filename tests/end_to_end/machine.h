// The machine that the program is tried on, without the program's help.
#pragma once

#include <string>

namespace svcinst {

struct Result {
  int exit_code;
  std::string output;
};

/// Runs a line of an install script.
Result run_line(const std::string& line);

/// "path|display name|description|dependency|type start error account"; empty for no service.
std::string registration(const std::string& name);

/// Starts the service "running", or "hung", which is to stop soon and never does.
void start(const std::string& name);

}  // namespace svcinst
