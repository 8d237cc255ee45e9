// Memory runs out at every single request of a run. This program has its own operator new, which
// fails at the n-th request; SQLite's memory is not its.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "app/program.h"
#include "log/log.h"
#include "tests/support/capture.h"
#include "tests/support/scripted_clock.h"

namespace {

int requests_until_failure = 0;  // 0: none fails
int live_blocks = 0;

}  // namespace

// NOLINTBEGIN(misc-new-delete-overloads)
void* operator new(std::size_t size) {
  if (requests_until_failure > 0 && --requests_until_failure == 0) throw std::bad_alloc();
  ++live_blocks;
  return std::malloc(size);
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void operator delete(void* block) noexcept {
  live_blocks -= block != nullptr ? 1 : 0;
  std::free(block);
}
void operator delete[](void* block) noexcept {
  operator delete(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  operator delete(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
  operator delete(block);
}
// NOLINTEND(misc-new-delete-overloads)

namespace svcinst {
namespace {

template <std::size_t kCount>
int run(const char* const (&arguments)[kCount]) {
  return run_program(static_cast<int>(kCount), arguments);
}

void run_everything() {
  EXPECT_EQ(run({"C:\\svcinst.exe", "-i", "-n=a", "-b=x", "-d=x", "--dep=y", "--desc=z"}), 0);
  EXPECT_EQ(run({"svcinst", "-u", "-n=a"}), 0);
  EXPECT_EQ(run({"svcinst"}), -1);
  EXPECT_GT(log_error("%s %5d %f", "text", 42, 1.5), 0);
}

TEST(OutOfMemory, LeavesNothingBehindAtAnyRequest) {
  const TempDirectory directory;
  setenv("SVCINST_DATABASE", directory.path("services.db").c_str(), 1);
  const CapturedStdout output;
  bool runs_out = true;
  int requests = 0;
  for (; runs_out; ++requests) {
    std::filesystem::remove(directory.path("services.db"));
    const int blocks = live_blocks;
    requests_until_failure = requests + 1;
    runs_out = false;
    try {
      run_everything();
    } catch (const std::bad_alloc&) {
      runs_out = true;
    }
    requests_until_failure = 0;
    std::vector<std::string>().swap(call_log);
    ASSERT_EQ(live_blocks, blocks) << requests;
  }
  EXPECT_GT(requests, 400);
}

}  // namespace
}  // namespace svcinst
