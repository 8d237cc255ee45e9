// Tables of a text and what becomes of it, written as one text.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "common/text_view.h"

namespace svcinst {

/// `cases` holds "text -> what `outcome` makes of it" any number of times, parted by `separator`.
template <class Outcome>
void check_cases(TextView cases, Outcome outcome, TextView separator = " $ ") {
  for (std::size_t at = 0, end = 0; end < cases.size(); at = end + separator.size()) {
    end = std::min(cases.find(separator, at), cases.size());
    const std::string row(cases.substr(at, end - at));
    const std::size_t arrow = row.rfind(" -> ");
    ASSERT_NE(arrow, std::string::npos) << row;
    EXPECT_EQ(outcome(row.substr(0, arrow)), row.substr(arrow + 4)) << row;
  }
}

}  // namespace svcinst
