// What a run printed, the scripted calls and sleeps among its messages, told as one text.
#pragma once

#include "app/program.h"
#include "tests/support/capture.h"
#include "tests/support/scripted_platform.h"

namespace svcinst {

/// What `run` prints, with "> " for the prefix of a record of level info, and behind it its result.
template <class Run>
std::string story_of(Run run, const ScriptedServices& script = {}) {
  scripted_services = script;
  scripted_clock = {.tick_count = 0xFFFFFF00};  // it begins again at 0 soon
  CaptureStdout();
  const std::string result = std::to_string(run());
  return replaced(GetCapturedStdout(), "[2024-05-06 07:08:09.010|\033[36;40minfo\033[0m] ", "> ") +
         result;
}

inline std::string story_of_program(const std::vector<const char*>& argv,
                                    const ScriptedServices& script = {}) {
  return story_of([&] { return run_program(static_cast<int>(argv.size()), argv.data()); }, script);
}

}  // namespace svcinst
