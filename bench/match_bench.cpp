// Matching command lines against the command line's grammar.
#include "bench/match_tree.h"
#include "bench/measure.h"
#include "cmdline/command_line_grammar.h"
#include "grammar/grammar.h"
#include "grammar/matcher.h"

namespace svcinst::bench {
namespace {

constexpr std::size_t kLongLine = 32'000;  // bytes
constexpr std::size_t kShortLine = 500;    // bytes

const std::string typical_line =
    " --install --name hello --disname \"Hello service\" --binpath \"C:\\Program Files\\hello\\"
    "hello.exe\" --dep Tcpi -d \"a service\"";

std::string options_line(std::size_t length) {
  std::string line;
  while (line.size() < length)
    line += " --name some_service --disname=\"Some service\" -b C:\\some.exe";
  line.resize(length - 1, 'x');
  return line + "x";
}

std::string value_line(std::size_t length) {
  std::string line = " --desc ";
  line.resize(length, 'v');
  return line;
}

const std::string long_line = options_line(kLongLine);
const std::string short_line = options_line(kShortLine);
const std::string long_value = value_line(kLongLine);

Grammar& grammar() {
  static Grammar only;
  return only;
}

MatchNodePtr our_match(const std::string& line) {
  furthest_failure = nullptr;
  return match(grammar().start_rule, line.data(), line.size(), *grammar().rules);
}

void describe(std::string& tree, int depth, const MatchNode& node, const char* line) {
  static constexpr const char* kKinds[] = {"?",
                                           "",
                                           "syntax",
                                           "cmd_param",
                                           "letter",
                                           "short_param_name",
                                           "long_param_name",
                                           "param_and_value",
                                           "value",
                                           "space"};
  const auto begin = static_cast<std::size_t>(node.start - line);
  describe_node(tree, depth, kKinds[node.type], begin, node.length);
  if (node.children == nullptr) return;
  for (std::uint64_t i = 0; i < node.children->count; ++i)
    describe(tree, depth + 1, *node.children->items[i], line);
}

std::string our_tree(const std::string& line) {
  const MatchNodePtr root = our_match(line);
  if (!root) return "no match";
  std::string tree;
  describe(tree, 0, *root, line.data());
  return tree;
}

template <const std::string& line>
void match_ours() {
  const MatchNodePtr root = our_match(line);
  benchmark::DoNotOptimize(root.get());
}

template <const std::string& line>
void ours(benchmark::State& state) {
  measure(state, our_tree(line) == peer_tree(line), match_ours<line>);
}

template <const std::string& line>
void pegtl(benchmark::State& state) {
  measure(state, true, [] { peer_match(line); });
}

// As many bytes as the long line has.
void short_lines(benchmark::State& state) {
  measure(state, our_tree(short_line) == peer_tree(short_line), [] {
    for (std::size_t bytes = 0; bytes < kLongLine; bytes += kShortLine) match_ours<short_line>();
  });
}

BENCHMARK(ours<typical_line>)->Name("match-typical/ours");
BENCHMARK(pegtl<typical_line>)->Name("match-typical/pegtl");
BENCHMARK(ours<long_line>)->Name("match-long/ours");
BENCHMARK(pegtl<long_line>)->Name("match-long/pegtl");
BENCHMARK(ours<long_value>)->Name("match-value/ours");
BENCHMARK(pegtl<long_value>)->Name("match-value/pegtl");
BENCHMARK(short_lines)->Name("match-scale/short");

}  // namespace

void describe_node(std::string& tree, int depth, std::string_view kind, std::size_t begin,
                   std::size_t length) {
  tree += std::to_string(depth) + " " + std::string(kind) + " " + std::to_string(begin) + "+" +
          std::to_string(length) + "\n";
}

}  // namespace svcinst::bench
