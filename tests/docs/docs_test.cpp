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

// A cell without blank and backticks round it, and without the backslashes in front of its bars.
std::string content(TextView cell) {
  std::string text(cell.substr(cell.empty() ? 0 : 1));
  while (text.starts_with('`') && text.ends_with('`')) text = text.substr(1, text.size() - 2);
  for (std::size_t at = 0; (at = text.find("\\|")) != std::string::npos;) text.erase(at, 1);
  return text;
}

// The texts in backticks of a cell.
std::vector<std::string> contents(TextView cell) {
  std::vector<std::string> texts;
  while (!take_until(cell, "`").empty() && !cell.empty()) texts.emplace_back(take_until(cell, "`"));
  return texts;
}

using Outcome = std::string(TextView first_cell, TextView second_cell);

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
    const TextView first = take_until(row, " |");
    const TextView second = take_until(row, " |");
    EXPECT_EQ(outcome(first, second), content(take_until(row, " |"))) << page << first;
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

std::string formatted(TextView format, TextView arguments) {
  auto texts = contents(arguments);
  texts.resize(2, "0");  // more than the format asks for do no harm
  char text[1000];
  const auto call = [&](const auto& first, const auto& second) {
    return format_into(text, content(format).c_str(), first, second);
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

std::string matched(TextView grammar_cell, TextView input) {
  const CapturedStdout unknown_names;
  const std::string text = content(grammar_cell);
  Grammar grammar{TextView(text)};
  return match_line(grammar, content(input));
}

std::string read(TextView grammar_cell, TextView behind) {
  const std::string text = content(grammar_cell);
  ReadError error;
  const GrammarNodePtr root = read_grammar(text.data(), text.size(), error);
  EXPECT_EQ(root->end, content(behind));
  return tree_text(*root);
}

std::string result(TextView grammar_cell, TextView input_cell) {
  const std::string text = content(grammar_cell);
  const std::string input = content(input_cell);
  Grammar grammar{TextView(text)};
  match_line(grammar, input);
  return tree_text(*grammar.result, grammar);
}

// As the program does it: the last of an option's names that has a value decides.
std::string looked_up(TextView arguments, TextView names) {
  const auto texts = contents(arguments);
  std::vector<const char*> argv{"svcinst"};
  for (const std::string& text : texts) argv.push_back(text.c_str());
  const ByteString line = join_arguments(static_cast<int>(argv.size()), argv.data());
  Grammar grammar;
  std::string outcome = match_line(grammar, view(line));
  if (!grammar.result) return outcome;
  bool given = false;
  TextView value;
  for (TextView name : contents(names)) {
    name.remove_prefix(name.find_first_not_of('-'));
    given |= has_option(grammar, name);
    get_option_value(grammar, name, value);
  }
  if (is_absent(value)) return given ? "none" : "not given";
  return value.empty() ? "empty" : std::string(strip_quotes(value));
}

std::string registered(TextView program, TextView path) {
  const std::string program_path = content(program);
  const std::string binary_path = content(path);
  return c_str(*resolve_binary_path(*program_directory(program_path), binary_path));
}

TEST(Docs, ExamplesAreTrue) {
  check_examples("format-strings.md", "format", formatted);
  check_examples("grammar-notation.md", "grammar", matched);
  check_examples("grammar-notation.md", "read", read);
  check_examples("grammar-notation.md", "result", result);
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
  shown.pop_back();  // the line feed of the record
  EXPECT_NE(file_bytes(SVCINST_DOCS "/../README.md").find(shown), std::string::npos) << shown;
}

}  // namespace
}  // namespace svcinst
