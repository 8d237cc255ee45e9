// The Service Control Manager. Behind these names a database plays it (posix/services.cpp): it
// registers services, it runs none. It knows no rights but the user's to write that database. No
// call tells why it failed. One thread at a time; close a manager after its services.
#pragma once

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
struct ServiceHandleTag;
using SC_HANDLE = ServiceHandleTag*;

struct SERVICE_STATUS {
  DWORD dwServiceType;
  DWORD dwCurrentState;
  DWORD dwControlsAccepted;
  DWORD dwWin32ExitCode;
  DWORD dwServiceSpecificExitCode;
  DWORD dwCheckPoint;
  DWORD dwWaitHint;  // milliseconds
};
using LPSERVICE_STATUS = SERVICE_STATUS*;

struct SERVICE_STATUS_PROCESS : SERVICE_STATUS {
  DWORD dwProcessId;
  DWORD dwServiceFlags;
};

struct SERVICE_DESCRIPTIONA {
  LPSTR lpDescription;
};

enum SC_STATUS_TYPE { SC_STATUS_PROCESS_INFO = 0 };

inline constexpr DWORD SC_MANAGER_ALL_ACCESS = 0xF003F;

inline constexpr DWORD SERVICE_CHANGE_CONFIG = 0x0002;
inline constexpr DWORD SERVICE_ALL_ACCESS = 0xF01FF;

inline constexpr DWORD SERVICE_WIN32_OWN_PROCESS = 0x10;
inline constexpr DWORD SERVICE_AUTO_START = 2;
inline constexpr DWORD SERVICE_ERROR_NORMAL = 1;

inline constexpr DWORD SERVICE_CONFIG_DESCRIPTION = 1;
inline constexpr DWORD SERVICE_CONTROL_STOP = 1;

inline constexpr DWORD SERVICE_STOPPED = 1;
inline constexpr DWORD SERVICE_STOP_PENDING = 3;
inline constexpr DWORD SERVICE_RUNNING = 4;
inline constexpr DWORD SERVICE_PAUSED = 7;

/// machine, database: null. Makes the database where there is none. Fails when the user can't write
/// it, when it is damaged, and when it holds anything else. Close the result with
/// CloseServiceHandle, as all of them.
SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access);

/// Fails for a service that is not there.
SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access);

/// dependencies: names with a NUL each and one more NUL behind the last; null for none. account:
/// null for the local system. group, tag_id, password: null. The service is there, and stopped,
/// once this returns; fails for a name or display name that is not allowed or taken, whatever the
/// case of its ASCII letters.
SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password);

/// level: SERVICE_CONFIG_DESCRIPTION. info: a SERVICE_DESCRIPTIONA. Fails for a null service.
BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD level, LPVOID info);

/// level: SC_STATUS_PROCESS_INFO. buffer: a SERVICE_STATUS_PROCESS of `size` bytes. needed:
/// receives the bytes that one takes.
BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size,
                          LPDWORD needed);

/// control: SERVICE_CONTROL_STOP. Stops a running or paused service, and `status` receives the
/// fields as they are then; fails for any other.
BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status);

/// Removes the service at once; whoever has a handle to it finds it gone.
BOOL DeleteService(SC_HANDLE service);

/// Succeeds always; `handle` is no handle any more.
BOOL CloseServiceHandle(SC_HANDLE handle);
// NOLINTEND(readability-identifier-naming)
