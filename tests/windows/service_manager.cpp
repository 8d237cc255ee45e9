#include "tests/windows/service_manager.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <regex>

#include "app/service_handle.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

struct Service {
  explicit Service(const std::string& name)
      : service(OpenServiceA(manager.get(), name.c_str(), SERVICE_ALL_ACCESS)) {}
  ServiceHandle manager{OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS)};
  ServiceHandle service;
};

SERVICE_STATUS_PROCESS status_of(const std::string& name) {
  const Service service(name);
  SERVICE_STATUS_PROCESS status{};
  DWORD needed = 0;
  QueryServiceStatusEx(service.service.get(), SC_STATUS_PROCESS_INFO,
                       reinterpret_cast<BYTE*>(&status), sizeof status, &needed);
  return status;
}

// Polls for 30 seconds at most.
void wait_until(const std::function<bool()>& condition) {
  for (int i = 0; i < 600 && !condition(); ++i) Sleep(50);
}

std::string messages(const std::string& output) {
  static const std::regex prefix(
      R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\|)"
      R"((?:0{5,6}\d{1,2},\d{3},\d{3} us =\+ *\d{1,2},\d{3},\d{3} us\|)?)"  // one to 99 seconds
      "(\\s*\\d+\\|)?\033\\[3[62];40m(?:info|note)\033\\[0m\\] ");
  static const std::regex help("install/uninstall a executable file[^]*service description.\r\n");
  const std::string plain = std::regex_replace(output, prefix, "$1");
  return std::regex_replace(plain, help, "HELP");
}

std::string manager_configuration(const std::string& name) {
  const Service service(name);
  alignas(QUERY_SERVICE_CONFIGA) std::array<BYTE, 8192> buffer{};
  DWORD needed = 0;
  auto* const config = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer.data());
  if (QueryServiceConfigA(service.service.get(), config, buffer.size(), &needed) == FALSE)
    return "none";
  std::string text = std::to_string(config->dwServiceType) + " " +
                     std::to_string(config->dwStartType) + " " +
                     std::to_string(config->dwErrorControl);
  for (const char* value :
       {config->lpBinaryPathName, config->lpDisplayName, config->lpServiceStartName})
    text += "|" + std::string(value);
  QueryServiceConfig2A(service.service.get(), SERVICE_CONFIG_DESCRIPTION, buffer.data(),
                       buffer.size(), &needed);
  const char* description = reinterpret_cast<SERVICE_DESCRIPTIONA*>(buffer.data())->lpDescription;
  return text + "|" + (description != nullptr ? description : "");
}

std::string registry_configuration(const std::string& name) {
  std::string text;
  for (const char* value : {"Type", "Start", "ErrorControl"}) {
    const std::string number = registry_value(name, value);
    if (number.size() != 4) return "none";
    text += (text.empty() ? "" : " ") + std::to_string(number[0]);
  }
  for (const char* value : {"ImagePath", "DisplayName", "ObjectName", "Description"})
    text += "|" + std::string(registry_value(name, value).c_str());
  return text;
}

}  // namespace

std::string path_of(const char* variable) {
  std::array<char, MAX_PATH> path{};
  const char* value = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe)
  GetFullPathNameA(value != nullptr ? value : "", path.size(), path.data(), nullptr);
  return path.data();
}

Result run(const std::string& command_line, const std::string& directory,
           const std::function<void(HANDLE)>& meanwhile) {
  const TempDirectory temporary;
  const std::string file = temporary.path("output");
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  HANDLE output = CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                              &inherited, CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  startup.hStdError = output;
  PROCESS_INFORMATION process{};
  std::string line = command_line;
  if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, directory.c_str(),
                     &startup, &process) == FALSE)
    return {-2, "not started: " + std::to_string(GetLastError())};
  if (meanwhile) meanwhile(process.hProcess);
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD exit_code = 0;
  GetExitCodeProcess(process.hProcess, &exit_code);
  for (HANDLE handle : {process.hThread, process.hProcess, output}) CloseHandle(handle);
  return {static_cast<int>(exit_code), messages(file_bytes(file))};
}

std::string registry_value(const std::string& name, const char* value) {
  const std::string key = R"(System\CurrentControlSet\Services\)" + name;
  std::string data(4096, '\0');
  auto size = static_cast<DWORD>(data.size());
  const auto error = RegGetValueA(HKEY_LOCAL_MACHINE, key.c_str(), value, RRF_RT_ANY | RRF_NOEXPAND,
                                  nullptr, data.data(), &size);
  data.resize(error == ERROR_SUCCESS ? size : 0);
  return data;
}

std::string configuration(const std::string& name) {
  const std::string told = manager_configuration(name);
  const std::string kept = registry_configuration(name);
  return told == kept ? told : told + ", but the registry: " + kept;
}

std::string presence(const std::string& name) {
  const std::string now = configuration(name);
  if (now.starts_with("none")) return now;
  const Service service(name);
  // A configuration that changes nothing: a marked service refuses it.
  constexpr DWORD kKeep = SERVICE_NO_CHANGE;
  const BOOL changed = ChangeServiceConfigA(service.service.get(), kKeep, kKeep, kKeep, nullptr,
                                            nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  if (changed != FALSE) return "there";
  return GetLastError() == ERROR_SERVICE_MARKED_FOR_DELETE ? "marked" : "unchangeable";
}

DWORD state(const std::string& name) {
  return status_of(name).dwCurrentState;
}

void start(const std::string& name, bool paused) {
  const Service service(name);
  SERVICE_STATUS status{};
  // On a machine that is busy a start can fail.
  wait_until([&] {
    StartServiceA(service.service.get(), 0, nullptr);
    return state(name) == SERVICE_RUNNING;
  });
  if (paused) ControlService(service.service.get(), SERVICE_CONTROL_PAUSE, &status);
}

void remove(const std::string& name) {
  if (const DWORD id = status_of(name).dwProcessId; id != 0) {
    HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
    TerminateProcess(process, 0);
    WaitForSingleObject(process, INFINITE);
    CloseHandle(process);
  }
  {
    const Service service(name);
    DeleteService(service.service.get());
  }
  wait_until([&] { return configuration(name) == "none"; });
}

void load_into(HANDLE process, const std::string& dll) {
  void* path = VirtualAllocEx(process, nullptr, dll.size() + 1, MEM_COMMIT, PAGE_READWRITE);
  WriteProcessMemory(process, path, dll.c_str(), dll.size() + 1, nullptr);
  const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "LoadLibraryA")));
  HANDLE thread = CreateRemoteThread(process, nullptr, 0, load, path, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

}  // namespace svcinst
