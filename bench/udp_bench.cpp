// A record with the default prefix to a UDP peer, beside the bare send of the same bytes.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <thread>

#include "bench/measure.h"
#include "log/log.h"

namespace svcinst::bench {
namespace {

void expect(bool succeeded) {
  if (!succeeded) std::exit(EXIT_FAILURE);
}

int log_record() {
  return log_info("service '%s' was stopped, %d waits of a second had passed\n", "hello", 3);
}

// Takes datagrams until the process ends. It comes for them by the clock, before its queue is full:
// a send then neither wakes anybody up nor throws anything away, which would make sends of
// different senders cost differently. The time that is measured is the sender's thread's.
void receive(int receiver) {
  std::array<char, 2048> datagram;
  for (;;)
    if (recv(receiver, datagram.data(), datagram.size(), MSG_DONTWAIT) < 0) usleep(500);
}

// A connected socket, and what our first record was.
struct Bare {
  int socket;
  std::string record;
};

Bare open_both() {
  const int receiver = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
  socklen_t size = sizeof address;
  auto* const any_address = reinterpret_cast<sockaddr*>(&address);
  expect(bind(receiver, any_address, size) == 0);
  expect(getsockname(receiver, any_address, &size) == 0);
  set_log2udp("127.0.0.1", ntohs(address.sin_port));
  std::array<char, 2048> datagram;
  const int length = log_record();
  expect(recv(receiver, datagram.data(), datagram.size(), 0) == length);
  std::thread(receive, receiver).detach();
  const int sender = socket(AF_INET, SOCK_DGRAM, 0);
  expect(connect(sender, any_address, size) == 0);
  return {sender, {datagram.data(), static_cast<std::size_t>(length)}};
}

const Bare& bare() {
  static const Bare only = open_both();
  return only;
}

void ours(benchmark::State& state) {
  const int length = static_cast<int>(bare().record.size());
  measure(state, log_record() == length, log_record);
}

void peer(benchmark::State& state) {
  const auto& [socket, record] = bare();
  measure(state, true, [&] { send(socket, record.data(), record.size(), 0); });
}

BENCHMARK(ours)->Name("udp-record/ours");
BENCHMARK(peer)->Name("udp-record/send");

}  // namespace
}  // namespace svcinst::bench
