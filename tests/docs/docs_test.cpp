// Runs the examples of the reference pages: the tables behind a line <!-- examples: KIND -->, whose
// third column says what becomes of the first two.
#include <gtest/gtest.h>

#include <algorithm>
#include <variant>

#include "app/arguments.h"
#include "app/program_paths.h"
#include "cmdline/option_lookup.h"
#include "cmdline/usage.h"
#include "format/format_text.h"
#include "grammar/matcher.h"
#include "grammar/reader.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

TextView take_until(TextView& text, TextView separator) {
  const TextView piece = text.substr(0, text.find(separator));
  text.remove_prefix(std::min(piece.size() + separator.size(), text.size()));
  return piece;
}

struct Cell {
  std::string text;                // without backticks round it and backslashes in front of bars
  std::vector<std::string> texts;  // all that stand in backticks
};

// The next cell of a row, up to the bar behind it.
Cell take_cell(TextView& row) {
  TextView rest = take_until(row, " |");
  Cell cell{std::string(rest.substr(std::min<std::size_t>(rest.size(), 1))), {}};
  std::string& text = cell.text;
  while (text.starts_with('`') && text.ends_with('`')) text = text.substr(1, text.size() - 2);
  for (std::size_t at = 0; (at = text.find("\\|")) != std::string::npos;) text.erase(at, 1);
  while (!take_until(rest, "`").empty() && !rest.empty())
    cell.texts.emplace_back(take_until(rest, "`"));
  return cell;
}

using Outcome = std::string(const Cell& first, const Cell& second);

void check_examples(const std::string& page, const std::string& kind, Outcome outcome) {
  const std::string marker = "<!-- examples: " + kind + " -->";
  const std::string text = file_bytes(SVCINST_DOCS "/" + page);
  bool inside = false;
  int count = 0;
  for (TextView rest = text; !rest.empty();) {
    TextView row = take_until(rest, "\n");
    if (!row.starts_with("|")) inside = row == marker;
    if (!inside || !row.starts_with("| `")) continue;
    row.remove_prefix(1);
    const Cell first = take_cell(row);
    const Cell second = take_cell(row);
    EXPECT_EQ(outcome(first, second), take_cell(row).text) << page << first.text;
    ++count;
  }
  EXPECT_GT(count, 10) << page;
}

std::variant<int, long long, double, const char*> argument_of(std::string& text) {
  if (text.ends_with('"')) {
    text.back() = '\0';
    return text.c_str() + 1;
  }
  if (text.find('.') != std::string::npos) return std::stod(text);
  if (text.ends_with("LL")) return std::stoll(text);
  return std::stoi(text);
}

std::string formatted(const Cell& format, const Cell& arguments) {
  std::vector<std::string> texts = arguments.texts;
  texts.resize(2, "0");  // more than the format asks for do no harm
  char text[1000];
  const auto call = [&](const auto& first, const auto& second) {
    return format_into(text, format.text.c_str(), first, second);
  };
  const int count = std::visit(call, argument_of(texts[0]), argument_of(texts[1]));
  if (count < 0) return "error at " + std::to_string(-count);
  return {text, static_cast<std::size_t>(count)};
}

// The start of `line` that `grammar` matches, or where it fails.
std::string match_line(Grammar& grammar, TextView line) {
  const std::uint64_t remaining = line.size();
  furthest_failure = nullptr;
  grammar.result = match(grammar.start_rule, line.data(), remaining, *grammar.rules);
  if (grammar.result) return "matches `" + std::string(text_of(*grammar.result)) + "`";
  if (furthest_failure == nullptr) return "fails";
  return "fails at " + std::to_string(furthest_failure - line.data());
}

std::string matched(const Cell& text, const Cell& input) {
  const CapturedStdout unknown_names;
  Grammar grammar{TextView(text.text)};
  return match_line(grammar, input.text);
}

std::string result_tree(const Cell& text, const Cell& input) {
  Grammar grammar{TextView(text.text)};
  match_line(grammar, input.text);
  return tree_text(*grammar.result, grammar);
}

std::string grammar_tree(const Cell& text, const Cell& behind) {
  ReadError error;
  const GrammarNodePtr root = read_grammar(text.text.data(), text.text.size(), error);
  EXPECT_EQ(root->end, behind.text);
  return tree_text(*root);
}

// As the program does it: the last of an option's names that has a value decides.
std::string looked_up(const Cell& arguments, const Cell& names) {
  std::vector<const char*> argv{"svcinst"};
  for (const std::string& argument : arguments.texts) argv.push_back(argument.c_str());
  const ByteString line = join_arguments(static_cast<int>(argv.size()), argv.data());
  Grammar grammar;
  std::string outcome = match_line(grammar, view(line));
  if (!grammar.result) return outcome;
  bool given = false;
  TextView value;
  for (TextView name : names.texts) {
    name.remove_prefix(name.find_first_not_of('-'));
    given |= get_option_value(grammar, name, value);
  }
  if (is_absent(value)) return given ? "none" : "not given";
  return value.empty() ? "empty" : std::string(strip_quotes(value));
}

std::string registered(const Cell& program, const Cell& path) {
  return c_str(*resolve_binary_path(*program_directory(program.text), path.text));
}

TEST(Docs, ExamplesAreTrue) {
  check_examples("format-strings.md", "format", formatted);
  check_examples("grammar-notation.md", "grammar", matched);
  check_examples("grammar-notation.md", "read", grammar_tree);
  check_examples("grammar-notation.md", "result", result_tree);
  check_examples("command-line.md", "command line", looked_up);
  check_examples("command-line.md", "path", registered);
}

TEST(Docs, ReadmeShowsTheHelp) {
  const CapturedStdout captured;
  print_usage();
  std::istringstream help(captured.bytes());
  std::string shown;
  for (std::string line; std::getline(help, line);) {
    const bool is_first = shown.empty();  // a record, whose message the README shows behind a time
    shown += is_first ? line.substr(line.find("] ")) : line.empty() ? "" : "    " + line;
    shown += '\n';
  }
  shown.replace(shown.size() - 1, 1, "    $ ");  // the next command, for the record's line feed
  EXPECT_NE(file_bytes(SVCINST_DOCS "/../README.md").find(shown), std::string::npos) << shown;
}

}  // namespace
}  // namespace svcinst
