// The settings: their defaults and what the setters do to them.
#include <cinttypes>

#include "tests/log/log_fixture.h"

namespace svcinst {
namespace {

// As a static initialiser of the program sees them.
const LogSettings first_settings = log_settings;

TEST_F(LogTest, HasItsDefaultsBeforeOtherStaticDataIsMade) {
  EXPECT_EQ(first_settings.max, 1024);
  EXPECT_TRUE(first_settings.enable_log && first_settings.time);
  EXPECT_EQ(first_settings.tcp_socket & first_settings.udp_socket, -1);
  EXPECT_STREQ(first_settings.file_name, "orv.log");
  EXPECT_FALSE(first_settings.auto_endline || first_settings.flush || first_settings.with_hex);
  EXPECT_FALSE(first_settings.thread || first_settings.cpu || first_settings.count);
  EXPECT_EQ(first_settings.std_handle, 4711U);
  EXPECT_EQ(first_settings.log_file, nullptr);
  EXPECT_EQ(first_settings.mini_level, 0);
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
  EXPECT_EQ(log_settings.tcp_socket & log_settings.udp_socket, kNoSocket);
  EXPECT_STREQ(log_settings.file_name, before.file_name);
  constexpr void (*kSetters[])(bool) = {set_time,   set_auto_endline, set_flush, set_with_hex,
                                        set_thread, set_cpu,          set_count};
  constexpr Flag LogSettings::*kFields[] = {
      &LogSettings::time,   &LogSettings::auto_endline, &LogSettings::flush, &LogSettings::with_hex,
      &LogSettings::thread, &LogSettings::cpu,          &LogSettings::count};
  set_time(false);
  for (int i = 0; i < 7; ++i) {
    kSetters[i](true);
    for (int other = 0; other < 7; ++other) EXPECT_EQ(log_settings.*kFields[other], other == i);
    kSetters[i](false);
  }
  set_max(7);
  set_mini_level(-3);
  EXPECT_EQ(log_settings.max, 7);
  EXPECT_EQ(log_settings.mini_level, -3);
}

TEST_F(LogTest, AnnouncesThatItIsSwitchedOn) {
  set_mini_level(5);
  log_settings.std_handle = 0xFFFFFFFF00000005;
  char line[200];
  const int length = std::snprintf(line, sizeof line,
                                   "set_enable_log(enable_log@0x%016" PRIXPTR
                                   ", std_handle@0x%016" PRIXPTR ") with f = 'T', pid = 5\n",
                                   reinterpret_cast<std::uintptr_t>(&log_settings.enable_log),
                                   reinterpret_cast<std::uintptr_t>(&log_settings.std_handle));
  EXPECT_EQ(written_by([&] { EXPECT_EQ(set_enable(true), length); }), line);
}

}  // namespace
}  // namespace svcinst
