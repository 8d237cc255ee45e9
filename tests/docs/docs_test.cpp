// Runs the examples of the pages in $SVCINST_DOCS or "docs": the tables behind a line
// <!-- examples: KIND -->, whose third column says what becomes of the first two.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <regex>
#include <variant>

#include "app/command_line.h"
#include "app/program_paths.h"
#include "cmdline/option_lookup.h"
#include "format/format_text.h"
#include "grammar/matcher.h"
#include "grammar/reader.h"
#include "log/log.h"
#include "log/log_settings.h"
#include "tests/grammar/tree_text.h"
#include "tests/support/capture.h"
#include "tests/support/scripted_clock.h"

namespace svcinst {
namespace {

// What the first group of `pattern` is at each of its matches.
std::vector<std::string> find_all(const std::string& text, const std::regex& pattern) {
  return {std::sregex_token_iterator(text.begin(), text.end(), pattern, 1), {}};
}

// A cell's text without the backticks round it and the backslashes in front of bars.
std::string text_of(const std::string& cell) {
  static const std::regex code("^(`+)(.*)\\1$");
  static const std::regex bar(R"(\\\|)");
  return std::regex_replace(std::regex_replace(cell, code, "$2"), bar, "|");
}

// All that stand in backticks in a cell.
std::vector<std::string> texts_of(const std::string& cell) {
  static const std::regex code("`([^`]*)`");
  return find_all(cell, code);
}

using Outcome = std::string(const std::string& first, const std::string& second);

void check_examples(const std::string& page, const std::string& kind, int least, Outcome outcome) {
  static const std::regex cell(R"(\| *((?:\\.|[^|\\])*?) *(?=\|))");
  const char* const folder = std::getenv("SVCINST_DOCS");
  std::istringstream lines(file_bytes((folder != nullptr ? folder : "docs") + ("/" + page)));
  bool inside = false;
  int count = 0;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("|")) inside = line == "<!-- examples: " + kind + " -->";
    if (!inside || !line.starts_with("| `")) continue;
    const auto cells = find_all(line, cell);
    EXPECT_EQ(outcome(cells.at(0), cells.at(1)), text_of(cells.at(2))) << page << line;
    ++count;
  }
  EXPECT_GE(count, least) << page;
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

std::string formatted(const std::string& format, const std::string& arguments) {
  std::vector<std::string> texts = texts_of(arguments);
  texts.resize(2, "0");  // more than the format asks for do no harm
  char text[1000];
  const auto call = [&](const auto& first, const auto& second) {
    return format_into(text, text_of(format).c_str(), first, second);
  };
  const int count = std::visit(call, argument_of(texts[0]), argument_of(texts[1]));
  if (count < 0) return "error at " + std::to_string(-count);
  return {text, static_cast<std::size_t>(count)};
}

// The record of a call with the message "hello", while what the setters switch on is on.
std::string record(const std::string& call, const std::string& setters) {
  const std::map<std::string, int (*)(const char*, ...)> calls{
      {"`log_info`", log_info},   {"`log_note`", log_note},   {"`log_warn`", log_warn},
      {"`log_error`", log_error}, {"`log_fatal`", log_fatal},
  };
  const std::map<std::string, void (*)(bool)> switches{
      {"set_cpu", set_cpu}, {"set_thread", set_thread}, {"set_count", set_count}};
  scripted_clock = {.nanoseconds = 1'234'567'890'000};
  last_record_time_ns = 1'234'500'000'000;
  record_counter = 7;
  const CapturedStdout console;
  for (const std::string& setter : texts_of(setters)) switches.at(setter)(true);
  calls.at(call)("hello");
  for (const auto& [name, set] : switches) set(false);
  return std::regex_replace(console.bytes(), std::regex("\033"), "ESC");
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

std::string matched(const std::string& grammar_cell, const std::string& input) {
  const CapturedStdout unknown_names;
  const std::string text = text_of(grammar_cell);
  Grammar grammar{TextView(text)};
  return match_line(grammar, text_of(input));
}

std::string result_tree(const std::string& grammar_cell, const std::string& input_cell) {
  const std::string text = text_of(grammar_cell);
  const std::string input = text_of(input_cell);
  Grammar grammar{TextView(text)};
  match_line(grammar, input);
  return tree_text(*grammar.result, grammar);
}

std::string grammar_tree(const std::string& grammar_cell, const std::string& behind) {
  const std::string text = text_of(grammar_cell);
  ReadError error;
  const GrammarNodePtr root = read_grammar(text.data(), text.size(), error);
  EXPECT_EQ(root->end, text_of(behind));
  return tree_text(*root);
}

// As the program does it: the last of an option's names that has a value decides.
std::string looked_up(const std::string& arguments, const std::string& names) {
  std::vector<const char*> argv{"svcinst"};
  const std::vector<std::string> texts = texts_of(arguments);
  for (const std::string& argument : texts) argv.push_back(argument.c_str());
  const ByteString line = join_arguments(static_cast<int>(argv.size()), argv.data());
  Grammar grammar;
  std::string outcome = match_line(grammar, view(line));
  if (!grammar.result) return outcome;
  bool given = false;
  TextView value;
  for (const std::string& name : texts_of(names))
    given |= get_option_value(grammar, TextView(name).substr(name.find_first_not_of('-')), value);
  if (is_absent(value)) return given ? "none" : "not given";
  return value.empty() ? "empty" : std::string(strip_quotes(value));
}

std::string registered(const std::string& program, const std::string& path) {
  const std::string typed = text_of(program);
  return c_str(*resolve_binary_path(*program_directory(typed), text_of(path)));
}

TEST(Docs, ExamplesAreTrue) {
  check_examples("format-strings.md", "format", 50, formatted);
  check_examples("format-strings.md", "record", 2, record);
  check_examples("grammar-notation.md", "grammar", 30, matched);
  check_examples("grammar-notation.md", "read", 15, grammar_tree);
  check_examples("grammar-notation.md", "result", 15, result_tree);
  check_examples("command-line.md", "command line", 30, looked_up);
  check_examples("command-line.md", "path", 15, registered);
}

}  // namespace
}  // namespace svcinst
