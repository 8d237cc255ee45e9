#include "log/network_sink.h"

#include <cstdio>
#include <utility>

#include "log/log_settings.h"
#include "platform/socket_api.h"

namespace svcinst {
namespace {

struct SocketOwner {
  SOCKET handle;

  SocketOwner& operator=(SocketOwner&&) = delete;  // nor any copy
  ~SocketOwner() {
    if (handle != INVALID_SOCKET) closesocket(handle);
  }
  std::int32_t release() {
    return static_cast<std::int32_t>(std::exchange(handle, INVALID_SOCKET));
  }
};

struct SocketOption {
  const char* word;  // for the report of a failure
  int name;
  int value;
  bool tcp;
  bool udp;
};

constexpr int kBufferBytes = 512 * 1024;

// "broacast" is what readers of the report look for.
constexpr SocketOption kOptions[] = {{"reuseaddr", SO_REUSEADDR, 0, true, true},
                                     {"broacast", SO_BROADCAST, 0, false, true},
                                     {"rcvbuf", SO_RCVBUF, kBufferBytes, true, true},
                                     {"sndbuf", SO_SNDBUF, kBufferBytes, true, true},
                                     {"keepalive", SO_KEEPALIVE, 1, true, false}};

void set_option(SOCKET socket, const SocketOption& option) {
  const auto* value = reinterpret_cast<const char*>(&option.value);
  if (setsockopt(socket, SOL_SOCKET, option.name, value, sizeof option.value) == 0) return;
  const std::string error = socket_error_text(WSAGetLastError());
  std::printf("setsockopt %s with error info %s!\n", option.word, error.c_str());
}

SOCKET create_socket(SocketKind kind) {
  return kind == SocketKind::tcp ? socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)
                                 : socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
}

void set_options(SOCKET socket, SocketKind kind) {
  for (const SocketOption& option : kOptions)
    if (kind == SocketKind::tcp ? option.tcp : option.udp) set_option(socket, option);
}

// True when the connection that is under way stands within a second.
bool wait_until_connected(SOCKET socket) {
  fd_set writable;
  fd_set failed;
  FD_ZERO(&writable);
  FD_ZERO(&failed);
  FD_SET(socket, &writable);
  FD_SET(socket, &failed);
  TIMEVAL one_second{1, 0};
  if (select(static_cast<int>(socket) + 1, nullptr, &writable, &failed, &one_second) < 1)
    return false;
  return FD_ISSET(socket, &writable) != 0;
}

bool connect_to(SOCKET socket, const char* address, std::uint16_t port) {
  sockaddr_in peer{};
  peer.sin_family = AF_INET;
  peer.sin_addr.s_addr = inet_addr(address);
  peer.sin_port = htons(port);
  if (connect(socket, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) == 0) return true;
  return WSAGetLastError() == WSAEWOULDBLOCK && wait_until_connected(socket);
}

void set_blocking(SOCKET socket, bool blocking) {
  u_long non_blocking = blocking ? 0 : 1;
  ioctlsocket(socket, static_cast<long>(FIONBIO), &non_blocking);
}

}  // namespace

void open_peer(const char* address, std::uint16_t port, SocketKind kind) {
  std::int32_t& field = kind == SocketKind::tcp ? log_settings.tcp_socket : log_settings.udp_socket;
  const auto is_wanted = [&field] { return log_settings.enable_log && field == kNoSocket; };
  {
    const LogLock lock;
    if (!is_wanted()) return;
  }
  SocketOwner connected{static_cast<SOCKET>(open_log_socket(address, port, kind))};
  const LogLock lock;
  if (is_wanted()) field = connected.release();
}

std::int32_t open_log_socket(const char* address, std::uint16_t port, SocketKind kind) {
  look_up_functions();
  WSADATA data;
  if (WSAStartup(MAKEWORD(2, 2), &data) != 0) return kNoSocket;
  SocketOwner socket{create_socket(kind)};
  set_options(socket.handle, kind);
  set_blocking(socket.handle, false);
  if (!connect_to(socket.handle, address, port)) return kNoSocket;
  set_blocking(socket.handle, true);
  return socket.release();
}

void send_to_peer(std::int32_t socket, TextView text) {
  send(static_cast<SOCKET>(socket), text.data(), static_cast<int>(text.size()), 0);
}

}  // namespace svcinst
