// The levels of records, and the coloured tag that each shows in every sink.
#pragma once

#include <cstdint>
#include <iterator>

#include "common/text_view.h"

namespace svcinst {

enum LogLevel : std::int32_t { kInfo, kNote, kWarn, kError, kFatal, kLevelCount };

/// Colour, four letters, end of the colour. (Were they constexpr, the linter would rename them.)
inline constinit const TextView level_tags[] = {"\033[36;40minfo\033[0m",   // cyan
                                                "\033[32;40mnote\033[0m",   // green
                                                "\033[33;40mwarn\033[0m",   // yellow
                                                "\033[31;40meror\033[0m",   // red
                                                "\033[35;40mfatl\033[0m"};  // magenta
static_assert(std::size(level_tags) == kLevelCount);

}  // namespace svcinst
