// What every benchmark program consists of: named contestants, run one at a time in a process of
// its own, and a check that those of one row do the same work.
//
//   PROGRAM --check           exits with 0 when the contestants' results are equal
//   PROGRAM --run NAME COUNT  runs one contestant COUNT times and nothing else, for callgrind
//   PROGRAM ...               measures, with Google Benchmark's options
#pragma once

#include <span>

namespace svcinst::bench {

struct Contestant {
  const char* name;   // "row/who"
  void (*prepare)();  // comes before the first run, and may come again; none when null
  void (*run)();      // one portion of work, the same for every contestant of a row
};

/// The time that is measured.
enum class Clock {
  cpu,   // of this process, in user and in kernel mode
  wall,  // what passes until the work of other processes is done
};

/// The whole main(). equal: compares what the contestants make and prints where they differ.
int run_contest(int argc, char** argv, std::span<const Contestant> contestants, Clock clock,
                bool (*equal)());

}  // namespace svcinst::bench
