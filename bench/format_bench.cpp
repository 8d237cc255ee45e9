// Formatting of log messages, by a format string that is read at run time.
#include <fmt/format.h>
#include <stb/stb_sprintf.h>

#include <cstdio>

#include "bench/measure.h"
#include "bench/messages.h"

namespace svcinst::bench {
namespace {

int print_libc(char* buffer, const char* format, std::va_list arguments) {
  return std::vsnprintf(buffer, kSize, format, arguments);
}

int print_stb(char* buffer, const char* format, std::va_list arguments) {
  return stbsp_vsnprintf(buffer, int{kSize}, format, arguments);
}

struct Fmt {
  template <class... Values>
  int operator()(char* buffer, const Message<Values...>& each) const {
    const auto call = [&](const Values&... values) {
      return fmt::format_to_n(buffer, kSize, fmt::runtime(each.fmt_format), values...).size;
    };
    return static_cast<int>(std::apply(call, each.values));
  }
};

template <class PrintMessage>
void mix(benchmark::State& state) {
  const bool same = mix_text(PrintMessage()) == mix_text(Printf<print_libc>());
  measure(state, same, [] { print_mix(PrintMessage(), keep); });
}

constexpr std::array kDoubles = {0.0,     1.5,         -0.25,      3.14159265, 2.718281828,
                                 99.9999, 1234.56789,  -0.001,     1e6,        123456789.125,
                                 0.1,     1.0 / 3.0,   -273.15,    6.02e11,    65535.75,
                                 1e-7,    48000.00001, 8.85418782, -1e9,       0.015625};

template <Print print>
std::string doubles_text() {
  std::string all;
  std::array<char, kSize> buffer;
  for (const double value : kDoubles)
    all.append(buffer.data(),
               static_cast<std::size_t>(print_values<print>(buffer.data(), "%f", value)));
  return all;
}

template <Print print>
void doubles(benchmark::State& state) {
  measure(state, doubles_text<print>() == doubles_text<print_libc>(), [] {
    std::array<char, kSize> buffer;
    for (const double value : kDoubles)
      keep(buffer.data(), print_values<print>(buffer.data(), "%f", value));
  });
}

BENCHMARK(mix<Printf<print_ours>>)->Name("format-mix/ours");
BENCHMARK(mix<Printf<print_libc>>)->Name("format-mix/vsnprintf");
BENCHMARK(mix<Fmt>)->Name("format-mix/fmt");
BENCHMARK(mix<Printf<print_stb>>)->Name("format-mix/stb");
BENCHMARK(doubles<print_ours>)->Name("format-float/ours");
BENCHMARK(doubles<print_libc>)->Name("format-float/vsnprintf");

}  // namespace
}  // namespace svcinst::bench
