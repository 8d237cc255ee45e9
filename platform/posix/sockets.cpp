#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <system_error>

#include "platform/socket_api.h"

int WSAStartup(WORD version, LPWSADATA data) {
  *data = {version, version};
  return 0;
}

int WSAGetLastError() {
  return errno;
}

int ioctlsocket(SOCKET s, long command, u_long* value) {
  int mode = *value != 0 ? 1 : 0;
  return ioctl(s, static_cast<unsigned long>(command), &mode);
}

int send(SOCKET s, const char* bytes, int length, int flags) {
  int sent = 0;
  do {
    const void* const rest = bytes + sent;  // with it the call finds the system's function
    const auto left = static_cast<std::size_t>(length - sent);
    const ssize_t taken = send(s, rest, left, flags | MSG_NOSIGNAL);
    if (taken < 0 && errno != EINTR) return SOCKET_ERROR;
    sent += static_cast<int>(std::max<ssize_t>(taken, 0));
  } while (sent < length);
  return sent;
}

// close() could end a thread that is cancelled, which the destructors that call this don't bear.
int closesocket(SOCKET s) {
  return static_cast<int>(syscall(SYS_close, s));
}

namespace svcinst {

int select(int /*socket_count*/, fd_set* /*readers*/, fd_set* writers, fd_set* exceptions,
           const TIMEVAL* timeout) {
  const timespec limit{timeout->tv_sec, timeout->tv_usec * 1000};
  sigset_t all_signals;
  sigfillset(&all_signals);
  pollfd waiting{writers->fd_array[0], POLLOUT, 0};
  const int ready = ppoll(&waiting, 1, &limit, &all_signals);
  // A port that the system hands out, where nobody listens, may be handed to the caller itself.
  sockaddr_in ends[2] = {};
  socklen_t size = sizeof ends[0];
  getsockname(waiting.fd, reinterpret_cast<sockaddr*>(&ends[0]), &size);
  getpeername(waiting.fd, reinterpret_cast<sockaddr*>(&ends[1]), &size);
  const bool to_itself = std::memcmp(&ends[0], &ends[1], size) == 0;
  const bool failed = to_itself || (waiting.revents & POLLERR) != 0;
  FD_ZERO(failed ? writers : exceptions);
  return ready;
}

std::string socket_error_text(int code) {
  return std::generic_category().message(code);
}

}  // namespace svcinst
