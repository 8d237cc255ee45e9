// preload DLL COMMAND: runs the command, the DLL being loaded and its threads running
// before its program starts up. Ends with the command's exit code.
#include <windows.h>

#include <cstring>

int main(int argc, char** argv) {
  STARTUPINFOA startup{};
  PROCESS_INFORMATION child{};
  if (argc != 3 || CreateProcessA(nullptr, argv[2], nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                                  nullptr, nullptr, &startup, &child) == FALSE)
    return 1;
  void* const path = VirtualAllocEx(child.hProcess, nullptr, MAX_PATH, MEM_COMMIT, PAGE_READWRITE);
  WriteProcessMemory(child.hProcess, path, argv[1], std::strlen(argv[1]) + 1, nullptr);
  const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(LoadLibraryA));
  WaitForSingleObject(CreateRemoteThread(child.hProcess, nullptr, 0, load, path, 0, nullptr),
                      INFINITE);
  Sleep(50);  // milliseconds; only now may the threads begin
  ResumeThread(child.hThread);
  WaitForSingleObject(child.hProcess, INFINITE);
  DWORD exit_code = 0;
  GetExitCodeProcess(child.hProcess, &exit_code);
  return static_cast<int>(exit_code);
}
