// Faults of the process's own system calls. Linux on x86-64.
#pragma once

namespace svcinst {

enum class Fault {
  none,
  kill,       // SIGKILL before the n-th call that changes a file or folder
  fail_once,  // the n-th call that concerns a file or folder fails with `error`
  fail_on,    // that one and all later ones
};

struct FaultPlan {
  Fault fault = Fault::none;
  int n = 0;      // counted from 1
  int error = 0;  // an errno code
  int count = 0;  // of the calls so far
};

/// What happens once trap_system_calls() was called.
extern FaultPlan fault_plan;

/// Brings `fault_plan` into force; for the rest of this process's life, so call it in a child.
void trap_system_calls();

}  // namespace svcinst
