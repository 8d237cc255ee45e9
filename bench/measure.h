// How a contestant is measured: with Google Benchmark, in turn with the others of its program.
#pragma once

#include <benchmark/benchmark.h>

namespace svcinst::bench {

/// Measures `run`, one portion of work, the same for every contestant of a row. same: whether it
/// makes what its peers make; where it does not, nothing is measured and scripts/bench stops.
template <class Run>
void measure(benchmark::State& state, bool same, Run run) {
  if (!same) state.SkipWithError("makes something else than its peer");
  for (auto _ : state) run();
}

}  // namespace svcinst::bench
