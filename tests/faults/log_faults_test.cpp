// The logger when its sinks fail or change under it. Also run under the check for data races.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "log/log.h"
#include "log/log_settings.h"
#include "tests/support/capture.h"

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
    set_log2file("", 0);
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

TEST_F(LogFaults, StandardOutputThatNobodyReadsKillsNobody) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const int console = dup(STDOUT_FILENO);
  dup2(ends[1], STDOUT_FILENO);
  close(ends[0]);
  log_records('x');
  dup2(console, STDOUT_FILENO);
  for (const int file : {console, ends[1]}) close(file);
  clearerr(stdout);
}

// Records wait for a peer that doesn't read, as a blocking send does, until it goes.
TEST_F(LogFaults, PeerThatNeverReadsIsWaitedForUntilItGoes) {
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
  ASSERT_EQ(listen(listener, 1), 0);
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  set_log2tcp("127.0.0.1", ntohs(address.sin_port));
  ASSERT_NE(log_settings.tcp_socket, kNoSocket);
  const int peer = accept(listener, nullptr, nullptr);
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
  close(listener);
}

}  // namespace
}  // namespace svcinst
