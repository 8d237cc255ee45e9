// The process's system calls come back to it as SIGSYS: a filter traps all but those that this file
// makes itself, by one instruction of its own. That is much faster than a tracing parent.
#include "tests/faults/system_call_faults.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <iterator>

// The number in the first argument, then the call's own six.
extern "C" long untrapped_call(long number, long a, long b, long c, long d, long e, long f);
extern "C" const char behind_untrapped_call;
asm(R"(
.text
.globl untrapped_call, behind_untrapped_call
.type untrapped_call, @function
untrapped_call:
  movq %rdi, %rax
  movq %rsi, %rdi
  movq %rdx, %rsi
  movq %rcx, %rdx
  movq %r8, %r10
  movq %r9, %r8
  movq 8(%rsp), %r9
  syscall
behind_untrapped_call:
  ret
)");

namespace svcinst {

FaultPlan fault_plan;

namespace {

bool changes_a_file(long call) {
  constexpr long kCalls[] = {SYS_openat, SYS_mkdir,     SYS_unlink,    SYS_pwrite64, SYS_fdatasync,
                             SYS_fsync,  SYS_ftruncate, SYS_fallocate, SYS_fchown,   SYS_fchmod};
  return std::find(std::begin(kCalls), std::end(kCalls), call) != std::end(kCalls);
}

bool looks_at_a_file(long call) {
  constexpr long kCalls[] = {SYS_pread64, SYS_fcntl, SYS_newfstatat, SYS_lseek, SYS_faccessat2};
  return std::find(std::begin(kCalls), std::end(kCalls), call) != std::end(kCalls);
}

bool has_fault(long call) {
  FaultPlan& plan = fault_plan;
  if (plan.fault == Fault::none) return false;
  // A kill before a call that changes nothing is one before the next that does.
  if (!changes_a_file(call) && (plan.fault == Fault::kill || !looks_at_a_file(call))) return false;
  ++plan.count;
  return plan.fault == Fault::fail_on ? plan.count >= plan.n : plan.count == plan.n;
}

void on_system_call(int /*signal*/, siginfo_t* info, void* context) {
  auto& registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
  const bool fails = has_fault(info->si_syscall);
  if (fails && fault_plan.fault == Fault::kill)
    untrapped_call(SYS_kill, untrapped_call(SYS_getpid, 0, 0, 0, 0, 0, 0), SIGKILL, 0, 0, 0, 0);
  registers[REG_RAX] =
      fails ? -fault_plan.error
            : untrapped_call(info->si_syscall, registers[REG_RDI], registers[REG_RSI],
                             registers[REG_RDX], registers[REG_R10], registers[REG_R8],
                             registers[REG_R9]);
}

}  // namespace

void trap_system_calls() {
  struct sigaction action {};
  action.sa_sigaction = on_system_call;
  action.sa_flags = SA_SIGINFO | SA_NODEFER;
  sigaction(SIGSYS, &action, nullptr);
  const auto place = reinterpret_cast<std::uintptr_t>(&behind_untrapped_call);
  constexpr auto kPlace = offsetof(seccomp_data, instruction_pointer);
  sock_filter steps[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_rt_sigreturn, 4, 0),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kPlace),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(place), 0, 3),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kPlace + 4),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(place >> 32), 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP)};
  const sock_fprog filter{static_cast<unsigned short>(std::size(steps)), steps};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0)
    _exit(99);
}

}  // namespace svcinst
