// The Windows Sockets names over the system's own sockets. `socket`, `setsockopt`, `inet_addr`,
// `htons` and `connect` are the system's; the functions below make up the differences. Error codes
// are errno's.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/types.h>

#include <cerrno>
#include <string>

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
using SOCKET = int;

struct WSADATA {
  WORD wVersion;
  WORD wHighVersion;
};
using LPWSADATA = WSADATA*;

struct TIMEVAL {
  long tv_sec;
  long tv_usec;
};

inline constexpr SOCKET INVALID_SOCKET = -1;
inline constexpr int SOCKET_ERROR = -1;
inline constexpr int WSAEWOULDBLOCK = EINPROGRESS;  // of connect()

constexpr WORD MAKEWORD(unsigned low, unsigned high) {
  return static_cast<WORD>((low & 0xFF) | (high & 0xFF) << 8);
}

/// The sockets are always there. Returns 0 and gives back the version asked for.
int WSAStartup(WORD version, LPWSADATA data);

/// The code of the last failed call.
int WSAGetLastError();

/// command: FIONBIO. value: 0 for blocking mode. Returns 0 or SOCKET_ERROR.
int ioctlsocket(SOCKET s, long command, u_long* value);

/// In blocking mode it waits until the system has taken all `length` bytes, whatever signals arrive
/// meanwhile. A call whose text is a `char*` finds it, and not the system's. Returns the bytes sent
/// or SOCKET_ERROR.
int send(SOCKET s, const char* bytes, int length, int flags);

/// Returns 0 or SOCKET_ERROR.
int closesocket(SOCKET s);
// NOLINTEND(readability-identifier-naming)

// The system's type and macros have room for numbers below 1,024 only.
#undef FD_ZERO
#undef FD_SET
#undef FD_ISSET

namespace svcinst {

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
/// As on Windows, a count and a list of sockets, whatever their numbers. Holds one.
struct fd_set {
  u_int fd_count;
  SOCKET fd_array[1];
};

inline void FD_ZERO(fd_set* set) {
  set->fd_count = 0;
}

inline void FD_SET(SOCKET s, fd_set* set) {
  *set = {1, {s}};
}

inline int FD_ISSET(SOCKET s, const fd_set* set) {
  return set->fd_count == 1 && set->fd_array[0] == s ? 1 : 0;
}

/// Waits for one socket, which is in both sets, until its connection stands or has failed, as one
/// with itself has: it then stays in `writers` or in `exceptions` only. Signals are held back
/// meanwhile. Returns 1, 0 after `timeout`, or SOCKET_ERROR; the sets are then worth nothing.
int select(int socket_count, fd_set* readers, fd_set* writers, fd_set* exceptions,
           const TIMEVAL* timeout);
// NOLINTEND(readability-identifier-naming)

/// Nothing to do here: functions are looked up before the start.
inline void look_up_functions() {}

/// The system's text for `code`, a code of WSAGetLastError.
std::string socket_error_text(int code);

}  // namespace svcinst
