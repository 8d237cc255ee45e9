// The logger when its sinks fail or change under it. Also run under the check for data races.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <sstream>
#include <thread>

#include "tests/log/log_fixture.h"

using namespace svcinst;

TEST_F(LogTest, EightThreadsSplitAndLoseNoRecordWhileTheFileIsOpenedAgain) {
  set_flush(true);
  open_file("log");
  {
    std::vector<std::jthread> threads;
    for (char letter = 'a'; letter < 'i'; ++letter) {
      threads.emplace_back([text = std::string(100, letter) + '\n'] {
        for (int i = 0; i < 3000; ++i)
          i % 2 ? log_info("%s", text.c_str()) : log_it("[%s%s", info_tag.c_str(), text.c_str());
      });
    }
    for (int i = 0; i < 1000; ++i) open_file("log");
  }
  std::istringstream records(file_bytes(folder.path("log")));
  int count = 0;
  for (std::string record; std::getline(records, record); ++count)
    EXPECT_EQ(record, "[" + info_tag + std::string(100, record.back()));
  EXPECT_EQ(count, 8 * 3000);
}

void limit(auto resource, const rlimit& limits) {
  setrlimit(resource, &limits);
}

TEST_F(LogTest, ASinkThatFailsLosesItsRecordsToNoOther) {
  const Peer peer(SOCK_STREAM);
  EXPECT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_IGN) << "standard output may be such a pipe";
  set_flush(true);
  CaptureStdout();
  set_log2file("/dev/full", 9);
  EXPECT_EQ(log_info("x"), 20);
  open_file("log");
  limit(RLIMIT_FSIZE, {30, RLIM_INFINITY});
  for (int i = 0; i < 3; ++i) EXPECT_EQ(log_info("x"), 20);
  limit(RLIMIT_FSIZE, {RLIM_INFINITY, RLIM_INFINITY});
  set_log2file("", 0);  // from here on the console would be next
  set_log2tcp("127.0.0.1", peer.port);
  close(peer.accept_one());
  for (int i = 0; i < 2; ++i) EXPECT_EQ(log_info("x"), 20);  // the peer refuses the first one
  set_log2udp("127.0.0.1", peer.port);                       // where no datagram socket is
  for (int i = 0; i < 2; ++i) EXPECT_EQ(log_info("x"), 20);
  EXPECT_EQ(GetCapturedStdout(), "");
}

TEST_F(LogTest, SetsItsSocketsOptionsOrReportsThem) {
  const Peer peer(SOCK_STREAM);
  set_log2tcp("127.0.0.1", peer.port);
  for (const auto& [name, wanted] : {std::pair(SO_KEEPALIVE, 1), std::pair(SO_REUSEADDR, 0)}) {
    int value = -1;
    socklen_t size = sizeof value;
    getsockopt(log_settings.tcp_socket, SOL_SOCKET, name, &value, &size);
    EXPECT_EQ(value, wanted) << name;
  }
  log_settings = defaults;
  std::string reports;
  for (const char* word : {"reuseaddr", "rcvbuf", "sndbuf", "keepalive",  // of TCP, of UDP
                           "reuseaddr", "broacast", "rcvbuf", "sndbuf"})
    reports += "setsockopt " + std::string(word) + " with error info Bad file descriptor!\n";
  CaptureStdout();
  limit(RLIMIT_NOFILE, {0, 4096});
  for (const auto set_peer : {set_log2tcp, set_log2udp}) set_peer("127.0.0.1", peer.port);
  limit(RLIMIT_NOFILE, {4096, 4096});
  EXPECT_EQ(GetCapturedStdout(), reports);
}

TEST_F(LogTest, AttemptsToConnectEndWithinASecondAndMayBeRepeated) {
  limit(RLIMIT_NOFILE, {4096, 4096});
  for (int i = 0; i < 1024; ++i) static_cast<void>(dup(STDIN_FILENO));  // sockets of any number
  const Peer udp(SOCK_DGRAM);
  const Peer busy(SOCK_STREAM);
  const SOCKET next = dup(STDIN_FILENO);
  close(next);
  set_log2tcp("127.0.0.1", udp.port);  // where nobody listens
  EXPECT_EQ(log_settings.tcp_socket, kNoSocket);
  set_log2udp("255.255.255.255", 9);
  EXPECT_EQ(log_settings.udp_socket, kNoSocket);
  set_log2tcp("127.0.0.1", busy.port);
  const SOCKET first = std::exchange(log_settings.tcp_socket, kNoSocket);
  EXPECT_EQ(first, next) << "what failed is closed";
  EXPECT_EQ(fcntl(first, F_GETFL) & O_NONBLOCK, 0) << "sends wait";
  set_log2file("/dev/null", 9);
  std::atomic<bool> connecting = true;
  int written = 0;
  const auto start = std::chrono::steady_clock::now();
  std::jthread attempt([&] {  // the peer takes no second one before it has accepted the first
    set_log2tcp("127.0.0.1", busy.port);
    connecting = false;
  });
  while (connecting) written += log_info("");
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  EXPECT_TRUE(seconds.count() > 0.9 && seconds.count() < 9) << seconds.count();
  EXPECT_GT(written, 1000) << "no log call waits for it";
  EXPECT_EQ(log_settings.tcp_socket, kNoSocket);
  close(busy.accept_one());
  set_log2tcp("127.0.0.1", busy.port);
  EXPECT_NE(log_settings.tcp_socket, kNoSocket);
  errno = EAGAIN;  // UDP finds no free port
  EXPECT_NE(WSAGetLastError(), WSAEWOULDBLOCK);
}

TEST_F(LogTest, SignalsTearNoRecordOnItsWayToASlowPeer) {
  constexpr int kSize = 10'000'000;  // bytes, more than the system's buffers hold
  struct sigaction handled {};
  handled.sa_handler = [](int) {};
  sigaction(SIGUSR1, &handled, nullptr);
  const Peer peer(SOCK_STREAM);
  set_log2tcp("127.0.0.1", peer.port);
  const SOCKET connection = peer.accept_one();
  std::uint64_t received = 0;
  std::jthread reader([&, writer = pthread_self()] {
    for (std::string bytes; !(bytes = receive(connection)).empty(); received += bytes.size())
      pthread_kill(writer, SIGUSR1);
  });
  set_max(kSize);
  EXPECT_EQ(log_info("%s", std::string(kSize, 'x').c_str()), 19 + kSize);
  shutdown(log_settings.tcp_socket, SHUT_WR);
  reader.join();
  EXPECT_EQ(received, 19U + kSize);
}
