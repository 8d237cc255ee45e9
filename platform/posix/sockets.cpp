#include <unistd.h>

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

namespace {

// The system calls a socket whose connection failed writable as well; Windows does not.
void move_failed(int socket_count, fd_set* writers, fd_set* exceptions) {
  for (SOCKET s = 0; s < socket_count; ++s) {
    if (!FD_ISSET(s, writers)) continue;
    int error = 0;
    socklen_t length = sizeof error;
    if (getsockopt(s, SOL_SOCKET, SO_ERROR, &error, &length) != 0 || error == 0) continue;
    FD_CLR(s, writers);
    FD_SET(s, exceptions);
  }
}

}  // namespace

int select(int socket_count, fd_set* readers, fd_set* writers, fd_set* exceptions,
           const TIMEVAL* timeout) {
  timeval left{timeout->tv_sec, timeout->tv_usec};
  int ready = 0;
  // The kernel takes what has passed from `left`; an interrupted call leaves the sets as they were.
  do {
    ready = select(socket_count, readers, writers, exceptions, &left);
  } while (ready < 0 && errno == EINTR);
  if (ready > 0 && writers != nullptr && exceptions != nullptr)
    move_failed(socket_count, writers, exceptions);
  return ready;
}

int send(SOCKET s, const char* bytes, int length, int flags) {
  int sent = 0;
  do {
    const auto left = static_cast<std::size_t>(length - sent);
    const ssize_t taken =
        ::send(s, static_cast<const void*>(bytes + sent), left, flags | MSG_NOSIGNAL);
    if (taken < 0 && errno == EINTR) continue;
    if (taken < 0) return sent != 0 ? sent : SOCKET_ERROR;
    sent += static_cast<int>(taken);
  } while (sent < length);
  return sent;
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
