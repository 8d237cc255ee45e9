// The console and the log file.
#include "tests/log/log_fixture.h"

namespace svcinst {
namespace {

TEST_F(LogTest, BuffersTheOwnConsole) {
  const CapturedStdout console;
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  log_settings.std_handle = 5;
  set_log2cmd(0);
  EXPECT_EQ(log_settings.std_handle, 4711U);
  log_it(">");
  EXPECT_EQ(console.bytes(), ">");  // from here on, the C library fills the buffer
  log_it("held\nback");
  set_max(10000);
  EXPECT_EQ(log_it("%s", std::string(4080, 'x').c_str()), 4080);
  EXPECT_EQ(console.bytes(false), ">") << "it holds 4096 bytes";
  EXPECT_EQ(std::string(stdout_buffer, 11), "held\nbackxx");
  log_it("more than fits");
  EXPECT_NE(console.bytes(false), ">");
  set_flush(true);
  set_auto_endline(true);
  EXPECT_EQ(log_it("!"), 1);
  EXPECT_EQ(console.bytes(false), ">held\nback" + std::string(4080, 'x') + "more than fits!\n");
  EXPECT_EQ(written_by([] { log_it("line ends are for the console"); }),
            "line ends are for the console");
  EXPECT_TRUE(call_log().empty());
}

TEST_F(LogTest, MovesToAnotherConsoleAndToNone) {
  const CapturedStdout console;
  set_log2cmd(0x500000007);
  EXPECT_EQ(log_settings.std_handle, 0x500000007U);
  log_it("a");
  for (const std::string name : {"", "no/such/folder/file"}) {
    open_file("log");
    set_log2file(name.c_str(), static_cast<int>(name.size()));
    log_it("x");  // there is no file now
  }
  set_log2cmd(UINT64_MAX);
  EXPECT_EQ(log_settings.std_handle, UINT64_MAX);
  EXPECT_EQ(log_it("b"), 1);
  EXPECT_EQ(log_info("b"), 44);
  EXPECT_EQ(written_by([] { log_it("c"); }), "c");
  EXPECT_EQ(console.bytes(), "axx");
  EXPECT_EQ(call_log(),
            (std::vector<std::string>{"FreeConsole()", "AttachConsole(7)", "GetLocalTime()"}));
}

TEST_F(LogTest, AppendsToTheFileAsItIs) {
  open_file("log");
  log_it("one\r\n");
  open_file("other");
  EXPECT_EQ(file_bytes(path("log")), "one\r\n") << "closing writes what is left";
  open_file("log");
  log_it("two\n");
  EXPECT_EQ(file_bytes(path("log")), "one\r\n") << "nothing wants it flushed";
  set_flush(true);
  log_it("three");
  EXPECT_EQ(file_bytes(path("log")), "one\r\ntwo\nthree");
}

TEST_F(LogTest, TakesAFileNameOfUpTo255Bytes) {
  const std::string folder = path("");
  const std::string name = folder + std::string(254 - folder.size(), '/') + "a name without an end";
  set_log2file(name.c_str(), 255);
  std::FILE* const file = log_settings.log_file;
  EXPECT_NE(file, nullptr);
  for (const int length : {256, -1, INT32_MAX, INT32_MIN}) set_log2file(name.c_str(), length);
  EXPECT_EQ(log_settings.file_name, name.substr(0, 255));
  EXPECT_EQ(log_settings.log_file, file);
}

}  // namespace
}  // namespace svcinst
