/* A DLL that uses the logger of the program that it is loaded into. */
#include <windows.h>

#include "log/log.h"

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
  (void)instance;
  (void)reserved;
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  set_cpu(true);
  set_count(true);
  return log_note("%s from the plug-in\n", "hello") > 0;
}
