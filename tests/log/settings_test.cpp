// The settings: their defaults and what the setters do to them.
#include <cinttypes>

#include "tests/log/log_fixture.h"

namespace svcinst {
namespace {

// As a static initialiser of the program sees them.
const LogSettings first_settings = log_settings;
const std::string first_tag = c_str(level_tags[0]);

TEST_F(LogTest, HasItsDefaultsBeforeOtherStaticDataIsMade) {
  EXPECT_EQ(first_settings.max, 1024);
  EXPECT_TRUE(first_settings.enable_log && first_settings.time);
  EXPECT_EQ(first_settings.tcp_socket, -1);
  EXPECT_EQ(first_settings.udp_socket, -1);
  EXPECT_STREQ(first_settings.file_name, "orv.log");
  EXPECT_FALSE(first_settings.auto_endline || first_settings.flush || first_settings.with_hex);
  EXPECT_FALSE(first_settings.thread || first_settings.cpu || first_settings.count);
  EXPECT_EQ(first_settings.std_handle, 4711U);
  EXPECT_EQ(first_settings.log_file, nullptr);
  EXPECT_EQ(first_settings.mini_level, 0);
  EXPECT_EQ(first_tag, "\033[36;40minfo\033[0m");
}

TEST_F(LogTest, ChangesFieldsButNoSinkWhileItIsOff) {
  open_file("log");
  const LogSettings before = log_settings;
  EXPECT_EQ(set_enable(false), 0);
  EXPECT_EQ(log_it("x") + log_fatal("x"), 0);
  set_log2cmd(kNoConsole);
  open_file("other");
  set_log2tcp("127.0.0.1", 1);
  set_log2udp("127.0.0.1", 1);
  EXPECT_EQ(log_settings.std_handle, before.std_handle);
  EXPECT_EQ(log_settings.log_file, before.log_file);
  EXPECT_EQ(log_settings.tcp_socket, kNoSocket);
  EXPECT_EQ(log_settings.udp_socket, kNoSocket);
  EXPECT_STREQ(log_settings.file_name, before.file_name);
  const struct {
    void (*set)(bool);
    bool LogSettings::*field;
  } rows[] = {{set_time, &LogSettings::time},     {set_auto_endline, &LogSettings::auto_endline},
              {set_flush, &LogSettings::flush},   {set_with_hex, &LogSettings::with_hex},
              {set_thread, &LogSettings::thread}, {set_cpu, &LogSettings::cpu},
              {set_count, &LogSettings::count}};
  for (const auto& row : rows) row.set(false);
  for (const auto& row : rows) {
    row.set(true);
    for (const auto& other : rows) EXPECT_EQ(log_settings.*other.field, &other == &row);
    row.set(false);
  }
  set_max(7);
  set_mini_level(-3);
  EXPECT_EQ(log_settings.max, 7);
  EXPECT_EQ(log_settings.mini_level, -3);
}

TEST_F(LogTest, AnnouncesThatItIsSwitchedOn) {
  set_mini_level(5);
  log_settings.std_handle = 0xFFFFFFFF00000005;
  int length = 0;
  char line[200];
  const int expected = std::snprintf(line, sizeof line,
                                     "set_enable_log(enable_log@0x%016" PRIXPTR
                                     ", std_handle@0x%016" PRIXPTR ") with f = 'T', pid = 5\n",
                                     reinterpret_cast<std::uintptr_t>(&log_settings.enable_log),
                                     reinterpret_cast<std::uintptr_t>(&log_settings.std_handle));
  EXPECT_EQ(written_by([&] { length = set_enable(true); }), line);
  EXPECT_EQ(length, expected);
}

}  // namespace
}  // namespace svcinst
