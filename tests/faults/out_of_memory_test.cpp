// Memory runs out at every single request of a run but SQLite's: operator new fails at the n-th
// one. What is left behind, open handles too, the leak check finds at the end.
#include <cstdlib>
#include <new>

#include "app/program.h"
#include "tests/support/capture.h"

static int requests_until_failure = 0;  // 0: none fails

// NOLINTNEXTLINE(misc-new-delete-overloads): the sanitizer's delete frees by free, too.
void* operator new(std::size_t size) {
  if (requests_until_failure > 0 && --requests_until_failure == 0) throw std::bad_alloc();
  return std::malloc(size);
}

namespace svcinst {
namespace {

// Installs, uninstalls and shows the help; a lack of memory has ended none of it.
bool runs_with(int requests, const std::string& database) {
  const char* const install[] = {"svcinst", "-i", "-n=a", "-b=x", "-d=x", "--dep=y", "--desc=z"};
  const char* const uninstall[] = {"svcinst", "-u", "-n=a"};
  std::filesystem::remove(database);
  requests_until_failure = requests + 1;
  try {
    EXPECT_EQ(run_program(7, install), 0);
    EXPECT_EQ(run_program(3, uninstall), 0);
    EXPECT_EQ(run_program(1, uninstall), -1);
  } catch (const std::bad_alloc&) {
    return false;
  }
  requests_until_failure = 0;
  return true;
}

TEST(OutOfMemory, LeavesNothingBehindAtAnyRequest) {
  const TempDirectory directory;
  const std::string database = directory.path("services.db");
  setenv("SVCINST_DATABASE", database.c_str(), 1);
  int requests = 0;
  while (!runs_with(requests, database)) ++requests;
  EXPECT_GT(requests, 400);
}

}  // namespace
}  // namespace svcinst
