#include "bench/contest.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace svcinst::bench {
namespace {

void measure(benchmark::State& state, const Contestant& contestant) {
  if (contestant.prepare != nullptr) contestant.prepare();
  for (auto _ : state) contestant.run();
}

int run_alone(std::span<const Contestant> contestants, std::string_view name, const char* count) {
  for (const Contestant& contestant : contestants) {
    if (contestant.name != name) continue;
    if (contestant.prepare != nullptr) contestant.prepare();
    for (unsigned long left = std::strtoul(count, nullptr, 10); left > 0; --left) contestant.run();
    return EXIT_SUCCESS;
  }
  std::fprintf(stderr, "there is no contestant %s\n", std::string(name).c_str());
  return EXIT_FAILURE;
}

}  // namespace

int run_contest(int argc, char** argv, std::span<const Contestant> contestants, Clock clock,
                bool (*equal)()) {
  const std::string_view mode = argc > 1 ? argv[1] : "";
  if (mode == "--check") return equal() ? EXIT_SUCCESS : EXIT_FAILURE;
  if (mode == "--run" && argc == 4) return run_alone(contestants, argv[2], argv[3]);

  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
  for (const Contestant& contestant : contestants) {
    auto* const added = benchmark::RegisterBenchmark(
        contestant.name, [&](benchmark::State& state) { measure(state, contestant); });
    if (clock == Clock::wall) added->UseRealTime();
  }
  return benchmark::RunSpecifiedBenchmarks() > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace svcinst::bench
