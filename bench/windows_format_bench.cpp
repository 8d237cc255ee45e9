// Formatting on Windows, beside the C runtime there. Prints the nanoseconds that the ten messages
// take ours and the peer, a line for each pair of runs: windows_format_bench PAIRS
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/messages.h"

namespace svcinst::bench {
namespace {

int print_peer(char* buffer, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = _vsnprintf(buffer, kSize, format, arguments);
  va_end(arguments);
  return length;
}

template <Print print>
double nanoseconds() {
  constexpr int kRuns = 1000;
  const auto start = std::chrono::steady_clock::now();
  for (int run = 0; run < kRuns; ++run) print_mix<print>();
  const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
  return time.count() / kRuns;
}

template <Print print>
std::string text() {
  std::string all;
  std::array<char, kSize> buffer;
  const auto add = [&](int length) { all.append(buffer.data(), static_cast<std::size_t>(length)); };
  for_each_message([&](const auto& each) { add(print_message<print>(buffer.data(), each)); });
  add(print_slice(print, buffer.data()));
  return all;
}

}  // namespace
}  // namespace svcinst::bench

int main(int argc, char** argv) {
  using namespace svcinst::bench;
  if (argc != 2 || text<print_ours>() != text<print_peer>()) return EXIT_FAILURE;
  for (int left = std::atoi(argv[1]); left > 0; --left) {
    const double ours = nanoseconds<print_ours>();
    std::printf("windows-format-mix %.0f %.0f\n", ours, nanoseconds<print_peer>());
  }
}
