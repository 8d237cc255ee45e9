// What stands in a record, which calls make one, and where it goes.
#include "format/format_text.h"
#include "tests/log/log_fixture.h"
#include "tests/support/examples.h"
#include "tests/support/scripted_platform.h"

using namespace svcinst;

const std::pair<std::string, int (*)(const char*, ...)> levels[] = {{"log_info", log_info},
                                                                    {"log_note", log_note},
                                                                    {"log_warn", log_warn},
                                                                    {"log_error", log_error},
                                                                    {"log_fatal", log_fatal}};

// The record of a call with the message "hello", while what the setter switches on is on.
std::string record(const std::string& call, const std::string& setter) {
  log_settings = defaults;
  scripted_clock = {.nanoseconds = 1'234'567'990'000};  // since a start at 100 us
  last_record_time_ns = 1'234'500'100'000;
  record_counter = 7;
  for (const auto& [name, set] :
       {std::pair("`set_cpu`", &set_cpu), std::pair("`set_thread`", &set_thread),
        std::pair("`set_count`", &set_count)})
    set(setter == name);
  CaptureStdout();
  for (const auto& [name, log] : levels)
    if (text_of(call) == name) log("hello");
  return replaced(GetCapturedStdout(), "\033", "ESC");
}

TEST_F(LogTest, WritesTheRecordsThatThePageShows) {
  check_examples("format-strings.md", "record", record);
}

TEST_F(LogTest, HasRoomForTheLongestFields) {
  for (const auto switch_field : {set_time, set_cpu, set_thread, set_count}) switch_field(true);
  scripted_clock = {999, {10000, 10, 2, 10, 10, 10, 10, 60}, 0xfedcba98};
  start_time_ns = -1'234'567'890'123'000;
  last_record_time_ns = -9'876'543'210'000;
  record_counter = 12345;
  EXPECT_EQ(logged(log_info, ""),
            "[10000-10-10 10:10:10.060|1,234,567,890,123 us =+9,876,543,210 us|0xfedcba98|12345|" +
                info_tag);
  EXPECT_EQ(last_record_time_ns, 1000) << "the second look at the clock, behind the message";
}

TEST_F(LogTest, WritesAndCountsTheLevelsFromTheLowestOneOn) {
  set_count(true);
  for (int level = 0; const auto& [name, log] : levels) {
    set_mini_level(level);
    EXPECT_TRUE(logged(log, "").starts_with("[   " + std::to_string(level) + "|")) << name;
    EXPECT_EQ(logged(log_it, "%c", 'x'), "x");
    set_mini_level(++level);
    EXPECT_EQ(logged(log, ""), "");
  }
}

TEST_F(LogTest, FormatsUpToTheMostBytesOfAMessage) {
  const std::string text(2000, 'x');
  EXPECT_EQ(logged(log_info, "%s", text.c_str()), "[" + info_tag + std::string(1024, 'x'));
  EXPECT_EQ(logged(log_it, "ab%5"), "ab") << "what stands before a directive that cannot be read";
  for (const int max : {2002, 0, -1}) set_max(max);  // the last two change nothing
  EXPECT_EQ(logged(log_it, "%s%c|", text.c_str(), 0), text + std::string("\0|", 2));
  EXPECT_EQ(logged(log_info, "%s", "a\1"), "[" + info_tag + "a\1");
  set_with_hex(true);
  EXPECT_EQ(logged(log_it, "%s", "a\1"), "a\1");
  EXPECT_EQ(logged(log_info, "%s", "a\1"), "[" + info_tag + "a.(6101)");
}

TEST_F(LogTest, WritesNothingAndOpensNoSinkWhileItIsOff) {
  const Peer peer(SOCK_STREAM);
  open_file("log");
  set_log2cmd(UINT64_MAX);
  EXPECT_EQ(set_enable(false), 0);
  EXPECT_EQ(log_it("x") + log_fatal("x"), 0);
  open_file("other");
  for (const auto set_peer : {set_log2tcp, set_log2udp}) set_peer("127.0.0.1", peer.port);
  set_log2cmd(0);
  EXPECT_EQ(std::max(log_settings.tcp_socket, log_settings.udp_socket), kNoSocket);
  // Callers that were compiled elsewhere may pass any byte. The cast in between prevents a warning.
  const int length = reinterpret_cast<int (*)(int)>(reinterpret_cast<void (*)()>(set_enable))(2);
  set_log2file("", 0);
  char line[200];
  EXPECT_EQ(length, format_into(line,
                                "set_enable_log(enable_log@0x%p, std_handle@0x%p)"
                                " with f = 'T', pid = -1\n",
                                &log_settings.enable_log, &log_settings.std_handle));
  EXPECT_EQ(file_bytes(folder.path("log")), std::string(line, static_cast<std::size_t>(length)));
}

TEST_F(LogTest, BuffersTheOwnConsoleAndMovesToAnotherAndToNone) {
  const std::string text = std::string(4000, '.') + "\n|";
  set_max(5000);
  CaptureStdout();
  set_log2cmd(0);
  log_it("%s", text.c_str());
  EXPECT_EQ(TextView(stdout_buffer, text.size()), text);
  set_log2cmd(0x5'0000'0007);  // the lower half is a process id
  set_flush(true);
  set_auto_endline(true);
  EXPECT_EQ(log_it("three"), 5);
  set_flush(false);
  log_it("four");
  EXPECT_TRUE(TextView(stdout_buffer).starts_with("four\n")) << "the rest was flushed";
  set_log2cmd(UINT64_MAX);
  EXPECT_EQ(log_it("lost"), 4);
  EXPECT_EQ(GetCapturedStdout(), text + "FreeConsole() AttachConsole(7) three\nfour\n");
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
  const Peer tcp(SOCK_STREAM);
  const Peer udp(SOCK_DGRAM);
  const std::string start = "[" + info_tag;
  CaptureStdout();
  open_file("log");
  log_info("to the file");
  open_file("no/such/folder");
  log_info("to the console");
  EXPECT_EQ(GetCapturedStdout(), start + "to the console");
  open_file("log");
  set_log2tcp("127.0.0.1", tcp.port);
  const SOCKET connection = tcp.accept_one();
  log_info("to TCP");
  set_log2udp("127.0.0.1", udp.port);
  set_log2udp("127.0.0.1", tcp.port);  // changes nothing any more
  log_info("to UDP");
  log_info("again");
  log_it(", raw");
  set_log2file("", 0);
  EXPECT_EQ(file_bytes(folder.path("log")), start + "to the file, raw");
  EXPECT_EQ(receive(connection), start + "to TCP");
  EXPECT_EQ(receive(udp.handle), start + "to UDP");
  EXPECT_EQ(receive(udp.handle), start + "again");
}
