// Peers of the network sinks, on this machine, in the words of both systems' sockets.
#pragma once

#include <cstdint>
#include <string>

#include "platform/socket_api.h"

namespace svcinst {

struct OwnedSocket {
  explicit OwnedSocket(SOCKET owned) : handle(owned) {}
  OwnedSocket(const OwnedSocket&) = delete;
  OwnedSocket& operator=(const OwnedSocket&) = delete;
  ~OwnedSocket() { closesocket(handle); }
  /// Waits for a datagram, or for some bytes of a stream; empty at its end.
  [[nodiscard]] std::string receive() const {
    char bytes[1000];
    return {bytes, static_cast<std::size_t>(recv(handle, bytes, sizeof bytes, 0))};
  }

  SOCKET handle;
};

/// Has a port of this machine. A stream socket takes one connection that is not accepted yet.
struct Peer : OwnedSocket {
  explicit Peer(int type) : OwnedSocket(new_socket(type)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = inet_addr("127.0.0.1");
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    static_cast<void>(bind(handle, name, length));
    getsockname(handle, name, &length);
    port = ntohs(address.sin_port);
    listen(handle, 0);  // without effect on a datagram socket
  }
  [[nodiscard]] SOCKET accept_one() const { return accept(handle, nullptr, nullptr); }

  std::uint16_t port;

 private:
  static SOCKET new_socket(int type) {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    return socket(AF_INET, type, 0);
  }
};

}  // namespace svcinst
