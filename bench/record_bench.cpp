// Levelled records with the default prefix, to each sink. The time zone is that of TZ.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/contest.h"
#include "bench/record_peer.h"
#include "bench/temp_folder.h"
#include "log/log.h"

namespace svcinst::bench {
namespace {

constexpr const char* kService = "hello";
constexpr int kWaits = 3;
constexpr std::size_t kMessageLength = 60;  // bytes
// "[", date and time, "|", the coloured tag and "] ".
constexpr std::size_t kPrefixLength = 43;  // bytes

int our_record() {
  return log_info("service '%s' was stopped, %d waits of a second had passed\n", kService, kWaits);
}

void record_ours() {
  our_record();
}

void record_peer() {
  peer_record(kService, kWaits);
}

void open_our_file() {
  const std::string path = temp_path("ours.log");
  set_log2file(path.c_str(), static_cast<int>(path.size()));
}

void open_their_file() {
  open_peer_file(temp_path("peer.log"));
}

void open_our_console() {
  set_log2cmd(0);
}

void open_their_console() {
  static std::array<char, 4096> buffer;
  std::setvbuf(stdout, buffer.data(), _IOFBF, buffer.size());
  open_peer_console();
}

// A process that takes datagrams as long as this one lives. Returns its port. It comes for them by
// the clock, before its queue is full: a send then neither wakes anybody up nor throws anything
// away, which would make sends of different senders cost differently.
std::uint16_t start_receiver() {
  const int receiver = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (bind(receiver, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      getsockname(receiver, reinterpret_cast<sockaddr*>(&address), &size) != 0)
    std::exit(EXIT_FAILURE);
  if (fork() == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::array<char, 2048> datagram;
    for (;;)
      if (recv(receiver, datagram.data(), datagram.size(), MSG_DONTWAIT) < 0) usleep(500);
  }
  close(receiver);
  return ntohs(address.sin_port);
}

std::uint16_t receiver_port() {
  static const std::uint16_t port = start_receiver();
  return port;
}

void open_our_peer() {
  set_log2udp("127.0.0.1", receiver_port());
}

int bare_socket = -1;

void open_bare_socket() {
  bare_socket = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(receiver_port());
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(bare_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
    std::exit(EXIT_FAILURE);
}

void send_bare() {
  static const std::string record(kPrefixLength + kMessageLength, 'r');
  send(bare_socket, record.data(), record.size(), 0);
}

// Both write within one millisecond sooner or later.
bool equal() {
  open_our_file();
  open_their_file();
  for (int attempt = 0; attempt < 1000; ++attempt) {
    const std::size_t begin = file_bytes(temp_path("ours.log")).size();
    set_flush(true);
    const auto length = static_cast<std::size_t>(our_record());
    record_peer();
    flush_peer();
    const std::string ours = file_bytes(temp_path("ours.log")).substr(begin);
    const std::string peer = file_bytes(temp_path("peer.log")).substr(begin);
    if (ours == peer && ours.size() == length && length == kPrefixLength + kMessageLength)
      return true;
    if (ours.size() == peer.size()) continue;
    std::fprintf(stderr, "ours: %s\npeer: %s\n", ours.c_str(), peer.c_str());
    return false;
  }
  return false;
}

constexpr Contestant kContestants[] = {{"record-file/ours", open_our_file, record_ours},
                                       {"record-file/spdlog", open_their_file, record_peer},
                                       {"record-console/ours", open_our_console, record_ours},
                                       {"record-console/spdlog", open_their_console, record_peer},
                                       {"record-udp/ours", open_our_peer, record_ours},
                                       {"record-udp/send", open_bare_socket, send_bare}};

}  // namespace
}  // namespace svcinst::bench

int main(int argc, char** argv) {
  using namespace svcinst::bench;
  return run_contest(argc, argv, kContestants, Clock::cpu, equal);
}
