// Formatting of log messages, by a format string that is read at run time.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <string_view>

#include "bench/contest.h"
#include "bench/format_peer.h"
#include "bench/messages.h"

namespace svcinst::bench {
namespace {

int print_libc(char* buffer, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(buffer, kSize, format, arguments);
  va_end(arguments);
  return length;
}

int print_stb(char* buffer, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = peer_stb_vsnprintf(buffer, int{kSize}, format, arguments);
  va_end(arguments);
  return length;
}

int print_fmt_slice(char* buffer) {
  const char* format = "depends on {} ({}), queried {} times\n";
  benchmark::DoNotOptimize(format);
  const auto end = fmt::format_to_n(buffer, kSize, fmt::runtime(format), slice, 5, 17U);
  return static_cast<int>(end.size);
}

template <class... Values>
int print_fmt_message(char* buffer, const Message<Values...>& each) {
  return std::apply(
      [&](const Values&... values) {
        const auto end = fmt::format_to_n(buffer, kSize, fmt::runtime(each.fmt_format), values...);
        return static_cast<int>(end.size);
      },
      each.values);
}

void print_fmt_mix() {
  std::array<char, kSize> buffer;
  for_each_message([&](const auto& each) {
    print_fmt_message(buffer.data(), each);
    benchmark::DoNotOptimize(buffer);
  });
  print_fmt_slice(buffer.data());
  benchmark::DoNotOptimize(buffer);
}

constexpr std::array kDoubles = {0.0,     1.5,         -0.25,      3.14159265, 2.718281828,
                                 99.9999, 1234.56789,  -0.001,     1e6,        123456789.125,
                                 0.1,     1.0 / 3.0,   -273.15,    6.02e11,    65535.75,
                                 1e-7,    48000.00001, 8.85418782, -1e9,       0.015625};

template <Print print>
void print_doubles() {
  std::array<char, kSize> buffer;
  for (const double value : kDoubles) {
    print(buffer.data(), "%f", value);
    benchmark::DoNotOptimize(buffer);
  }
}

bool same(std::string_view wanted, std::string_view peer, std::string_view ours) {
  if (wanted == ours && wanted == peer) return true;
  std::fprintf(stderr, "ours: %s\npeer: %s\nlibc: %s\n", std::string(ours).c_str(),
               std::string(peer).c_str(), std::string(wanted).c_str());
  return false;
}

template <class Run>
std::string text_of(Run run) {
  std::array<char, kSize> buffer;
  const int length = run(buffer.data());
  return {buffer.data(), static_cast<std::size_t>(length)};
}

bool equal() {
  bool all = true;
  for_each_message([&](const auto& each) {
    const std::string ours = text_of([&](char* to) { return print_message<print_ours>(to, each); });
    const std::string libc = text_of([&](char* to) { return print_message<print_libc>(to, each); });
    const std::string stb = text_of([&](char* to) { return print_message<print_stb>(to, each); });
    const std::string fmt = text_of([&](char* to) { return print_fmt_message(to, each); });
    all = same(libc, stb, ours) && same(libc, fmt, ours) && ours.size() >= 20 &&
          ours.size() <= 120 && all;
  });
  const std::string ours = text_of([](char* to) { return print_slice(print_ours, to); });
  const std::string libc = text_of([](char* to) { return print_slice(print_libc, to); });
  all = same(libc, text_of([](char* to) { return print_slice(print_stb, to); }), ours) &&
        same(libc, text_of(print_fmt_slice), ours) && all;
  for (const double value : kDoubles) {
    const std::string text = text_of([&](char* to) { return print_libc(to, "%f", value); });
    all = same(text, text, text_of([&](char* to) { return print_ours(to, "%f", value); })) && all;
  }
  return all;
}

constexpr Contestant kContestants[] = {
    {"format-mix/ours", nullptr, print_mix<print_ours>},
    {"format-mix/vsnprintf", nullptr, print_mix<print_libc>},
    {"format-mix/fmt", nullptr, print_fmt_mix},
    {"format-mix/stb", nullptr, print_mix<print_stb>},
    {"format-float/ours", nullptr, print_doubles<print_ours>},
    {"format-float/vsnprintf", nullptr, print_doubles<print_libc>}};

}  // namespace
}  // namespace svcinst::bench

int main(int argc, char** argv) {
  using namespace svcinst::bench;
  return run_contest(argc, argv, kContestants, Clock::cpu, equal);
}
