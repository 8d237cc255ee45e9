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

bool install_and_uninstall() {
  return run({"C:\\svcinst.exe", "-i", "-n=svc", "-b=x.exe", "-d=x", "--dep=y", "--desc=z"}) == 0 &&
         run({"svcinst", "-u", "-n=svc"}) == 0;
}

bool show_help() {
  return run({"svcinst"}) == -1;
}

bool log_a_record() {
  return log_error("%s %5d %f", "text", 42, 1.5) > 0;
}

// True when `task` ran out of memory at its n-th request, false when it ended well before that.
bool runs_out(bool (*task)(), int n) {
  const int blocks = live_blocks;
  bool ran_out = false;
  requests_until_failure = n;
  try {
    EXPECT_TRUE(task()) << n;
  } catch (const std::bad_alloc&) {
    ran_out = true;
  }
  requests_until_failure = 0;
  std::vector<std::string>().swap(call_log());
  EXPECT_EQ(live_blocks, blocks) << n;
  return ran_out;
}

TEST(OutOfMemory, LeavesNothingBehindAtAnyRequest) {
  const TempDirectory directory;
  const std::string database = directory.path("services.db");
  setenv("SVCINST_DATABASE", database.c_str(), 1);
  const CapturedStdout output;
  for (bool (*task)() : {install_and_uninstall, show_help, log_a_record}) {
    int requests = 0;
    for (; runs_out(task, requests + 1); ++requests) std::filesystem::remove(database);
    EXPECT_GT(requests, 0);
  }
}

}  // namespace
}  // namespace svcinst
