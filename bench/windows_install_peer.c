/* Registers a service as the tool does, from the same arguments:
 * windows_install_peer --install --name NAME --disname NAME --binpath PATH */
#include <windows.h>

int main(int argc, char** argv) {
  if (argc != 8) return 255;
  const SC_HANDLE manager = OpenSCManagerA(NULL, NULL, SC_MANAGER_ALL_ACCESS);
  if (manager == NULL) return 255;
  const SC_HANDLE service = CreateServiceA(
      manager, argv[3], argv[5], SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START,
      SERVICE_ERROR_NORMAL, argv[7], NULL, NULL, NULL, NULL, NULL);
  if (service != NULL) CloseServiceHandle(service);
  CloseServiceHandle(manager);
  return service != NULL ? 0 : 255;
}
