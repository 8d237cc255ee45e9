// The grammar of this program's command line, as text in the notation of docs/grammar-notation.md.
// The option lookups find their nodes by rule number: a rule that moves changes the numbers below.
#pragma once

#include <cstdint>

#include "common/byte_string.h"
#include "grammar/match_node.h"

namespace svcinst {

/// Exists from before main until the process ends; every Grammar made from it looks into it.
extern const ByteString command_line_grammar;

/// The result type of param_and_value, rule number 5 of the text.
inline constexpr std::uint16_t kParamAndValueType = rule_result_type(5);

}  // namespace svcinst
