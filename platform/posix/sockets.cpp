#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstring>

#include "platform/socket_api.h"

int WSAStartup(WORD version, LPWSADATA data) {
  *data = {version, version};
  return 0;
}

int WSAGetLastError() {
  return errno == EINPROGRESS ? WSAEWOULDBLOCK : errno;
}

int ioctlsocket(SOCKET s, long command, u_long* value) {
  int mode = *value != 0 ? 1 : 0;
  return ioctl(s, static_cast<unsigned long>(command), &mode);
}

int connect(SOCKET s, const sockaddr* name, int name_length) {
  const int result = connect(s, name, static_cast<socklen_t>(name_length));
  if (result != 0 && errno == EINPROGRESS && s >= FD_SETSIZE) errno = EMFILE;
  return result;
}

int select(int socket_count, fd_set* /*readers*/, fd_set* writers, fd_set* exceptions,
           const TIMEVAL* timeout) {
  const timespec limit{timeout->tv_sec, timeout->tv_usec * 1000};
  sigset_t all_signals;
  sigfillset(&all_signals);
  pollfd waiting{socket_count - 1, POLLOUT, 0};
  const int ready = ppoll(&waiting, 1, &limit, &all_signals);
  const bool failed = (waiting.revents & POLLERR) != 0;
  FD_CLR(waiting.fd, failed ? writers : exceptions);
  return ready;
}

int send(SOCKET s, const char* bytes, int length, int flags) {
  const auto size = static_cast<std::size_t>(length);
  return static_cast<int>(send(s, static_cast<const void*>(bytes), size, flags | MSG_NOSIGNAL));
}

int closesocket(SOCKET s) {
  return close(s);
}

namespace svcinst {

ErrorText socket_error_text(int code) {
  ErrorText error{};
  const char* text = strerror_r(code, error.text, sizeof error.text);
  if (text != error.text) std::strncpy(error.text, text, sizeof error.text - 1);
  return error;
}

}  // namespace svcinst
