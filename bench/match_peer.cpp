// The command line's grammar written for PEGTL, with a node for each rule and each terminal.
#include <benchmark/benchmark.h>

#include <tao/pegtl.hpp>
#include <tao/pegtl/contrib/parse_tree.hpp>

#include "bench/match_tree.h"

namespace svcinst::bench {
namespace {

namespace pegtl = tao::pegtl;

struct upper : pegtl::range<'A', 'Z'> {};
struct lower : pegtl::range<'a', 'z'> {};
struct digit : pegtl::range<'0', '9'> {};
struct underscore : pegtl::one<'_'> {};
struct dash : pegtl::one<'-'> {};
struct two_dashes : pegtl::string<'-', '-'> {};
struct equals : pegtl::one<'='> {};
struct double_quote : pegtl::one<'"'> {};
struct single_quote : pegtl::one<'\''> {};
struct in_double_quotes : pegtl::utf8::not_one<'"'> {};
struct in_single_quotes : pegtl::utf8::not_one<'\''> {};
struct bare_first : pegtl::utf8::not_one<' ', '-'> {};
struct bare_next : pegtl::utf8::not_one<' '> {};
struct blank : pegtl::one<' '> {};

struct space : pegtl::seq<blank> {};
struct letter : pegtl::sor<upper, lower, digit, underscore> {};
struct short_param_name : pegtl::seq<dash, letter> {};
struct long_param_name : pegtl::seq<two_dashes, pegtl::plus<letter>> {};
struct value : pegtl::sor<pegtl::seq<double_quote, pegtl::star<in_double_quotes>, double_quote>,
                          pegtl::seq<single_quote, pegtl::star<in_single_quotes>, single_quote>,
                          pegtl::seq<bare_first, pegtl::star<bare_next>>> {};
struct param_and_value : pegtl::seq<pegtl::sor<long_param_name, short_param_name>,
                                    pegtl::opt<equals>, pegtl::star<pegtl::star<space>, value>> {};
struct cmd_param : pegtl::plus<pegtl::star<space>, param_and_value> {};

template <class Rule>
using selector = pegtl::parse_tree::selector<
    Rule, pegtl::parse_tree::store_content::on<
              upper, lower, digit, underscore, dash, two_dashes, equals, double_quote, single_quote,
              in_double_quotes, in_single_quotes, bare_first, bare_next, blank, space, letter,
              short_param_name, long_param_name, value, param_and_value, cmd_param>>;

std::unique_ptr<pegtl::parse_tree::node> parse(const std::string& line) {
  pegtl::memory_input<pegtl::tracking_mode::lazy> input(line.data(), line.data() + line.size(), "");
  return pegtl::parse_tree::parse<cmd_param, selector>(input);
}

std::string_view kind_of(const pegtl::parse_tree::node& node) {
  if (node.is_type<space>()) return "space";
  if (node.is_type<letter>()) return "letter";
  if (node.is_type<short_param_name>()) return "short_param_name";
  if (node.is_type<long_param_name>()) return "long_param_name";
  if (node.is_type<value>()) return "value";
  if (node.is_type<param_and_value>()) return "param_and_value";
  if (node.is_type<cmd_param>()) return "cmd_param";
  return "";
}

void describe(std::string& tree, int depth, const pegtl::parse_tree::node& node, const char* line) {
  describe_node(tree, depth, kind_of(node), node.m_begin.data - line, node.string_view().size());
  for (const auto& child : node.children) describe(tree, depth + 1, *child, line);
}

}  // namespace

std::string peer_tree(const std::string& line) {
  const auto root = parse(line);
  if (!root || root->children.size() != 1) return "no match";
  std::string tree;
  describe(tree, 0, *root->children[0], line.data());
  return tree;
}

void peer_match(const std::string& line) {
  const auto root = parse(line);
  benchmark::DoNotOptimize(root.get());
}

}  // namespace svcinst::bench
