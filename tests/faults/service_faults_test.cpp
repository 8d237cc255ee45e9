// The service database under faults: runs of the whole program with a scripted clock, so that no
// wait takes time, and the real database. Whatever happens, each service is there whole or not at
// all, and the next run works.
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <vector>

#include "app/program.h"
#include "log/log.h"
#include "tests/faults/system_call_faults.h"
#include "tests/platform/service_fixture.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {
namespace {

constexpr int kFailed = 255;  // what the system makes of -1

int install_svc() {
  const char* const arguments[] = {"svcinst",      "-i",          "-n=svc",     "-d=Display",
                                   "-b=C:\\x.exe", "--dep=Tcpip", "--desc=text"};
  return run_program(7, arguments) & 0xFF;
}

int uninstall_svc() {
  const char* const arguments[] = {"svcinst", "-u", "-n=svc"};
  return run_program(3, arguments) & 0xFF;
}

// What a database holds, as services() shows it.
const std::string empty_database = "ok\n";
const std::string only_other = "ok\nother||C:\\x.exe|||16|2|1|0\n";
const std::string svc_start = "svc|Display|C:\\x.exe|54637069700000|";
const std::string svc_row = svc_start + "text|16|2|1|0\n";
const std::string undescribed_row = svc_start + "|16|2|1|0\n";
const std::string marked_row = svc_start + "text|16|2|1|1\n";

class ServiceFaults : public ServiceFixture {
 protected:
  ServiceFaults() { set_log2cmd(UINT64_MAX); }

  // Runs `task` with a fault, in a process whose calls are trapped. Its log goes to a file.
  int run(int (*task)(), const FaultPlan& plan) {
    std::filesystem::remove(log);
    set_log2file(log.c_str(), static_cast<int>(log.size()));
    reset_scripted_clock();
    fault_plan = plan;
    const int result = task();
    count = fault_plan.count;
    fault_plan = {};
    set_log2file("", 0);
    return result;
  }

  std::string services() {
    const std::string found =
        sql("PRAGMA integrity_check; SELECT ifnull(name, ''), ifnull(display_name, ''),"
            " ifnull(binary_path, ''), ifnull(hex(dependencies), ''), ifnull(description, ''),"
            " quote(service_type), quote(start_type), quote(current_state), quote(delete_pending)"
            " FROM services ORDER BY id");
    const bool none = found == "no such table: services" || found == "unable to open database file";
    return none ? empty_database : found;
  }

  // Makes `database`, one of the file's earlier states, the state; empty for no file.
  void start_with(const std::string& database) {
    std::filesystem::remove_all(directory.path("state"));
    if (database.empty()) return;
    std::filesystem::create_directory(directory.path("state"));
    std::ofstream(path, std::ios::binary) << database;
  }

  struct Step {
    int (*task)();
    std::string database;  // the file before; empty for none
    std::string old_state, new_state, between;
  };

  // `step` had a fault on its way and ended with `result`, -1 when it was killed: the old state or
  // the new one is left, or the one in between, and the program works on.
  void expect_whole(const Step& step, int result) {
    const std::string now = services();
    EXPECT_TRUE(now == step.new_state || now == step.between ||
                (now == step.old_state && result != 0))
        << now;
    EXPECT_TRUE(result != kFailed || file_bytes(log).ends_with(" failed!\n")) << file_bytes(log);
    reset_scripted_clock();
    const bool there = uninstall_svc() == 0;
    EXPECT_EQ(there, now.ends_with(svc_row) || now.ends_with(undescribed_row)) << now;
    EXPECT_EQ(install_svc(), 0);
    EXPECT_TRUE(services().ends_with(svc_row));
  }

  // The first run in its life of a machine, and the removal of one service of two.
  std::vector<Step> steps() {
    EXPECT_TRUE(install("other"));
    EXPECT_EQ(install_svc(), 0);
    return {{install_svc, "", empty_database, empty_database + svc_row,
             empty_database + undescribed_row},
            {uninstall_svc, file_bytes(path), only_other + svc_row, only_other,
             only_other + marked_row}};
  }

  std::string log = directory.path("log");
  int count = 0;  // of the places for a fault in the last run
};

TEST_F(ServiceFaults, KilledAtEveryChangeOfAFile) {
  for (const Step& step : steps()) {
    int n = 1;
    for (bool killed = true; killed && !HasFailure(); ++n) {
      SCOPED_TRACE(step.old_state + std::to_string(n));
      start_with(step.database);
      const pid_t child = start([&] {
        trap_system_calls();
        return run(step.task, {Fault::kill, n}) == 0;
      });
      int status = 0;
      waitpid(child, &status, 0);
      killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
      EXPECT_TRUE(killed || status == 0) << status;
      expect_whole(step, killed ? -1 : 0);
    }
    EXPECT_GT(n, 20);
  }
}

TEST_F(ServiceFaults, RefusedAtEveryCallThatConcernsAFile) {
  const std::vector<Step> all_steps = steps();
  EXPECT_TRUE(succeeded(start([&] {
    trap_system_calls();
    for (const Step& step : all_steps) {
      for (const FaultPlan& fault :
           {FaultPlan{Fault::fail_once, 0, EIO}, FaultPlan{Fault::fail_on, 0, ENOSPC}}) {
        int n = 1;
        for (count = 1; count >= n - 1 && !HasFailure(); ++n) {
          SCOPED_TRACE(step.old_state + std::to_string(fault.error) + " at " + std::to_string(n));
          start_with(step.database);
          const int result = run(step.task, {fault.fault, n, fault.error});
          EXPECT_TRUE(result == 0 || result == kFailed) << result;
          expect_whole(step, result);
        }
        EXPECT_GT(n, 50);
      }
    }
    return !HasFailure();
  })));
}

TEST_F(ServiceFaults, TwoAtOnce) {
  ASSERT_TRUE(install("other"));
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const auto compete = [&] {
    int counts[2] = {0, 0};  // services made, services removed
    for (int round = 0; round < 100; ++round) {
      counts[0] += install_svc() == 0 ? 1 : 0;
      counts[1] += uninstall_svc() == 0 ? 1 : 0;
    }
    return write(ends[1], counts, sizeof counts) == sizeof counts;
  };
  const pid_t children[] = {start(compete), start(compete)};
  int made = 0;
  for (const pid_t child : children) {
    EXPECT_TRUE(succeeded(child));
    int counts[2];
    ASSERT_EQ(read(ends[0], counts, sizeof counts), ssize_t{sizeof counts});
    EXPECT_GT(counts[0], 0);
    made += counts[0] - counts[1];
  }
  EXPECT_EQ(services(), made == 1 ? only_other + svc_row : only_other) << made;
  EXPECT_TRUE(made == 0 || made == 1) << made;
  for (const int end : ends) close(end);
}

TEST_F(ServiceFaults, InAFolderThatMayOnlyBeRead) {
  ASSERT_EQ(install_svc(), 0);
  chmod(directory.path("").c_str(), 0777);
  chmod(directory.path("state").c_str(), 0555);
  for (int (*const task)() : {install_svc, uninstall_svc}) {
    const pid_t refused =
        start([&] { return (geteuid() != 0 || setuid(65534) == 0) && run(task, {}) == kFailed; });
    EXPECT_TRUE(succeeded(refused));
    EXPECT_TRUE(file_bytes(log).ends_with("Open the service manager failed!\n"));
  }
  chmod(directory.path("state").c_str(), 0755);
  EXPECT_EQ(services(), empty_database + svc_row);
}

TEST_F(ServiceFaults, InADatabaseWithAnyByteDamaged) {
  ASSERT_EQ(install_svc(), 0);
  const std::string whole = file_bytes(path);
  int refusals = 0;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    if (whole[at] == '\0' && at % 16 != 0) continue;
    std::string damaged = whole;
    damaged[at] = static_cast<char>(~damaged[at]);
    start_with(damaged);
    reset_scripted_clock();
    const int removed = uninstall_svc();
    const int result = install_svc();
    EXPECT_TRUE((removed == 0 || removed == kFailed) && (result == 0 || result == kFailed)) << at;
    const std::string now = services();
    EXPECT_TRUE(result != 0 || (now.starts_with(empty_database) && now.ends_with(svc_row)))
        << at << now;
    refusals += result == 0 ? 0 : 1;
  }
  EXPECT_GT(refusals, 100);
}

}  // namespace
}  // namespace svcinst
