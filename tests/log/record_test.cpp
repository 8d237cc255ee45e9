// What stands in a record, and which calls make one.
#include <climits>
#include <sstream>

#include "tests/log/log_fixture.h"
#include "tests/support/check_cases.h"

namespace svcinst {
namespace {

// "date, time of day, nanoseconds since the start and since the last record, thread, number ->
// fields"
TEST_F(LogTest, PadsEachField) {
  log_settings.cpu = log_settings.thread = log_settings.count = true;
  scripted_clock().nanoseconds = 4'000'000'000'000'000;
  check_cases(
      R"(2026-12-31 23:59:59.999 999 0 0 0 -> 2026-12-31 23:59:59.999|000000000000000 us =+           0 us|0x00000000|   0|
2026-1-10 0:9:0.0 999999 100000 abc 999 -> 2026-01-10 00:09:00.000|000000000000999 us =+         100 us|0x00000abc| 999|
987-10-1 10:10:10.5 1000000 12345000 fedcba98 9999 -> 0987-10-01 10:10:10.005|00000000001,000 us =+      12,345 us|0xfedcba98|9999|
12345-1-1 1:1:1.99 123456789012000 123456789000 a 10000 -> 12345-01-01 01:01:01.099|123,456,789,012 us =+ 123,456,789 us|0x0000000a|10000|
2026-1-1 1:1:1.100 1234567890123000 9876543210000 10 18446744073709551615 -> 2026-01-01 01:01:01.100|1,234,567,890,123 us =+9,876,543,210 us|0x00000010|18446744073709551615|)",
      [this](const std::string& values) {
        ScriptedClock& clock = scripted_clock();
        std::istringstream in(values);
        char c = 0;
        in >> clock.local_time.wYear >> c >> clock.local_time.wMonth >> c >> clock.local_time.wDay;
        in >> clock.local_time.wHour >> c >> clock.local_time.wMinute >> c;
        in >> clock.local_time.wSecond >> c >> clock.local_time.wMilliseconds;
        in >> start_time_ns >> last_record_time_ns;
        in >> std::hex >> clock.thread_id >> std::dec >> record_counter;
        start_time_ns = clock.nanoseconds - start_time_ns;
        last_record_time_ns = clock.nanoseconds - last_record_time_ns;
        call_log().clear();
        const std::string record = written_by([] { log_info(""); });
        EXPECT_EQ(call_log().size(), 1U) << "the date and the time of day are of one moment";
        EXPECT_TRUE(record.ends_with(info_tag)) << record;
        return record.substr(1, record.size() - info_tag.size() - 1);
      },
      "\n");
}

TEST_F(LogTest, NumbersAndTimesOnlyTheRecordsThatAreMade) {
  set_time(false);
  set_cpu(true);
  scripted_clock().nanoseconds_read = 1000;
  EXPECT_EQ(written_by([] {
              log_info("a");  // reads 0 and, behind the message, 1
              set_cpu(false);
              log_info("b");  // reads 2
              log_it("raw");  // reads nothing, nor do the next two
              set_mini_level(1);
              log_info("dropped");
              set_enable(false);
              log_fatal("dropped");
              log_settings.enable_log = true;
              set_mini_level(0);
              set_cpu(true);
              set_count(true);
              log_info("c");  // reads 3
            }),
            "[000000000000000 us =+           0 us|" + info_tag + "a[" + info_tag +
                "braw[000000000000003 us =+           1 us|   2|" + info_tag + "c");
}

TEST_F(LogTest, WritesTheLevelsFromTheLowestOneOn) {
  constexpr int (*kCalls[])(const char*, ...) = {log_info, log_note, log_warn, log_error,
                                                 log_fatal};
  const char* const records[] = {"[\033[36;40minfo\033[0m] m", "[\033[32;40mnote\033[0m] m",
                                 "[\033[33;40mwarn\033[0m] m", "[\033[31;40meror\033[0m] m",
                                 "[\033[35;40mfatl\033[0m] m"};
  set_time(false);
  for (const int lowest : {INT_MIN, 0, 1, 2, 3, 4, 5, INT_MAX}) {
    set_mini_level(lowest);
    for (int level = 0; level < 5; ++level) {
      const bool written = level >= lowest;
      EXPECT_EQ(written_by([&] { EXPECT_EQ(kCalls[level]("%c", 'm'), written ? 20 : 0); }),
                written ? records[level] : "");
    }
    EXPECT_EQ(written_by([] { log_it("m"); }), "m");
  }
}

TEST_F(LogTest, FormatsUpToTheMostBytesOfAMessage) {
  const std::string text(5000, 'x');
  const struct {
    int max;
    const char* format;
    std::string message;
  } rows[] = {{1024, "%s", std::string(1024, 'x')},  // the prefix comes on top
              {1, "%s", "x"},
              {5, "ab%s", "abxxx"},
              {0, "%s", "xxxxx"},  // changes nothing
              {6000, "%s", text},
              {6000, "ab%5", "ab"},  // malformed: what stands before the fault
              {5003, "%s%c|", text + std::string("\0|", 2)}};
  set_time(false);
  set_with_hex(true);
  EXPECT_EQ(written_by([] { log_info("%s", "a\1"), log_it("%s", "a\1"); }),
            "[" + info_tag + "a.(6101)a\1");
  set_with_hex(false);
  for (const auto& row : rows) {
    set_max(row.max);
    for (const bool levelled : {false, true}) {
      int length = -1;
      const std::string bytes =
          written_by([&] { length = (levelled ? log_info : log_it)(row.format, text.c_str(), 0); });
      EXPECT_EQ(bytes, (levelled ? "[" + info_tag : "") + row.message) << row.max << row.format;
      EXPECT_EQ(length, static_cast<int>(bytes.size()));
    }
  }
}

}  // namespace
}  // namespace svcinst
