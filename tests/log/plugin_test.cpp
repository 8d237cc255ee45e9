// A process that exports the logger, and a shared object that calls it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "log/log.h"
#include "log/log_settings.h"
#include "platform/clock_api.h"
#include "platform/process_api.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

const std::int64_t first_start = start_time_ns;
const std::int64_t first_last = last_record_time_ns;

TEST(PlugIn, SharesTheConfigurationOfItsHost) {
  const CapturedStdout console;
  void* const plugin = dlopen(SVCINST_PLUGIN, RTLD_NOW);
  ASSERT_NE(plugin, nullptr) << dlerror();
  auto* const run = reinterpret_cast<int (*)()>(dlsym(plugin, "run_plugin"));
  set_time(false);
  EXPECT_EQ(run(), 38);
  EXPECT_EQ(log_fatal("from host"), 33);
  EXPECT_EQ(console.bytes(),
            "[   0|\033[32;40mnote\033[0m] from plug-in 1[   1|\033[35;40mfatl\033[0m] from host");
  dlclose(plugin);
}

TEST(PlugIn, FindsTheTwentyFunctionsAndNoOther) {
  for (const std::string program : {SVCINST_HOST, SVCINST_PROGRAM}) {
    const std::string command = "nm -D --defined-only --format=just-symbols " + program;
    std::FILE* const lines = popen((command + " | LC_ALL=C sort | tr '\\n' ' '").c_str(), "r");
    char names[2000] = "";
    EXPECT_NE(std::fgets(names, sizeof names, lines), nullptr);
    pclose(lines);
    EXPECT_STREQ(names,
                 "log_error log_fatal log_info log_it log_note log_warn set_auto_endline set_count "
                 "set_cpu set_enable set_flush set_log2cmd set_log2file set_log2tcp set_log2udp "
                 "set_max set_mini_level set_thread set_time set_with_hex ");
  }
}

TEST(PlugIn, StartsWithTheProcessAndItsClock) {
  EXPECT_GT(first_start, 0);
  EXPECT_LE(first_start, monotonic_nanoseconds());
  EXPECT_EQ(first_last, first_start);
  EXPECT_EQ(log_settings.std_handle, GetCurrentProcessId());
}

}  // namespace
}  // namespace svcinst
