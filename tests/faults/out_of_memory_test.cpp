// Memory runs out at every single request of a run. This program has its own operator new, which
// fails at the n-th request; SQLite's memory is not its.
#include <cstdlib>
#include <new>

#include "app/program.h"
#include "log/log.h"
#include "tests/platform/service_fixture.h"
#include "tests/support/scripted_clock.h"

namespace {

int requests_until_failure = 0;  // 0: none fails
int live_blocks = 0;

void* request(std::size_t size) {
  if (requests_until_failure > 0 && --requests_until_failure == 0) throw std::bad_alloc();
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  ++live_blocks;
  return block;
}

void give_back(void* block) {
  if (block != nullptr) --live_blocks;
  std::free(block);
}

}  // namespace

// NOLINTBEGIN(misc-new-delete-overloads)
void* operator new(std::size_t size) {
  return request(size);
}
void* operator new[](std::size_t size) {
  return request(size);
}
void operator delete(void* block) noexcept {
  give_back(block);
}
void operator delete[](void* block) noexcept {
  give_back(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  give_back(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
  give_back(block);
}
// NOLINTEND(misc-new-delete-overloads)

namespace svcinst {
namespace {

template <std::size_t kCount>
int run(const char* const (&arguments)[kCount]) {
  return run_program(static_cast<int>(kCount), arguments);
}

int install() {
  return run({"C:\\tools\\svcinst.exe", "-i", "--name", "svc", "-b", "a b.exe", "-d", "Display",
              "--dep=Tcpip", "--desc", "text"});
}

class OutOfMemory : public ServiceFixture {};

TEST_F(OutOfMemory, LeavesNothingBehindAtAnyRequest) {
  set_cpu(true);
  set_thread(true);
  set_count(true);
  const struct {
    int (*task)();
    bool result_is_zero;
    int fewest_requests;
  } rows[] = {{install, true, 300},
              {[] {
                 return run({"svcinst", "-u", "-n=svc"});
               },
               true, 100},
              {[] { return run({"svcinst"}); }, false, 100},
              {[] { return log_error("%s %5d %f", "text", 42, 1.5); }, false, 2},
              {[] { return log_it("%s", "text"); }, false, 2}};
  const CapturedStdout output;
  for (const auto& row : rows) {
    int failures = 0;
    for (bool failed = true; failed;) {
      std::filesystem::remove(path);
      EXPECT_TRUE(row.task == install || install() == 0);
      const int blocks = live_blocks;
      int result = 0;
      requests_until_failure = failures + 1;
      try {
        result = row.task();
        failed = false;
      } catch (const std::bad_alloc&) {
        ++failures;
      }
      requests_until_failure = 0;
      std::vector<std::string>().swap(call_log());
      ASSERT_EQ(live_blocks, blocks) << failures;
      EXPECT_TRUE(failed || (result == 0) == row.result_is_zero) << result;
    }
    EXPECT_GE(failures, row.fewest_requests);
  }
}

}  // namespace
}  // namespace svcinst
