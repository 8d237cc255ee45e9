// What stands in a record, which calls make one, and where it goes.
#include "tests/log/log_fixture.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {
namespace {

TEST_F(LogTest, PadsTheDateAndTheTimeOfDay) {
  const std::pair<SYSTEMTIME, std::string> rows[] = {
      {{2026, 12, 4, 31, 23, 59, 58, 999}, "[2026-12-31 23:59:58.999|"},
      {{987, 1, 5, 2, 3, 4, 5, 0}, "[0987-01-02 03:04:05.000|"},
      {{10000, 10, 2, 10, 10, 10, 10, 60}, "[10000-10-10 10:10:10.060|"}};
  set_time(true);
  for (const auto& [time, field] : rows) {
    scripted_clock.local_time = time;
    EXPECT_EQ(logged(log_info, ""), field + info_tag);
  }
}

TEST_F(LogTest, PadsTheOtherFieldsBehindThem) {
  const struct {
    std::int64_t since_start, since_last;  // microseconds
    DWORD thread;
    std::uint64_t number;
    std::string fields;
  } rows[] = {{1'000, 999, 0x1a2c, 7, "00000000001,000 us =+         999 us|0x00001a2c|   7|"},
              {1'234'567'890'123, 9'876'543'210, 0xfedcba98, 12345,
               "1,234,567,890,123 us =+9,876,543,210 us|0xfedcba98|12345|"}};
  for (const auto switch_field : {set_time, set_cpu, set_thread, set_count}) switch_field(true);
  for (const auto& row : rows) {
    scripted_clock = {.nanoseconds = 999, .nanoseconds_read = 5, .thread_id = row.thread};
    start_time_ns = -1000 * row.since_start;
    last_record_time_ns = -1000 * row.since_last;
    record_counter = row.number;
    EXPECT_EQ(logged(log_info, ""), "[2024-05-06 07:08:09.010|" + row.fields + info_tag);
    EXPECT_EQ(last_record_time_ns, 1004) << "the second look at the clock, behind the message";
  }
}

TEST_F(LogTest, WritesAndCountsTheLevelsFromTheLowestOneOn) {
  const std::pair<int (*)(const char*, ...), const char*> rows[] = {
      {log_info, "[   0|\033[36;40minfo\033[0m] x"},
      {log_note, "[   1|\033[32;40mnote\033[0m] x"},
      {log_warn, "[   2|\033[33;40mwarn\033[0m] x"},
      {log_error, "[   3|\033[31;40meror\033[0m] x"},
      {log_fatal, "[   4|\033[35;40mfatl\033[0m] x"}};
  set_count(true);
  for (int level = 0; const auto& [log, record] : rows) {
    set_mini_level(level);
    EXPECT_EQ(logged(log, "%c", 'x'), record);
    EXPECT_EQ(logged(log_it, "%c", 'x'), "x");
    set_mini_level(++level);
    EXPECT_EQ(logged(log, "%c", 'x'), "");
  }
}

TEST_F(LogTest, FormatsUpToTheMostBytesOfAMessage) {
  const std::string text(2000, 'x');
  EXPECT_EQ(logged(log_info, "%s", text.c_str()), "[" + info_tag + std::string(1024, 'x'));
  EXPECT_EQ(logged(log_it, "ab%5"), "ab") << "what stands before a directive that cannot be read";
  set_max(2002);
  set_max(0);  // changes nothing
  EXPECT_EQ(logged(log_it, "%s%c|", text.c_str(), 0), text + std::string("\0|", 2));
  EXPECT_EQ(logged(log_info, "%s", "a\1"), "[" + info_tag + "a\1");
  set_with_hex(true);
  EXPECT_EQ(logged(log_it, "%s", "a\1"), "a\1");
  EXPECT_EQ(logged(log_info, "%s", "a\1"), "[" + info_tag + "a.(6101)");
}

TEST_F(LogTest, WritesNothingAndOpensNoSinkWhileItIsOff) {
  open_file("log");
  EXPECT_EQ(set_enable(false), 0);
  EXPECT_EQ(log_it("x") + log_fatal("x"), 0);
  open_file("other");
  for (const auto set_peer : {set_log2tcp, set_log2udp}) set_peer("127.0.0.1", 9);
  set_log2cmd(UINT64_MAX);
  EXPECT_EQ(log_settings.udp_socket, kNoSocket);
  // Callers that were compiled elsewhere may pass any byte. The cast in between prevents a warning.
  reinterpret_cast<int (*)(int)>(reinterpret_cast<void (*)()>(set_enable))(2);
  set_log2file("", 0);
  const std::string line = file_bytes(folder.path("log"));
  EXPECT_TRUE(line.starts_with("set_enable_log(enable_log@0x")) << line;
  EXPECT_TRUE(line.ends_with(") with f = 'T', pid = 4711\n")) << line;
}

TEST_F(LogTest, BuffersTheOwnConsoleAndMovesToAnotherAndToNone) {
  const CapturedStdout console;
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  set_log2cmd(0);
  log_it("one, ");
  EXPECT_EQ(console.bytes(), "one, ");  // from here on, the C library fills the buffer
  log_it("two, ");
  EXPECT_EQ(console.bytes(false), "one, ");
  EXPECT_EQ(log_settings.std_handle, 4711U);
  set_log2cmd(0x5'0000'0007);  // the lower half is a process id
  set_flush(true);
  set_auto_endline(true);
  EXPECT_EQ(log_it("three"), 5);
  EXPECT_EQ(console.bytes(false), "one, two, FreeConsole() AttachConsole(7) three\n");
  set_log2cmd(UINT64_MAX);
  EXPECT_EQ(log_it("lost"), 4);
  EXPECT_TRUE(console.bytes().ends_with("three\n"));
}

TEST_F(LogTest, AppendsToAFileWhoseNameHasUpTo255Bytes) {
  const std::string path = folder.path("");
  const std::string name = path + std::string(254 - path.size(), '/') + "a, no more";
  set_auto_endline(true);  // for the console only
  set_log2file(name.c_str(), 255);
  log_it("one\r\n");
  for (const int length : {256, -1}) set_log2file("x", length);  // change nothing
  EXPECT_EQ(file_bytes(path + "a"), "") << "nothing wants it flushed";
  set_log2file(name.c_str(), 255);
  EXPECT_EQ(file_bytes(path + "a"), "one\r\n") << "it was closed before";
  set_flush(true);
  log_it("two");
  EXPECT_EQ(file_bytes(path + "a"), "one\r\ntwo");
}

TEST_F(LogTest, DeliversRecordsToTheFirstOpenSinkAndRawTextToNoPeer) {
  const CapturedStdout console;
  const Peer tcp(SOCK_STREAM);
  const Peer udp(SOCK_DGRAM);
  open_file("no/such/folder");
  log_info("to the console");
  open_file("log");
  log_info("to the file");
  set_log2tcp("127.0.0.1", tcp.port);
  const TestSocket connection(tcp.accept_one());
  log_info("to TCP");
  set_log2udp("127.0.0.1", udp.port);
  set_log2udp("127.0.0.1", tcp.port);  // changes nothing any more
  log_info("to UDP");
  log_it(", raw");
  set_log2file("", 0);
  const std::string start = "[" + info_tag;
  EXPECT_EQ(console.bytes(), start + "to the console");
  EXPECT_EQ(file_bytes(folder.path("log")), start + "to the file, raw");
  EXPECT_EQ(connection.receive(), start + "to TCP");
  EXPECT_EQ(udp.receive(), start + "to UDP");
}

}  // namespace
}  // namespace svcinst
