// The stack protector's guard, and what checks of the stack and of buffer sizes call when they
// fail. The compiler's library has all three, but asks the system's cryptography for the guard,
// whose libraries take as long to load as everything else in a start.
#include <cstdint>
#include <string_view>

#include "platform/process_api.h"
// Needs the types of the above.
#include <ntsecapi.h>

namespace {

[[noreturn]] void end_process(std::string_view message) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), message.data(), static_cast<DWORD>(message.size()),
            &written, nullptr);
  TerminateProcess(GetCurrentProcess(), STATUS_STACK_BUFFER_OVERRUN);
  __builtin_trap();
}

}  // namespace

// The names are the compiler's.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
// Where no random number is to be had, bytes that a copied text can't contain stay in it.
std::uintptr_t __stack_chk_guard = 0x0a0d'ff00'0a0d'ff00;

[[gnu::noreturn]] void __stack_chk_fail() {
  end_process("*** stack smashing detected ***: terminated\n");
}

[[gnu::noreturn]] void __chk_fail() {
  end_process("*** buffer overflow detected ***: terminated\n");
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace {

// Has no buffer and so no check of its own, which the change of the guard would make fail.
int fill_guard() {
  RtlGenRandom(&__stack_chk_guard, sizeof __stack_chk_guard);
  return 0;
}

// The runtime library calls the functions of this section before the constructors.
[[gnu::used, gnu::section(".CRT$XIU")]] int (*const fill_guard_first)() = fill_guard;

}  // namespace
