// The machine that the program is tried on, without the program's help.
#pragma once

#include <string>
#include <vector>

namespace svcinst {

struct Result {
  int exit_code;
  std::string output;
};

/// The program, and one that can be registered as a service: paths from the current directory, in
/// which the plug-ins are, too.
extern const std::string program;
extern const std::string service_program;

/// Libraries that say hello when they are loaded into the program.
extern const std::vector<std::string> plugins;

/// Runs a line of an install script.
Result run_line(const std::string& line);

/// Runs the program without arguments, a plug-in being loaded before it starts up.
Result run_with(const std::string& plugin);

/// "path|display name|description|dependency|type start error account"; empty for no service.
std::string registration(const std::string& name);

/// Starts the service "svcinst-running", or "svcinst-hung", which is to stop soon and never does.
void start(const std::string& name);

}  // namespace svcinst
