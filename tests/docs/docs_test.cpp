// Runs the examples of the reference pages: the tables behind a line <!-- examples: KIND -->.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "format/format_text.h"
#include "grammar/matcher.h"
#include "tests/support/capture.h"

namespace svcinst {
namespace {

using Cells = std::vector<std::string>;

// A cell without the blanks and the backticks round it; a backslash keeps a bar in its cell.
std::string content(std::string cell) {
  const auto trim = [&cell](char c, std::size_t most) {
    for (std::size_t i = 0; i < most && !cell.empty() && cell.front() == c; ++i) cell.erase(0, 1);
    for (std::size_t i = 0; i < most && !cell.empty() && cell.back() == c; ++i) cell.pop_back();
  };
  trim(' ', cell.size());
  trim('`', cell.starts_with("``") ? 2 : 1);
  return cell;
}

Cells split(const std::string& row) {
  Cells cells(1);
  for (std::size_t i = 1; i < row.size(); ++i) {
    if (row[i] == '|') {
      cells.emplace_back();
    } else {
      if (row[i] == '\\' && row[i + 1] == '|') ++i;
      cells.back() += row[i];
    }
  }
  cells.pop_back();
  return cells;
}

std::vector<Cells> examples(const std::string& page, const std::string& kind) {
  std::istringstream lines(file_bytes(std::string(SVCINST_DOCS "/") + page));
  std::vector<Cells> rows;
  int header_lines = 0;
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (line == "<!-- examples: " + kind + " -->") {
      inside = true;
      header_lines = 2;
    } else if (!line.starts_with("|")) {
      inside = false;
    } else if (inside && header_lines-- <= 0) {
      rows.push_back(split(line));
    }
  }
  return rows;
}

using Argument = std::variant<int, long long, double, std::string>;

std::vector<Argument> parse_arguments(const std::string& cell) {
  std::vector<Argument> arguments;
  std::istringstream texts(cell);
  for (std::string text; std::getline(texts, text, ',');) {
    text = content(text);
    if (text.empty()) continue;
    if (text.front() == '"') {
      arguments.emplace_back(text.substr(1, text.size() - 2));
    } else if (text.find('.') != std::string::npos) {
      arguments.emplace_back(std::atof(text.c_str()));
    } else if (text.ends_with("LL")) {
      arguments.emplace_back(std::atoll(text.c_str()));
    } else {
      arguments.emplace_back(std::atoi(text.c_str()));
    }
  }
  return arguments;
}

template <class T>
auto passed(const T& value) {
  return value;
}
const char* passed(const std::string& value) {
  return value.c_str();
}

int format_example(char* buffer, const char* format, const std::vector<Argument>& arguments) {
  if (arguments.empty()) return format_into(buffer, format);
  const auto one = [&](const auto& a) { return format_into(buffer, format, passed(a)); };
  if (arguments.size() == 1) return std::visit(one, arguments[0]);
  const auto two = [&](const auto& a, const auto& b) {
    return format_into(buffer, format, passed(a), passed(b));
  };
  return std::visit(two, arguments[0], arguments[1]);
}

TEST(Docs, FormatExamplesAreTrue) {
  const auto rows = examples("format-strings.md", "format");
  EXPECT_GT(rows.size(), 30U);
  for (const Cells& row : rows) {
    const std::string format = content(row.at(0));
    std::string text(1000, '\0');
    const int count = format_example(text.data(), format.c_str(), parse_arguments(row.at(1)));
    const std::string outcome = count < 0 ? "error at " + std::to_string(-count)
                                          : text.substr(0, static_cast<std::size_t>(count));
    EXPECT_EQ(outcome, content(row.at(2))) << format;
  }
}

TEST(Docs, GrammarExamplesAreTrue) {
  const auto rows = examples("grammar-notation.md", "grammar");
  EXPECT_GT(rows.size(), 10U);
  for (const Cells& row : rows) {
    const std::string text = content(row.at(0));
    const std::string input = content(row.at(1));
    const CapturedStdout unknown_names;
    const Grammar grammar{TextView(text)};
    furthest_failure = nullptr;
    const std::uint64_t remaining = input.size();
    const MatchNodePtr result = match(grammar.start_rule, input.c_str(), remaining, *grammar.rules);
    std::string outcome = "fails";
    if (result) {
      outcome = "matches `" + input.substr(0, result->length) + "`";
    } else if (furthest_failure != nullptr) {
      outcome += " at " + std::to_string(furthest_failure - input.c_str());
    }
    EXPECT_EQ(outcome, row.at(2).substr(1, row.at(2).size() - 2)) << text;
  }
}

}  // namespace
}  // namespace svcinst
