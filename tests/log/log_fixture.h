// Tests of the logger begin with an empty folder and the defaults, but without date and time.
#pragma once

#include <algorithm>

#include "log/log.h"
#include "log/log_settings.h"
#include "platform/socket_api.h"
#include "tests/support/capture.h"

namespace svcinst {

inline const LogSettings defaults = log_settings;  // before main, in a static initialiser
inline const std::string info_tag = "\033[36;40minfo\033[0m] ";

/// Has a port of this machine. A stream socket takes one connection that is not accepted yet.
struct Peer {
  SOCKET handle;
  std::uint16_t port;

  explicit Peer(int type) : handle(socket(AF_INET, type, 0)) {
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
};

/// Waits for a datagram, or for some bytes of a stream; empty at its end.
inline std::string receive(SOCKET socket) {
  char bytes[1000];
  const auto length = recv(socket, bytes, sizeof bytes, 0);
  return {bytes, static_cast<std::size_t>(std::max<decltype(length)>(length, 0))};
}

struct LogTest : ::testing::Test {
  LogTest() {
    log_settings = defaults;
    EXPECT_TRUE(log_settings.time);
    set_time(false);
    record_counter = 0;
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
  }
  ~LogTest() override { set_log2file("", 0); }  // closes the file

  void open_file(const std::string& name) const {
    set_log2file(folder.path(name).c_str(), static_cast<int>(folder.path(name).size()));
  }
  /// What a call writes to a new log file; it has to return how many bytes that are.
  template <class... Arguments>
  std::string logged(int (*call)(const char*, ...), Arguments... arguments) {
    open_file(std::to_string(++file_count));
    const int length = call(arguments...);
    std::fflush(log_settings.log_file);
    std::string bytes = file_bytes(log_settings.file_name);
    EXPECT_EQ(length, std::ssize(bytes));
    return bytes;
  }

  TempDirectory folder;
  int file_count = 0;
};

}  // namespace svcinst
