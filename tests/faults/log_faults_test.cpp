// The logger when its sinks fail or change under it. Also run under the check for data races.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "log/log.h"
#include "log/log_settings.h"
#include "tests/support/capture.h"
#include "tests/support/peer.h"

namespace svcinst {
namespace {

constexpr int kThreads = 8;
constexpr int kRecords = 300;
const std::string info_tag = "|\033[36;40minfo\033[0m] ";

class LogFaults : public testing::Test {
 protected:
  LogFaults() {
    set_time(false);
    set_count(true);
    set_flush(true);
  }
  ~LogFaults() override {
    for (const int sink : {log_settings.tcp_socket, log_settings.udp_socket}) closesocket(sink);
    set_log2file("", 0);
    log_settings = LogSettings{};
    set_log2cmd(0);
    record_counter = 0;
  }
};

void log_records(char letter) {
  const std::string text(100, letter);
  for (int i = 0; i < kRecords; ++i) {
    // "[", the number, the tag, the text, a line feed
    EXPECT_EQ(log_info("%s\n", text.c_str()), static_cast<int>(1 + 4 + info_tag.size() + 100 + 1));
  }
}

TEST_F(LogFaults, EachRecordIsWholeInOneSinkWhileSinksChange) {
  const TempDirectory directory;
  const std::string files[] = {directory.path("one"), directory.path("two"),
                               directory.path("no/file")};
  std::string all;
  {
    const CapturedStdout console;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i)
      threads.emplace_back(log_records, static_cast<char>('a' + i));
    for (int i = 0; i < 200; ++i) {
      const std::string& file = files[i % 3];
      set_log2file(file.c_str(), static_cast<int>(file.size()));
      set_flush(i % 2 == 0);
      set_max(1024 + i);
      set_log2cmd(static_cast<std::uint64_t>(getpid()));
    }
    for (std::thread& thread : threads) thread.join();
    set_log2file("", 0);  // which writes what is left
    all = console.bytes() + file_bytes(files[0]) + file_bytes(files[1]);
  }
  std::set<int> numbers;
  std::istringstream lines(all);
  for (std::string line; std::getline(lines, line);) {
    ASSERT_EQ(line.size(), 1 + 4 + info_tag.size() + 100) << line;
    EXPECT_EQ(line.substr(5, info_tag.size()), info_tag);
    EXPECT_EQ(line.substr(5 + info_tag.size()), std::string(100, line.back()));
    EXPECT_TRUE(numbers.insert(std::stoi(line.substr(1, 4))).second) << line;
  }
  EXPECT_EQ(numbers.size(), std::size_t{kThreads} * kRecords);
  EXPECT_EQ(*numbers.rbegin(), kThreads * kRecords - 1);
}

TEST_F(LogFaults, SinksThatFailChangeNothing) {
  const CapturedStdout console;
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  for (const int output : {ends[1], open("/dev/null", O_RDONLY)}) {  // unread, and not writable
    dup2(output, STDOUT_FILENO);
    close(output);
    log_records('x');
  }
  set_log2file("/dev/full", 9);
  log_records('x');
  const Peer tcp(SOCK_STREAM);
  listen(tcp.handle, 1);
  set_log2tcp("127.0.0.1", tcp.port);
  {
    const OwnedSocket connection(tcp.accept_one());
    const linger reset{1, 0};
    setsockopt(connection.handle, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  }
  log_records('x');
  set_log2udp("127.0.0.1", tcp.port);  // where no datagram socket is
  log_records('x');
  clearerr(stdout);
}

TEST_F(LogFaults, AttemptsToConnectEndAndLeaveNothing) {
  const Peer refusing(SOCK_STREAM);
  const Peer busy(SOCK_STREAM);
  listen(busy.handle, 0);
  const OwnedSocket first(socket(AF_INET, SOCK_STREAM, 0));
  EXPECT_EQ(connect(first.handle, reinterpret_cast<const sockaddr*>(&busy.address),
                    int{sizeof busy.address}),
            0);
  const int next_descriptor = dup(STDOUT_FILENO);
  close(next_descriptor);
  set_log2tcp("127.0.0.1", refusing.port);
  for (const auto set : {set_log2tcp, set_log2udp})
    for (const char* address : {"255.255.255.255", "no address"}) set(address, 9);
  using std::chrono::steady_clock;
  const auto start = steady_clock::now();
  set_log2tcp("127.0.0.1", busy.port);  // which takes no second one
  const std::chrono::duration<double> seconds = steady_clock::now() - start;
  EXPECT_TRUE(seconds.count() > 0.9 && seconds.count() < 1.9) << seconds.count();
  EXPECT_EQ(log_settings.tcp_socket + log_settings.udp_socket, -2);
  const OwnedSocket accepted(busy.accept_one());
  set_log2tcp("127.0.0.1", busy.port);
  EXPECT_EQ(log_settings.tcp_socket, next_descriptor + 1);
}

TEST_F(LogFaults, OptionsThatCannotBeSetAreReported) {
  rlimit files{};
  getrlimit(RLIMIT_NOFILE, &files);
  const rlimit none{0, files.rlim_max};
  const CapturedStdout console;
  setrlimit(RLIMIT_NOFILE, &none);  // so that there is no socket
  for (const auto set : {set_log2tcp, set_log2udp}) set("127.0.0.1", 9);
  setrlimit(RLIMIT_NOFILE, &files);
  std::string reports;
  for (const std::string word :
       {"reuseaddr", "rcvbuf", "sndbuf", "keepalive", "reuseaddr", "broacast", "rcvbuf", "sndbuf"})
    reports.append("setsockopt " + word + " with error info Bad file descriptor!\n");
  EXPECT_EQ(console.bytes(), reports);
  EXPECT_EQ(log_settings.tcp_socket + log_settings.udp_socket, -2);
}

// Records wait for a peer that doesn't read, as a blocking send does, until it goes.
TEST_F(LogFaults, PeerThatNeverReadsIsWaitedForUntilItGoes) {
  const Peer listener(SOCK_STREAM);
  listen(listener.handle, 1);
  set_log2tcp("127.0.0.1", listener.port);
  ASSERT_EQ(fcntl(log_settings.tcp_socket, F_GETFL) & O_NONBLOCK, 0);
  const int peer = listener.accept_one();
  set_max(1'000'000);
  const std::string text(1'000'000, 'x');
  std::thread writer([&] {
    for (int i = 0; i < 100; ++i) EXPECT_GT(log_info("%s", text.c_str()), 1'000'000);
  });
  // Until the system takes no more.
  for (int waiting = -1, now = 0; waiting != now || now == 0; usleep(50'000)) {
    waiting = now;
    EXPECT_EQ(ioctl(peer, FIONREAD, &now), 0);
  }
  close(peer);
  writer.join();
}

}  // namespace
}  // namespace svcinst
