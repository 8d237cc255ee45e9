// The service database under faults: runs of the whole program with a scripted clock, so that no
// wait takes time, and the real database. Whatever happens, each service is there whole or not at
// all, and the next run works.
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fstream>

#include "app/program.h"
#include "log/log.h"
#include "tests/platform/service_fixture.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {
namespace {

constexpr int kFailed = 255;  // what the system makes of -1
constexpr int kKilled = -1;

struct Outcome {
  int status;    // of the exit, or kKilled
  bool faulted;  // whether there was a place for the fault
};

int install_svc() {
  const char* const arguments[] = {"svcinst",      "-i",          "-n=svc",     "-d=Display",
                                   "-b=C:\\x.exe", "--dep=Tcpip", "--desc=text"};
  return run_program(7, arguments) & 0xFF;
}

int uninstall_svc() {
  const char* const arguments[] = {"svcinst", "-u", "-n=svc"};
  return run_program(3, arguments) & 0xFF;
}

// True for the calls by which SQLite and this program reach files. Others, such as those for
// memory, belong to the sanitizers as well, which do not take a failure.
bool concerns_a_file(unsigned long long call) {
  constexpr unsigned kCalls[] = {SYS_openat,     SYS_mkdir,  SYS_unlink,    SYS_pwrite64,
                                 SYS_fdatasync,  SYS_fsync,  SYS_ftruncate, SYS_fallocate,
                                 SYS_fchown,     SYS_fchmod, SYS_pread64,   SYS_fcntl,
                                 SYS_newfstatat, SYS_lseek,  SYS_faccessat2};
  return std::find(std::begin(kCalls), std::end(kCalls), call) != std::end(kCalls);
}

// What a database holds, as services() shows it.
const std::string none = "ok\n";
const std::string other = "ok\nother|C:\\x.exe|||1|0\n";
const std::string undescribed = "svc|C:\\x.exe|54637069700000||1|0\n";
const std::string svc = "svc|C:\\x.exe|54637069700000|text|1|0\n";
const std::string marked = "svc|C:\\x.exe|54637069700000|text|1|1\n";

class ServiceFaults : public ServiceFixture {
 protected:
  ServiceFaults() { set_log2cmd(UINT64_MAX); }

  // Runs `task` in a child process whose system call number `n`, counted from 1, meets a fault: a
  // kill for `error` 0, otherwise this error, ENOSPC at the later ones too.
  Outcome run_with_fault(int (*task)(), int error, int n) const {
    const pid_t child = fork();
    if (child == 0) {
      set_flush(true);
      set_log2file(log.c_str(), static_cast<int>(log.size()));
      ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
      raise(SIGSTOP);
      _exit(task());
    }
    int status = 0;
    int calls = 0;
    for (waitpid(child, &status, 0); WIFSTOPPED(status); waitpid(child, &status, 0)) {
      user_regs_struct registers{};
      ptrace(PTRACE_GETREGS, child, nullptr, &registers);
      const bool enters = WSTOPSIG(status) == SIGTRAP && registers.rax == -1ULL * ENOSYS;
      if (enters && (error == 0 || concerns_a_file(registers.orig_rax)) &&
          (++calls == n || (calls > n && error == ENOSPC))) {
        if (error == 0) kill(child, SIGKILL);
        registers.orig_rax = -1ULL;  // no call: what is in rax is its result
        registers.rax = -1ULL * static_cast<unsigned>(error);
        ptrace(PTRACE_SETREGS, child, nullptr, &registers);
      }
      const bool go_on = calls < n || error == ENOSPC;
      ptrace(go_on ? PTRACE_SYSCALL : PTRACE_CONT, child, nullptr, nullptr);
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : kKilled, calls >= n};
  }

  [[nodiscard]] std::string services() const {
    const std::string found =
        sql("PRAGMA integrity_check; SELECT ifnull(name, ''), ifnull(binary_path, ''),"
            " ifnull(hex(dependencies), ''), ifnull(description, ''), quote(current_state),"
            " quote(delete_pending) FROM services ORDER BY id");
    return found.starts_with("no such table") || found.starts_with("unable to open") ? none : found;
  }

  // Makes `database`, one of the file's earlier states, the state; empty for no file.
  void start_with(const std::string& database) const {
    std::filesystem::remove_all(directory.path("state"));
    std::filesystem::remove(log);
    if (database.empty()) return;
    std::filesystem::create_directory(directory.path("state"));
    std::ofstream(path, std::ios::binary) << database;
  }

  // What `install` of another service leaves in the file.
  std::string with_other() {
    const char* const arguments[] = {"svcinst", "-i", "-n=other", "-d=Other", "-b=C:\\x.exe"};
    EXPECT_EQ(run_program(5, arguments), 0);
    return file_bytes(path);
  }

  std::string log = directory.path("log");
};

TEST_F(ServiceFaults, AtEverySystemCall) {
  with_other();
  EXPECT_EQ(install_svc(), 0);
  const struct {
    int (*task)();
    std::string database, old_state, new_state, between;
  } steps[] = {{install_svc, "", none, none + svc, none + undescribed},
               {uninstall_svc, file_bytes(path), other + svc, other, other + marked}};
  for (const auto& step : steps) {
    for (const int error : {0, EIO, ENOSPC}) {
      bool faulted = true;
      for (int n = 1; faulted && !HasFailure(); ++n) {
        start_with(step.database);
        const Outcome outcome = run_with_fault(step.task, error, n);
        const int result = outcome.status;
        faulted = outcome.faulted;
        SCOPED_TRACE(step.old_state + std::to_string(error) + " at " + std::to_string(n));
        EXPECT_EQ(result, result == 0 ? 0 : error == 0 ? kKilled : kFailed);
        EXPECT_TRUE(result != kFailed || file_bytes(log).ends_with(" failed!\n"));
        const std::string now = services();
        EXPECT_TRUE(now == step.new_state || now == step.between ||
                    (now == step.old_state && result != 0))
            << now;
        EXPECT_EQ(uninstall_svc() == 0, now.ends_with(svc) || now.ends_with(undescribed)) << now;
        EXPECT_EQ(install_svc(), 0);
        EXPECT_TRUE(services().ends_with(svc));
        EXPECT_TRUE(faulted || n > 50);
      }
    }
  }
}

TEST_F(ServiceFaults, TwoAtOnce) {
  with_other();
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
  int left = 0;
  for (const pid_t child : children) {
    EXPECT_TRUE(succeeded(child));
    int counts[2];
    ASSERT_EQ(read(ends[0], counts, sizeof counts), ssize_t{sizeof counts});
    EXPECT_GT(counts[0], 0);
    left += counts[0] - counts[1];
  }
  EXPECT_TRUE(left == 0 || left == 1) << left;
  EXPECT_EQ(services(), left == 1 ? other + svc : other);
  for (const int end : ends) close(end);
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
    const int removed = uninstall_svc();
    const int result = install_svc();
    EXPECT_TRUE((removed == 0 || removed == kFailed) && (result == 0 || result == kFailed)) << at;
    const std::string now = services();
    EXPECT_TRUE(result != 0 || (now.starts_with(none) && now.ends_with(svc))) << at << now;
    refusals += result == 0 ? 0 : 1;
  }
  EXPECT_GT(refusals, 100);
}

}  // namespace
}  // namespace svcinst
