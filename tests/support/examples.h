// Runs the examples of a page in docs/, which lies in the current folder.
#pragma once

#include <algorithm>
#include <vector>

#include "tests/support/capture.h"

/// A cell's text, without backticks round it.
inline std::string text_of(const std::string& cell) {
  const std::size_t ticks = std::min(cell.find_first_not_of('`'), cell.size());
  return cell.substr(ticks, cell.size() - 2 * ticks);
}

/// All that stand in backticks in a cell.
inline std::vector<std::string> texts_of(const std::string& cell) {
  std::vector<std::string> texts;
  std::istringstream pieces(cell);
  for (std::string piece; std::getline(pieces, piece, '`') && std::getline(pieces, piece, '`');)
    texts.push_back(piece);
  return texts;
}

/// The tables behind a line <!-- examples: KIND -->, whose third column is the text that `outcome`
/// makes of the first two cells.
void check_examples(const std::string& page, const std::string& kind, auto outcome) {
  std::istringstream lines(file_bytes("docs/" + page));
  bool inside = false;
  int count = 0;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("|")) inside = line == "<!-- examples: " + kind + " -->";
    if (!inside || !line.starts_with("| `")) continue;
    std::istringstream row(replaced(line, "\\|", "\1").substr(1));
    std::string cells[3];
    for (std::string& cell : cells) {
      std::getline(row, cell, '|');
      cell = replaced(cell, "\1", "|").substr(1, std::max<std::size_t>(cell.size(), 2) - 2);
    }
    EXPECT_EQ(outcome(cells[0], cells[1]), text_of(cells[2])) << page << line;
    ++count;
  }
  EXPECT_GT(count, 4) << page;
}
