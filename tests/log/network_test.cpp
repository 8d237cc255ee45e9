// Records on their way to TCP and UDP peers on this machine, and sinks that fail.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>

#include "platform/socket_api.h"
#include "tests/log/log_fixture.h"

namespace svcinst {
namespace {

struct OwnedSocket {
  explicit OwnedSocket(int owned) : descriptor(owned) {}
  OwnedSocket(const OwnedSocket&) = delete;
  OwnedSocket& operator=(const OwnedSocket&) = delete;
  ~OwnedSocket() { close(descriptor); }
  /// What one call receives, up to `most` bytes; "nothing" when there is nothing.
  [[nodiscard]] std::string receive(std::size_t most = 10000, int flags = MSG_DONTWAIT) const {
    std::string bytes(most, '\0');
    const ssize_t length = recv(descriptor, bytes.data(), most, flags);
    return length < 0 ? "nothing" : bytes.substr(0, static_cast<std::size_t>(length));
  }

  int descriptor;
};

/// Has a port of this machine; a stream socket refuses connections unless it listens.
struct Peer : OwnedSocket {
  explicit Peer(int type, std::uint16_t connect_to = 0) : OwnedSocket(socket(AF_INET, type, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const name = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(descriptor, name, length), 0);
    getsockname(descriptor, name, &length);
    port = ntohs(address.sin_port);
    address.sin_port = htons(connect_to);
    if (connect_to != 0) {
      EXPECT_EQ(connect(descriptor, name, length), 0);
    }
  }

  std::uint16_t port = 0;
};

std::ptrdiff_t open_descriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class NetworkTest : public LogTest {
 protected:
  NetworkTest() {
    listen(tcp.descriptor, 0);
    set_time(false);
  }
  ~NetworkTest() override {
    for (const int socket : {log_settings.tcp_socket, log_settings.udp_socket})
      if (socket != -1) close(socket);
  }

  [[nodiscard]] int accept_one() const { return accept(tcp.descriptor, nullptr, nullptr); }

  const Peer tcp{SOCK_STREAM};
  const Peer udp{SOCK_DGRAM};
};

int option(int socket, int name) {
  int value = -1;
  socklen_t length = sizeof value;
  getsockopt(socket, SOL_SOCKET, name, &value, &length);
  return value;
}

TEST_F(NetworkTest, DeliversToTheFirstOpenSinkOnly) {
  const CapturedStdout console;
  const std::string start = "[" + info_tag;
  set_auto_endline(true);
  log_info("1");
  log_it("raw 1");
  open_file("log");
  log_info("2");
  set_log2tcp("127.0.0.1", tcp.port);
  const OwnedSocket connection(accept_one());
  log_info("3");
  EXPECT_EQ(log_info("%c", 0), 20);
  EXPECT_EQ(connection.receive(40, MSG_WAITALL), start + "3" + start + std::string(1, '\0'));
  log_it("raw 2");
  set_log2udp("127.0.0.1", udp.port);
  log_info("4");
  log_info("5");
  log_it("raw 3");
  EXPECT_EQ(udp.receive(), start + "4");
  EXPECT_EQ(udp.receive(), start + "5");
  EXPECT_EQ(udp.receive() + connection.receive(), "nothingnothing");
  std::fflush(log_settings.log_file);
  EXPECT_EQ(file_bytes(path("log")), start + "2raw 2raw 3");
  EXPECT_EQ(console.bytes(), start + "1\nraw 1\n");
}

TEST_F(NetworkTest, PreparesItsSocketsAndKeepsThem) {
  set_log2tcp("127.0.0.1", tcp.port);
  set_log2udp("127.0.0.1", udp.port);
  const int sockets[] = {log_settings.tcp_socket, log_settings.udp_socket};
  set_log2tcp("127.0.0.1", tcp.port);
  set_log2udp("127.0.0.1", tcp.port);
  EXPECT_EQ(log_settings.tcp_socket, sockets[0]);
  EXPECT_EQ(log_settings.udp_socket, sockets[1]);
  const int size = 512 * 1024;
  for (const int name : {SO_RCVBUF, SO_SNDBUF})
    setsockopt(udp.descriptor, SOL_SOCKET, name, &size, sizeof size);
  for (const int socket : sockets) {
    EXPECT_EQ(option(socket, SO_TYPE), socket == sockets[0] ? SOCK_STREAM : SOCK_DGRAM);
    EXPECT_EQ(option(socket, SO_REUSEADDR), 0);
    EXPECT_EQ(option(socket, SO_BROADCAST), 0);
    EXPECT_EQ(option(socket, SO_KEEPALIVE), socket == sockets[0] ? 1 : 0);
    EXPECT_EQ(option(socket, SO_RCVBUF), option(udp.descriptor, SO_RCVBUF));
    EXPECT_EQ(option(socket, SO_SNDBUF), option(udp.descriptor, SO_SNDBUF));
    EXPECT_EQ(fcntl(socket, F_GETFL) & O_NONBLOCK, 0);
  }
}

TEST_F(NetworkTest, ForgetsAnAttemptThatFailed) {
  using std::chrono::steady_clock;
  const Peer refusing(SOCK_STREAM);
  const Peer waiting(SOCK_STREAM, tcp.port);  // now the listener takes no other
  const auto open_before = open_descriptors();
  set_log2tcp("127.0.0.1", refusing.port);
  for (const auto set : {set_log2tcp, set_log2udp}) {
    set("255.255.255.255", 9);
    set("no address", 9);
  }
  const auto start = steady_clock::now();
  set_log2tcp("127.0.0.1", tcp.port);
  const std::chrono::duration<double> seconds = steady_clock::now() - start;
  EXPECT_TRUE(seconds.count() > 0.9 && seconds.count() < 1.9) << seconds.count();
  EXPECT_EQ(log_settings.tcp_socket + log_settings.udp_socket, -2);
  for (int file = 0; file < 2; ++file)
    EXPECT_EQ(written_by([] { log_info("x"); }), "[" + info_tag + "x");
  const OwnedSocket accepted(accept_one());
  set_log2tcp("127.0.0.1", tcp.port);
  EXPECT_NE(log_settings.tcp_socket, kNoSocket);
  EXPECT_EQ(open_descriptors(), open_before + 3) << "one log file, a peer and a socket";
}

TEST_F(NetworkTest, ReportsOptionsThatCannotBeSet) {
  const CapturedStdout console;
  rlimit files{};
  getrlimit(RLIMIT_NOFILE, &files);
  const rlimit none{0, files.rlim_max};
  const std::uint16_t port = tcp.port;  // the check for undefined behaviour looks with a file
  setrlimit(RLIMIT_NOFILE, &none);      // so that there is no socket
  for (const auto set : {set_log2tcp, set_log2udp}) set("127.0.0.1", port);
  setrlimit(RLIMIT_NOFILE, &files);
  EXPECT_EQ(log_settings.tcp_socket + log_settings.udp_socket, -2);
  std::string reports;
  for (const std::string word :
       {"reuseaddr", "rcvbuf", "sndbuf", "keepalive", "reuseaddr", "broacast", "rcvbuf", "sndbuf"})
    reports.append("setsockopt " + word + " with error info Bad file descriptor!\n");
  EXPECT_EQ(console.bytes(), reports);
}

TEST_F(NetworkTest, OutlivesASinkThatFails) {
  const CapturedStdout console;
  set_flush(true);
  const auto log_three = [] {
    for (int i = 0; i < 3; ++i) EXPECT_EQ(log_info("x"), 20);
  };
  const int read_only = open("/dev/null", O_RDONLY);
  dup2(read_only, STDOUT_FILENO);
  close(read_only);
  log_three();
  set_log2file("/dev/full", 9);
  log_three();
  set_log2tcp("127.0.0.1", tcp.port);
  {
    const OwnedSocket connection(accept_one());
    const linger reset{1, 0};
    setsockopt(connection.descriptor, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  }
  log_three();
  set_log2udp("127.0.0.1", tcp.port);  // where no datagram socket is
  log_three();
}

}  // namespace
}  // namespace svcinst
