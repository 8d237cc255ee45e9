// Reading a grammar text, and matching a command line and looking an option up in it, take steps in
// proportion to the length: the blocks of code that run, each counted by a call that the compiler
// puts into these sources, and the bytes that the C library looks through for them. Every text ends
// at the longest command line of Windows.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "cmdline/option_lookup.h"
#include "grammar/matcher.h"

static std::uint64_t steps = 0;

// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming): the names are theirs.
extern "C" {
void __sanitizer_cov_trace_pc() {
  ++steps;
}
const char* __real_memchr(const char* bytes, int wanted, std::size_t size);
const char* __wrap_memchr(const char* bytes, int wanted, std::size_t size) {
  const char* const found = __real_memchr(bytes, wanted, size);
  steps += found != nullptr ? static_cast<std::uint64_t>(found - bytes) : size;
  return found;
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace svcinst {
namespace {

constexpr std::size_t kLongestLine = 32767;  // bytes, what CreateProcess accepts

std::uint64_t steps_to_read(TextView text) {
  const std::uint64_t before = steps;
  const Grammar grammar(text);
  return steps - before;
}

std::uint64_t steps_to_look_up(TextView line) {
  Grammar grammar;
  const std::uint64_t before = steps;
  grammar.result = match(grammar.start_rule, line.data(), line.size(), *grammar.rules);
  has_option(grammar, "none");
  return steps - before;
}

TEST(Steps, GrowWithTheLengthAndNoFaster) {
  const struct {
    std::uint64_t (*count)(TextView text);
    const char *start, *piece;
  } rows[] = {{steps_to_read, "", "ab = 'x' | \"y\", [ab], {'0'~'9'}; "},
              {steps_to_read, "a = 'x';", "(* "},
              {steps_to_read, "a = ", "2{"},
              {steps_to_look_up, "", " --name=svc -n \"a b\" --desc 'x'"},
              {steps_to_look_up, " --desc \"", "x "},
              {steps_to_look_up, "", " -n \"a"},
              {steps_to_look_up, "", " -n    "}};
  for (const auto& row : rows) {
    std::uint64_t counts[2];
    for (const unsigned part : {1U, 2U}) {
      std::string text = row.start;
      while (text.size() < kLongestLine * part / 2) text += row.piece;
      counts[part - 1] = row.count(text);
    }
    EXPECT_LT(counts[1], counts[0] * 11 / 5) << row.start << row.piece;
  }
}

}  // namespace
}  // namespace svcinst
