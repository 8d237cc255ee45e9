// What a run printed, the scripted calls and sleeps among its messages, told as one text.
#pragma once

#include <regex>
#include <string>
#include <vector>

#include "app/program.h"
#include "tests/support/capture.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {

/// What `run` prints, messages without their prefix, and behind it its result.
template <class Run>
std::string story_of(Run run) {
  static const std::regex prefix(R"(\[2024-05-06 07:08:09\.010\|\x1B\[36;40minfo\x1B\[0m\] )");
  scripted_clock = {.tick_count = 0xFFFFFF00};  // it begins again at 0 soon
  const CapturedStdout captured;
  const int result = run();
  return std::regex_replace(captured.bytes(), prefix, "") + std::to_string(result);
}

inline std::string story_of_program(const std::vector<const char*>& argv) {
  return story_of([&] { return run_program(static_cast<int>(argv.size()), argv.data()); });
}

}  // namespace svcinst
