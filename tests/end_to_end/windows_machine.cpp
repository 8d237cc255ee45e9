// The real Service Control Manager, which keeps its services in the registry, and cmd.
#include <windows.h>

#include <cstdio>

#include "tests/end_to_end/machine.h"

namespace svcinst {

const std::string program = "svcinst.exe";
const std::string service_program = "end_to_end_service.exe";
const std::vector<std::string> plugins = {"example_plugin", "early_plugin"};

Result run_line(const std::string& line) {
  std::FILE* const shell = _popen(('"' + line + '"').c_str(), "rb");
  std::string output;
  for (int c = std::fgetc(shell); c != EOF; c = std::fgetc(shell)) output += static_cast<char>(c);
  return {_pclose(shell), output};
}

Result run_with(const std::string& plugin) {
  return run_line("end_to_end_preload.exe lib" + plugin + ".dll " + program);
}

std::string registration(const std::string& name) {
  const std::string key = R"(System\CurrentControlSet\Services\)" + name;
  const auto text = [&key](const char* value) {
    char data[4096] = "";
    DWORD size = sizeof data;
    RegGetValueA(HKEY_LOCAL_MACHINE, key.c_str(), value, RRF_RT_ANY | RRF_NOEXPAND, nullptr, data,
                 &size);
    return std::string(data);
  };
  const auto number = [&text](const char* value) { return std::to_string(*text(value).c_str()); };
  if (text("ImagePath").empty()) return "";
  return text("ImagePath") + '|' + text("DisplayName") + '|' + text("Description") + '|' +
         text("DependOnService") + '|' + number("Type") + ' ' + number("Start") + ' ' +
         number("ErrorControl") + ' ' + text("ObjectName");
}

void start(const std::string& name) {
  run_line("net start " + name);
}

}  // namespace svcinst
