// Runs the examples of the reference pages: the tables behind a line <!-- examples: KIND -->.
#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <variant>

#include "format/format_text.h"
#include "grammar/matcher.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

// A cell without the backticks round it; a backslash keeps a bar in its cell.
std::string content(const std::string& cell) {
  const std::regex ticks("^``?(.*?)``?$");
  return std::regex_replace(std::regex_replace(cell, ticks, "$1"), std::regex(R"(\\\|)"), "|");
}

// Calls `check` with the three cells of each example of a page; tells how many there were.
template <class Check>
int check_examples(const std::string& page, const std::string& kind, Check check) {
  std::istringstream lines(file_bytes(SVCINST_DOCS "/" + page));
  const std::regex row(R"(\| (`.*?`) \| (.*?) ?\| (.*) \|)");
  bool inside = false;
  int count = 0;
  std::smatch cells;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("|")) inside = line == "<!-- examples: " + kind + " -->";
    if (!inside || !std::regex_match(line, cells, row)) continue;
    EXPECT_EQ(check(content(cells[1]), cells[2].str()), content(cells[3])) << line;
    ++count;
  }
  return count;
}

using Argument = std::variant<int, long long, double, std::string>;

Argument argument_of(const std::string& text) {
  if (text.starts_with("\"")) return text.substr(1, text.size() - 2);
  if (text.find('.') != std::string::npos) return std::stod(text);
  if (text.ends_with("LL")) return std::stoll(text);
  return std::stoi(text);
}

template <class T>
T passed(T value) {
  return value;
}
const char* passed(const std::string& value) {
  return value.c_str();
}

std::string formatted(const std::string& format, const std::string& cell) {
  const std::regex one("`(.*?)`");
  std::vector<Argument> arguments;
  for (std::sregex_iterator at(cell.begin(), cell.end(), one), end; at != end; ++at)
    arguments.push_back(argument_of((*at)[1]));
  arguments.resize(2);  // more than the format asks for do no harm
  std::string text(1000, '\0');
  const auto call = [&](const auto& a, const auto& b) {
    return format_into(text.data(), format.c_str(), passed(a), passed(b));
  };
  const int count = std::visit(call, arguments[0], arguments[1]);
  return count < 0 ? "error at " + std::to_string(-count)
                   : text.substr(0, static_cast<std::size_t>(count));
}

std::string matched(const std::string& text, const std::string& cell) {
  const std::string input = content(cell);
  const CapturedStdout unknown_names;
  const Grammar grammar{TextView(text)};
  furthest_failure = nullptr;
  const std::uint64_t remaining = input.size();
  const MatchNodePtr result = match(grammar.start_rule, input.c_str(), remaining, *grammar.rules);
  if (result) return "matches `" + input.substr(0, result->length) + "`";
  if (furthest_failure == nullptr) return "fails";
  return "fails at " + std::to_string(furthest_failure - input.c_str());
}

TEST(Docs, ExamplesAreTrue) {
  EXPECT_GT(check_examples("format-strings.md", "format", formatted), 30);
  EXPECT_GT(check_examples("grammar-notation.md", "grammar", matched), 10);
}

}  // namespace
}  // namespace svcinst
