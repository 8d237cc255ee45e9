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

const std::string long_line = options_line(kLongLine);
const std::string short_line = options_line(kShortLine);
const std::string long_value = " --desc " + std::string(kLongLine - 8, 'v');

Grammar& grammar() {
  static Grammar only;
  return only;
}

MatchNodePtr our_match(const std::string& line) {
  furthest_failure = nullptr;
  return match(grammar().start_rule, line.data(), line.size(), *grammar().rules);
}

// The name of the rule that made a node.
std::string_view kind_of(const MatchNode& node) {
  std::uint16_t type = rule_result_type(0);
  for (const auto& rule : grammar().root->children)
    if (node.type == type++) return text_of(first_child(*rule));
  return "";
}

void describe(std::string& tree, int depth, const MatchNode& node, const char* line) {
  describe_node(tree, depth, kind_of(node), node.start - line, node.length);
  for (const MatchNode* child : children_of(node)) describe(tree, depth + 1, *child, line);
}

std::string our_tree(const std::string& line) {
  const MatchNodePtr root = our_match(line);
  if (!root) return "no match of ours";
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
}  // namespace svcinst::bench
