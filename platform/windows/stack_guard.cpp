// The stack protector's guard, and what checks of the stack and of buffer sizes call when they
// fail. The compiler's library has all three, but asks the system's cryptography for the guard,
// whose libraries take as long to load as everything else in a start.
#include <x86intrin.h>

#include <bit>
#include <cstdint>
#include <string_view>

#include "platform/process_api.h"

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
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {
std::uintptr_t __stack_chk_guard = 0;

[[gnu::noreturn]] void __stack_chk_fail() {
  end_process("*** stack smashing detected ***: terminated\n");
}

[[gnu::noreturn]] void __chk_fail() {
  end_process("*** buffer overflow detected ***: terminated\n");
}
}
// NOLINTEND(readability-identifier-naming)

namespace {

// Every bit of the result depends on every bit of `value` (the finaliser of SplitMix64).
std::uint64_t stirred(std::uint64_t value) {
  value = (value ^ value >> 30) * 0xBF58'476D'1CE4'E5B9;
  value = (value ^ value >> 27) * 0x94D0'49BB'1331'11EB;
  return value ^ value >> 31;
}

// Made of what differs from start to start and needs no library but KERNEL32: others may be looked
// for in the program's folder first. A copied text can't get over the byte that is 0. Has no check
// of its own, which the change of the guard would make fail.
[[gnu::no_stack_protector]] void NTAPI fill_guard(PVOID /*module*/, DWORD reason,
                                                  PVOID /*reserved*/) {
  if (reason != DLL_PROCESS_ATTACH) return;
  FILETIME time;
  GetSystemTimeAsFileTime(&time);
  LARGE_INTEGER counter;
  QueryPerformanceCounter(&counter);
  std::uint64_t guard = 0;
  for (const std::uint64_t part : std::initializer_list<std::uint64_t>{
           std::bit_cast<std::uint64_t>(time), static_cast<std::uint64_t>(counter.QuadPart),
           GetCurrentProcessId(), GetCurrentThreadId(), GetTickCount(),
           reinterpret_cast<std::uint64_t>(&time), __rdtsc()})
    guard = stirred(guard ^ part);
  __stack_chk_guard = guard << 8;
}

// The loader calls the functions of this section before any thread but its own runs: one of a
// library that is loaded early must not see the guard change.
[[gnu::used, gnu::section(".CRT$XLB")]] const PIMAGE_TLS_CALLBACK fill_guard_first = fill_guard;

}  // namespace
