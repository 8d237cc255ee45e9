// Records on their way to TCP and UDP peers on this machine.
#include "tests/log/log_fixture.h"
#include "tests/support/peer.h"

namespace svcinst {
namespace {

class NetworkTest : public LogTest {
 protected:
  NetworkTest() {
    listen(tcp.handle, 1);
    set_time(false);
  }
  ~NetworkTest() override {
    closesocket(static_cast<SOCKET>(log_settings.tcp_socket));
    closesocket(static_cast<SOCKET>(log_settings.udp_socket));
  }

  const Peer tcp{SOCK_STREAM};
  const Peer udp{SOCK_DGRAM};
};

int option(SOCKET socket, int name) {
  int value = 0;  // a system may fill one byte only
  socklen_t length = sizeof value;
  getsockopt(socket, SOL_SOCKET, name, reinterpret_cast<char*>(&value), &length);
  return value;
}

TEST_F(NetworkTest, DeliversToTheFirstOpenSinkOnly) {
  const CapturedStdout console;
  const std::string start = "[" + info_tag;
  const Peer refusing(SOCK_STREAM);
  set_auto_endline(true);
  set_log2tcp("127.0.0.1", refusing.port);
  set_log2udp("255.255.255.255", udp.port);
  log_info("1");
  log_it("raw 1");
  open_file("log");
  log_info("2");
  set_log2tcp("127.0.0.1", tcp.port);
  const OwnedSocket connection(tcp.accept_one());
  log_info("3");
  EXPECT_EQ(log_info("%c", 0), 20);
  log_it("raw 2");
  set_log2udp("127.0.0.1", udp.port);
  for (const char* record : {"4", "5"}) log_info(record);
  log_it("raw 3");
  const auto sender = static_cast<SOCKET>(log_settings.udp_socket);
  EXPECT_EQ(send(sender, "end", 3, 0), 3);
  for (const std::string& datagram : {start + "4", start + "5", std::string("end")})
    EXPECT_EQ(udp.receive(), datagram);
  closesocket(static_cast<SOCKET>(log_settings.tcp_socket));
  std::string stream;
  for (std::string more; !(more = connection.receive()).empty();) stream += more;
  EXPECT_EQ(stream, start + "3" + start + std::string(1, '\0'));
  std::fflush(log_settings.log_file);
  EXPECT_EQ(file_bytes(path("log")), start + "2raw 2raw 3");
  EXPECT_EQ(console.bytes(), start + "1\nraw 1\n");
}

TEST_F(NetworkTest, PreparesItsSocketsAndKeepsThem) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    set_log2tcp("127.0.0.1", tcp.port);
    set_log2udp("127.0.0.1", attempt == 0 ? udp.port : tcp.port);
    EXPECT_EQ(option(udp.handle, SO_ERROR), 0);
  }
  log_info("x");
  EXPECT_EQ(udp.receive(), "[" + info_tag + "x");
  const std::string error = socket_error_text(5).text;  // which both systems know
  EXPECT_TRUE(error.size() > 5 && error.back() > ' ') << error;
  const int size = 512 * 1024;
  for (const int name : {SO_RCVBUF, SO_SNDBUF})
    setsockopt(udp.handle, SOL_SOCKET, name, reinterpret_cast<const char*>(&size), sizeof size);
  for (const bool is_tcp : {true, false}) {
    const auto socket =
        static_cast<SOCKET>(is_tcp ? log_settings.tcp_socket : log_settings.udp_socket);
    EXPECT_EQ(option(socket, SO_TYPE), is_tcp ? SOCK_STREAM : SOCK_DGRAM);
    EXPECT_EQ(option(socket, SO_REUSEADDR) + option(socket, SO_BROADCAST), 0);
    EXPECT_EQ(option(socket, SO_KEEPALIVE) == 1, is_tcp);
    EXPECT_EQ(option(socket, SO_RCVBUF), option(udp.handle, SO_RCVBUF));
    EXPECT_EQ(option(socket, SO_SNDBUF), option(udp.handle, SO_SNDBUF));
  }
}

}  // namespace
}  // namespace svcinst
