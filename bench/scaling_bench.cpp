// Time over doubling sizes, up to the longest command line of Windows: reading a grammar text, and
// matching a command line and looking an option up in it. Prints nanoseconds a byte for each size.
// An argument says how many runs each figure is the best of, 60 otherwise.
// They rise a little where the tree outgrows the caches; fails when they rise more than eightfold
// over the 32-fold size, where time that grows with the square would rise 32-fold.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "cmdline/option_lookup.h"
#include "grammar/matcher.h"

namespace svcinst {
namespace {

constexpr std::size_t kLongestLine = 32767;  // bytes, what CreateProcess accepts

double nanoseconds_of(bool is_grammar, const std::string& text) {
  static Grammar command_line;
  const auto start = std::chrono::steady_clock::now();
  if (is_grammar) {
    const Grammar grammar{TextView(text)};
  } else {
    command_line.result =
        match(command_line.start_rule, text.data(), text.size(), *command_line.rules);
    has_option(command_line, "none");
    command_line.result.reset();
  }
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

// The best of `runs`, for each byte.
double best(bool is_grammar, const std::string& text, int runs) {
  double least = nanoseconds_of(is_grammar, text);
  for (int run = 1; run < runs; ++run) least = std::min(least, nanoseconds_of(is_grammar, text));
  return least / static_cast<double>(text.size());
}

std::string repeated(const std::string& start, const std::string& piece, std::size_t size) {
  std::string text = start;
  while (text.size() < size) text += piece;
  return text.substr(0, size);
}

int compare(int runs) {
  const struct {
    const char* name;
    bool is_grammar;
    const char *start, *piece;
  } rows[] = {{"rules", true, "", "ab = 'x' | \"y\", [ab], {'0'~'9'}; "},
              {"one long rule", true, "a = 'x'", " | 'b', `-a`"},
              {"only spaces", true, "a = 'x';", " "},
              {"comments", true, "a = 'x';", "(* c *)"},
              {"unclosed comments", true, "a = 'x';", "(* "},
              {"only quotes", true, "a = ", "'"},
              {"unclosed quotes", true, "a = 'x", " | 'y"},
              {"nested", true, "a = ", "("},
              {"nested, counted", true, "a = ", "2{"},
              {"except", true, "a = ", "!"},
              {"options", false, "", " --name=svc -n \"a b\" --desc 'x'"},
              {"one long value", false, " --desc \"", "x "},
              {"only spaces", false, "", " "},
              {"only quotes", false, "", "\""},
              {"only dashes", false, "", "-"},
              {"dashes and spaces", false, "", " -"},
              {"double dashes", false, "", " --"},
              {"unclosed quotes", false, "", " -n \"a"},
              {"unclosed, both kinds", false, "", " -n '\" -d \"'"},
              {"flags", false, "", " -n"},
              {"flags and spaces", false, "", " -n    "}};
  int failures = 0;
  for (const auto& row : rows) {
    std::printf("%-8s %-22s", row.is_grammar ? "grammar" : "line", row.name);
    double least = 0;
    double now = 0;
    for (std::size_t size = (kLongestLine + 1) / 32; size <= kLongestLine + 1; size *= 2) {
      now = best(row.is_grammar, repeated(row.start, row.piece, size - 1), runs);
      least = least == 0 ? now : std::min(least, now);
      std::printf(" %8.2f", now);
    }
    if (now > 8 * least) ++failures;
    std::printf("\n");
  }
  return failures == 0 ? 0 : 1;
}

}  // namespace
}  // namespace svcinst

int main(int argc, char** argv) {
  return svcinst::compare(argc > 1 ? std::atoi(argv[1]) : 60);
}
