// The logger's network sinks over Windows Sockets.
#include <gtest/gtest.h>

#include "log/log.h"
#include "log/log_settings.h"
#include "platform/socket_api.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

struct Peer {
  explicit Peer(int type) : handle(socket(AF_INET, type, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = inet_addr("127.0.0.1");
    int length = sizeof address;
    bind(handle, reinterpret_cast<sockaddr*>(&address), length);
    getsockname(handle, reinterpret_cast<sockaddr*>(&address), &length);
    port = ntohs(address.sin_port);
  }
  SOCKET handle;
  std::uint16_t port = 0;
};

std::string received(SOCKET from) {
  std::string bytes(100, '\0');
  const int length = recv(from, bytes.data(), 100, 0);
  return length < 0 ? "nothing" : bytes.substr(0, static_cast<std::size_t>(length));
}

TEST(Network, RecordsReachTheirPeers) {
  WSADATA data;
  ASSERT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
  const Peer tcp(SOCK_STREAM);
  const Peer udp(SOCK_DGRAM);
  const std::string prefix = "[\033[31;40meror\033[0m] ";
  const CapturedStdout complaints;
  set_time(false);
  const DWORD start = GetTickCount();
  set_log2tcp("127.0.0.1", tcp.port);  // refused: it does not listen
  EXPECT_EQ(log_settings.tcp_socket, -1);
  EXPECT_LT(GetTickCount() - start, 3000U);
  set_log2udp("255.255.255.255", udp.port);
  EXPECT_EQ(log_settings.udp_socket, -1);

  listen(tcp.handle, 1);
  set_log2tcp("127.0.0.1", tcp.port);
  log_error("by TCP");
  EXPECT_EQ(received(accept(tcp.handle, nullptr, nullptr)), prefix + "by TCP");
  set_log2udp("127.0.0.1", udp.port);
  log_error("by UDP");
  EXPECT_EQ(received(udp.handle), prefix + "by UDP");
  EXPECT_EQ(complaints.bytes(), "");
}

}  // namespace
}  // namespace svcinst
