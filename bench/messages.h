// The ten messages that formatting is measured with.
#pragma once

#include <array>
#include <cstdarg>
#include <cstddef>
#include <string_view>
#include <tuple>

#include "format/format_text.h"

namespace svcinst::bench {

constexpr std::size_t kSize = 256;  // bytes of the buffer, more than any message here

/// A formatter: writes into a buffer of kSize bytes and returns the length of the text.
using Print = int (*)(char* buffer, const char* format, ...);

inline int print_ours(char* buffer, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = format_text(0, buffer, kSize, format, arguments);
  va_end(arguments);
  return length;
}

// Every format in two notations, and the values that both print.
template <class... Values>
struct Message {
  const char* format;
  const char* fmt_format;
  std::tuple<Values...> values;
};

template <class... Values>
Message<Values...> message(const char* format, const char* fmt_format, Values... values) {
  return {format, fmt_format, {values...}};
}

inline const char* const block = "Tcpip/Parameters/Interfaces";
inline const std::string_view slice(block, 5);

inline const auto messages = std::tuple(
    message("service '%s' is now %s\n", "service '{}' is now {}\n", "hello", "running"),
    message("open the service '%s' failed with %d\n", "open the service '{}' failed with {}\n",
            "a_service_with_a_longer_name", 1060),
    message("%s: %d of %d handles closed, %u left\n", "{}: {} of {} handles closed, {} left\n",
            "manager", 12, 4096, 4084U),
    message("checkpoint %5d of %5d, wait hint %u ms\n",
            "checkpoint {:5} of {:5}, wait hint {} ms\n", 3, 1500, 30000U),
    message("access 0x%x, type 0x%x, start %d\n", "access 0x{:x}, type 0x{:x}, start {}\n",
            0xf01ffU, 0x10U, 2),
    message("drive %c: holds %s, %u bytes free\n", "drive {}: holds {}, {} bytes free\n", 'C',
            "Program Files", 3221225472U),
    message("process %d took %5d us in state %x, then stopped as it was asked to by %s\n",
            "process {} took {:5} us in state {:x}, then stopped as it was asked to by {}\n", 21876,
            731, 4U, "the service manager"),
    message("no value here, only a text as most of the messages of this program are\n",
            "no value here, only a text as most of the messages of this program are\n"),
    message("%s %s %s=%s, group %c%c, exit code %d\n", "{} {} {}={}, group {}{}, exit code {}\n",
            "--install", "--name", "--binpath", "C:\\hello\\hello.exe", 'A', 'z', -1));

// The same with "%.*s", which takes two values for one.
inline int print_slice(Print print, char* buffer) {
  return print(buffer, "depends on %.*s (%d), queried %u times\n", static_cast<int>(slice.size()),
               slice.data(), 5, 17U);
}

template <class Visit>
void for_each_message(Visit visit) {
  std::apply([&](const auto&... each) { (visit(each), ...); }, messages);
}

template <Print print, class... Values>
int print_message(char* buffer, const Message<Values...>& each) {
  return std::apply([&](const Values&... values) { return print(buffer, each.format, values...); },
                    each.values);
}

/// The ten messages, one after the other into the same buffer. Each time the compiler is made to
/// believe that somebody reads it.
template <Print print>
void print_mix() {
  std::array<char, kSize> buffer;
  const auto keep = [&](int) { asm volatile("" : : "r"(buffer.data()) : "memory"); };
  for_each_message([&](const auto& each) { keep(print_message<print>(buffer.data(), each)); });
  keep(print_slice(print, buffer.data()));
}

}  // namespace svcinst::bench
