// The Service Control Manager. Behind these names a database plays it (posix/services.cpp): it
// registers services, it runs none. No call tells why it failed. One thread at a time.
#pragma once

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
struct ServiceHandleTag;
using SC_HANDLE = ServiceHandleTag*;  // never a real address

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

struct SERVICE_STATUS_PROCESS {
  DWORD dwServiceType;
  DWORD dwCurrentState;
  DWORD dwControlsAccepted;
  DWORD dwWin32ExitCode;
  DWORD dwServiceSpecificExitCode;
  DWORD dwCheckPoint;
  DWORD dwWaitHint;  // milliseconds
  DWORD dwProcessId;
  DWORD dwServiceFlags;
};
using LPSERVICE_STATUS_PROCESS = SERVICE_STATUS_PROCESS*;

struct SERVICE_DESCRIPTIONA {
  LPSTR lpDescription;
};

enum SC_STATUS_TYPE { SC_STATUS_PROCESS_INFO = 0 };

inline constexpr DWORD SC_MANAGER_CONNECT = 0x0001;
inline constexpr DWORD SC_MANAGER_CREATE_SERVICE = 0x0002;
inline constexpr DWORD SC_MANAGER_ALL_ACCESS = 0xF003F;

inline constexpr DWORD SERVICE_QUERY_CONFIG = 0x0001;
inline constexpr DWORD SERVICE_CHANGE_CONFIG = 0x0002;
inline constexpr DWORD SERVICE_QUERY_STATUS = 0x0004;
inline constexpr DWORD SERVICE_STOP = 0x0020;
inline constexpr DWORD DELETE = 0x10000;
inline constexpr DWORD SERVICE_ALL_ACCESS = 0xF01FF;

inline constexpr DWORD SERVICE_WIN32_OWN_PROCESS = 0x10;
inline constexpr DWORD SERVICE_AUTO_START = 2;
inline constexpr DWORD SERVICE_ERROR_NORMAL = 1;

inline constexpr DWORD SERVICE_CONFIG_DESCRIPTION = 1;
inline constexpr DWORD SERVICE_CONTROL_STOP = 1;

inline constexpr DWORD SERVICE_STOPPED = 1;
inline constexpr DWORD SERVICE_START_PENDING = 2;
inline constexpr DWORD SERVICE_STOP_PENDING = 3;
inline constexpr DWORD SERVICE_RUNNING = 4;
inline constexpr DWORD SERVICE_CONTINUE_PENDING = 5;
inline constexpr DWORD SERVICE_PAUSE_PENDING = 6;
inline constexpr DWORD SERVICE_PAUSED = 7;

inline constexpr DWORD ERROR_SERVICE_NEVER_STARTED = 1077;

/// machine, database: null. Fails when `access` holds a right to change services and the user can't
/// write the service database. Close the result with CloseServiceHandle.
SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access);

/// Fails for a service that is not there. Close the result with CloseServiceHandle.
SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access);

/// dependencies: names with a NUL each and one more NUL behind the last; null for none. account:
/// null for the local system. group, tag_id, password: null. The service is there, and stopped,
/// once this returns; fails for a name or display name that is not allowed or taken. Close the
/// result with CloseServiceHandle.
SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD access,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR group, LPDWORD tag_id, LPCSTR dependencies,
                         LPCSTR account, LPCSTR password);

/// level: SERVICE_CONFIG_DESCRIPTION. info: a SERVICE_DESCRIPTIONA; with no text it changes
/// nothing, with an empty one it removes the description.
BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD level, LPVOID info);

/// level: SC_STATUS_PROCESS_INFO. buffer: a SERVICE_STATUS_PROCESS of `size` bytes. needed:
/// receives the bytes that one takes.
BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size,
                          LPDWORD needed);

/// control: SERVICE_CONTROL_STOP. Stops a running or paused service and fails for any other; in
/// both cases `status` receives the seven fields as they are then.
BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status);

/// Marks the service for deletion; it is gone when its last handle, of any process, is closed.
BOOL DeleteService(SC_HANDLE service);

/// Fails for a null handle and for one that is closed.
BOOL CloseServiceHandle(SC_HANDLE handle);
// NOLINTEND(readability-identifier-naming)
