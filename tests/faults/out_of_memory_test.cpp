// Memory runs out at every single request of a run but SQLite's: operator new fails at the n-th
// one. What is left behind, open handles too, the leak check finds at the end.
#include <cstdlib>
#include <new>

#include "app/program.h"
#include "tests/support/capture.h"

// What operator new below gets by malloc, the sanitizer's operator delete frees.
// NOLINTNEXTLINE(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" const char* __asan_default_options() {
  return "alloc_dealloc_mismatch=0";
}

static int requests_until_failure = 0;  // 0: none fails

// NOLINTNEXTLINE(misc-new-delete-overloads): the sanitizer's delete frees by free, too.
void* operator new(std::size_t size) {
  if (requests_until_failure > 0 && --requests_until_failure == 0) throw std::bad_alloc();
  return std::malloc(size);
}

namespace svcinst {
namespace {

TEST(OutOfMemory, LeavesNothingBehindAtAnyRequest) {
  const TempDirectory directory;
  setenv("SVCINST_DATABASE", directory.path("services.db").c_str(), 1);
  const CapturedStdout output;
  const char* const install[] = {"svcinst", "-i", "-n=a", "-b=x", "-d=x", "--dep=y", "--desc=z"};
  const char* const uninstall[] = {"svcinst", "-u", "-n=a"};
  int requests = 0;
  for (bool runs_out = true; runs_out; ++requests) {
    std::filesystem::remove(directory.path("services.db"));
    requests_until_failure = requests + 1;
    try {
      EXPECT_EQ(run_program(7, install), 0);
      EXPECT_EQ(run_program(3, uninstall), 0);
      EXPECT_EQ(run_program(1, uninstall), -1);
      runs_out = false;
    } catch (const std::bad_alloc&) {
    }
    requests_until_failure = 0;
  }
  EXPECT_GT(requests, 400);
}

}  // namespace
}  // namespace svcinst
