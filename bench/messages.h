// The ten messages that formatting is measured with.
#pragma once

#include <array>
#include <cstdarg>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>

#include "format/format_text.h"

namespace svcinst::bench {

constexpr std::size_t kSize = 256;  // bytes of a buffer, more than any message here

// A format in two notations, and the values that both print.
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
            "--install", "--name", "--binpath", "C:\\hello\\hello.exe", 'A', 'z', -1),
    message("depends on %.*s (%d), queried %u times\n", "depends on {} ({}), queried {} times\n",
            std::string_view(block, 5), 5, 17U));

/// A formatter: writes into a buffer of kSize bytes and returns the length of the text.
using Print = int (*)(char* buffer, const char* format, std::va_list arguments);

inline int print_ours(char* buffer, const char* format, std::va_list arguments) {
  return format_text(0, buffer, kSize, format, arguments);
}

template <Print print>
int print_values(char* buffer, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = print(buffer, format, arguments);
  va_end(arguments);
  return length;
}

// "%.*s" takes two values for one.
template <class Value>
auto as_printed(const Value& value) {
  return std::tuple(value);
}
inline auto as_printed(std::string_view slice) {
  return std::tuple(static_cast<int>(slice.size()), slice.data());
}

/// Prints a message by a formatter that takes what printf takes.
template <Print print>
struct Printf {
  template <class... Values>
  int operator()(char* buffer, const Message<Values...>& each) const {
    const auto call = [&](auto... values) {
      return print_values<print>(buffer, each.format, values...);
    };
    const auto spread = [](const Values&... values) {
      return std::tuple_cat(as_printed(values)...);
    };
    return std::apply(call, std::apply(spread, each.values));
  }
};

/// The ten messages, one after the other into the same buffer, by a Printf or its like. `seen` is
/// called with the buffer and the length of each.
template <class PrintMessage, class Seen>
void print_mix(PrintMessage print_message, Seen seen) {
  std::array<char, kSize> buffer;
  const auto print = [&](const auto& each) {
    seen(buffer.data(), print_message(buffer.data(), each));
  };
  std::apply([&](const auto&... each) { (print(each), ...); }, messages);
}

/// What print_mix prints, as one text.
template <class PrintMessage>
std::string mix_text(PrintMessage print_message) {
  std::string all;
  print_mix(print_message, [&](const char* text, int length) {
    all.append(text, static_cast<std::size_t>(length));
  });
  return all;
}

/// Makes the compiler believe that somebody reads a text.
inline void keep(const char* text, int /*length*/) {
  asm volatile("" : : "r"(text) : "memory");
}

}  // namespace svcinst::bench
