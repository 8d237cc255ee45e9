// What the suite does itself: running programs, and looking at the Service Control Manager and its
// registry keys without the tool's help.
#pragma once

#include <functional>
#include <string>

#include "platform/service_api.h"

namespace svcinst {

struct Result {
  int exit_code;
  std::string output;  // records without their prefixes; the help text is "HELP\r\n"
};

/// The full path that an environment variable of the suite names.
std::string path_of(const char* variable);

/// Runs a command line, `directory` being the current one, and waits for its end; meanwhile calls
/// `meanwhile` once with the handle of its process.
Result run(const std::string& command_line, const std::string& directory,
           const std::function<void(HANDLE)>& meanwhile = {});

/// "type start error|path|display name|account|description" as the manager tells it, or "none";
/// what the registry holds comes behind it when that differs.
std::string configuration(const std::string& name);

/// The bytes of one value of the service's registry key, NULs included; none when there is no
/// value.
std::string registry_value(const std::string& name, const char* value);

/// "none", or what happens to the name: "marked" for deletion, or "there".
std::string presence(const std::string& name);

/// The service's state; 0 when there is none.
DWORD state(const std::string& name);

/// Starts the service and waits until it is running, or pauses it then.
void start(const std::string& name, bool paused);

/// Ends the service's process, if there is one, and deletes the service.
void remove(const std::string& name);

/// Loads a DLL into a process.
void load_into(HANDLE process, const std::string& dll);

}  // namespace svcinst
