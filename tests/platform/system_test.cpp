// Code pages, clocks, process and sockets.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <string>

#include "platform/clock_api.h"
#include "platform/code_page_api.h"
#include "platform/process_api.h"
#include "platform/socket_api.h"
#include "tests/support/peer.h"

namespace svcinst {
namespace {

// Sends this process a signal every so many microseconds; 0 ends that.
void send_signals(long microseconds) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);
  const itimerval timer{{0, microseconds}, {0, microseconds}};
  setitimer(ITIMER_REAL, &timer, nullptr);
}

int to_bytes(const std::wstring& wide, char* bytes, int size) {
  return WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), bytes, size,
                             nullptr, nullptr);
}

TEST(CodePage, StrictUtf8BothWays) {
  const struct {
    std::string bytes;
    std::wstring wide;
  } rows[] = {{"C:\\x", L"C:\\x"},
              {std::string("a\0b", 3), std::wstring(L"a\0b", 3)},
              {"\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80", L"\x7F\x80\x7FF\x800"},
              {"\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", L"\xD7FF\xE000\xFFFF"},
              {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\U00010000\U0010FFFF"}};
  for (const auto& [bytes, wide] : rows) {
    const auto size = static_cast<int>(bytes.size());
    const auto units = static_cast<int>(wide.size());
    std::wstring there(wide.size(), L'?');
    std::string back(bytes.size(), '?');
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 8, bytes.data(), size, nullptr, 0), units);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 8, bytes.data(), size, there.data(), units - 1), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 8, bytes.data(), size, there.data(), units), units);
    EXPECT_EQ(there, wide);
    EXPECT_EQ(to_bytes(wide, nullptr, 0), size);
    EXPECT_EQ(to_bytes(wide, back.data(), size - 1), 0);
    EXPECT_EQ(to_bytes(wide, back.data(), size), size);
    EXPECT_EQ(back, bytes);
  }
  for (const std::string bytes :
       {"\x80", "a\xBF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80",
        "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFC\x80\x80\x80", "\xFF",
        "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC3\x41", "\xE2\x82\x41", "\xC3\xC3"}) {
    const auto size = static_cast<int>(bytes.size());
    EXPECT_EQ(MultiByteToWideChar(CP_OEMCP, 8, bytes.data(), size, nullptr, 0), 0) << bytes;
  }
  for (const wchar_t unit : {0xD800, 0xDFFF, 0x110000, -1})
    EXPECT_EQ(to_bytes(std::wstring(1, unit), nullptr, 0), 0);
}

TEST(CodePage, WindowsConventions) {
  wchar_t wide[4];
  char narrow[4];
  const struct {
    UINT page;
    DWORD flags;
    const char* text;
    int length;
    wchar_t* wide;
    int size, result;
  } rows[] = {{CP_UTF8, 0, "abc", -1, wide, 4, 4},  {CP_UTF8, 0, "abc", -1, wide, 3, 0},
              {CP_UTF8, 0, "abc", 0, wide, 4, 0},   {CP_UTF8, 0, "\xC3\xA4", 1, wide, 4, 0},
              {1252, 0, "abc", 3, wide, 4, 0},      {CP_UTF8, 1, "abc", 3, wide, 4, 0},
              {CP_UTF8, 0, nullptr, 3, wide, 4, 0}, {CP_UTF8, 0, "abc", 3, nullptr, 4, 0},
              {CP_UTF8, 0, "abc", 3, wide, -1, 0}};
  for (const auto& [page, flags, text, length, to, size, result] : rows)
    EXPECT_EQ(MultiByteToWideChar(page, flags, text, length, to, size), result);
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"abc", -1, narrow, 4, nullptr, nullptr), 4);
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"abc", 3, narrow, 4, "?", nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(1252, 0, L"abc", 3, narrow, 4, nullptr, nullptr), 0);
  EXPECT_TRUE(AreFileApisANSI());
  EXPECT_EQ(___lc_codepage_func(), CP_UTF8);
}

TEST(Clock, SleepOutlastsSignals) {
  send_signals(1000);
  const std::int64_t start = monotonic_nanoseconds();
  Sleep(30);
  const std::int64_t end = monotonic_nanoseconds();
  send_signals(0);
  EXPECT_GE(end - start, 30'000'000);
  EXPECT_LT(GetTickCount() - static_cast<DWORD>(end / 1'000'000), 20'000U);  // milliseconds
  const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
  EXPECT_LT(static_cast<std::uint64_t>(now.count() - end), 20'000'000'000U);
}

TEST(Clock, LocalTimeIsTheZonesTime) {
  setenv("TZ", "XXX-05:30", 1);  // 5:30 hours ahead
  SYSTEMTIME local{};
  timespec before{};
  timespec after{};
  do {
    clock_gettime(CLOCK_REALTIME, &before);
    GetLocalTime(&local);
    clock_gettime(CLOCK_REALTIME, &after);
  } while (before.tv_sec != after.tv_sec);
  tm fields{};
  char text[40];
  std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d", local.wYear, local.wMonth, local.wDay,
                local.wHour, local.wMinute, local.wSecond);
  EXPECT_NE(strptime(text, "%Y-%m-%d %T", &fields), nullptr);
  EXPECT_EQ(timegm(&fields), before.tv_sec + 19'800);
  EXPECT_EQ(local.wDayOfWeek, fields.tm_wday);
  EXPECT_GE(local.wMilliseconds, before.tv_nsec / 1'000'000);
  EXPECT_LE(local.wMilliseconds, after.tv_nsec / 1'000'000);
}

TEST(Process, KernelsIdsAndNoConsole) {
  EXPECT_EQ(GetCurrentProcessId(), static_cast<DWORD>(getpid()));
  EXPECT_EQ(GetCurrentThreadId(), static_cast<DWORD>(syscall(SYS_gettid)));
  EXPECT_FALSE(FreeConsole());
  EXPECT_FALSE(AttachConsole(1));
}

class Sockets : public testing::Test {
 protected:
  Sockets() { listen(listener.handle, 1); }
  ~Sockets() override { closesocket(client); }
  int connect_client() {
    u_long mode = 1;
    ioctlsocket(client, FIONBIO, &mode);
    return connect(client, reinterpret_cast<const sockaddr*>(&listener.address),
                   int{sizeof listener.address});
  }

  const Peer listener{SOCK_STREAM};
  SOCKET client = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
};

TEST_F(Sockets, ConnectsWithoutBlockingAndSendsAll) {
  WSADATA data{};
  EXPECT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
  EXPECT_EQ(data.wVersion, 0x0202);
  EXPECT_EQ(connect_client(), SOCKET_ERROR);
  EXPECT_EQ(WSAGetLastError(), WSAEWOULDBLOCK);
  fd_set writers;
  FD_ZERO(&writers);
  FD_SET(client, &writers);
  const TIMEVAL limit{5, 0};
  EXPECT_EQ(select(client + 1, nullptr, &writers, nullptr, &limit), 1);
  u_long mode = 0;
  ioctlsocket(client, FIONBIO, &mode);
  const SOCKET peer = listener.accept_one();
  const std::string text(8 << 20, 'x');  // more than the system's buffers take
  if (fork() == 0) {
    closesocket(client);  // so that the end of the parent's ends the reading
    std::string buffer(1 << 16, '\0');
    while (read(peer, buffer.data(), buffer.size()) > 0) usleep(200);
    _exit(0);
  }
  send_signals(1000);
  EXPECT_EQ(send(client, text.data(), static_cast<int>(text.size()), 0), 8 << 20);
  send_signals(0);
  closesocket(peer);
}

TEST_F(Sockets, PeerThatHasGoneKillsNobody) {
  std::signal(SIGPIPE, SIG_DFL);
  connect_client();
  closesocket(listener.accept_one());
  int sent = 0;
  for (int i = 0; i < 100 && sent != SOCKET_ERROR; ++i) sent = send(client, "x", 1, 0);
  EXPECT_EQ(sent, SOCKET_ERROR);
}

TEST_F(Sockets, SelectWaitsThroughSignals) {
  send_signals(1000);
  fd_set readers;
  FD_ZERO(&readers);
  FD_SET(listener.handle, &readers);
  const TIMEVAL limit{0, 30'000};
  const std::int64_t start = monotonic_nanoseconds();
  EXPECT_EQ(select(listener.handle + 1, &readers, nullptr, nullptr, &limit), 0);
  EXPECT_GE(monotonic_nanoseconds() - start, 30'000'000);
  send_signals(0);
}

TEST_F(Sockets, SocketTooHighForSelectIsRefused) {
  rlimit files{};
  getrlimit(RLIMIT_NOFILE, &files);
  files.rlim_cur = files.rlim_max;
  setrlimit(RLIMIT_NOFILE, &files);
  for (const SOCKET high : {FD_SETSIZE - 1, FD_SETSIZE}) {
    closesocket(client);
    const SOCKET low = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    client = dup2(low, high);
    closesocket(low);
    const int result = connect_client();
    EXPECT_EQ(result == SOCKET_ERROR && WSAGetLastError() == WSAEWOULDBLOCK, high < FD_SETSIZE);
  }
  EXPECT_STREQ(socket_error_text(ECONNREFUSED).text, "Connection refused");
  EXPECT_STREQ(socket_error_text(99999).text, "Unknown error 99999");
}

}  // namespace
}  // namespace svcinst
