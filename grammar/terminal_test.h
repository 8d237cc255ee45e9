// The tests of the terminal kinds, which look at the input and build nothing.
#pragma once

#include <cstdint>

#include "grammar/grammar_node.h"

namespace svcinst {

/// The value of a decimal or hexadecimal integer node.
std::uint64_t integer_value(const GrammarNode& node);

// Each test returns where the text that the terminal `node` matches at `position` ends, or null
// when it matches none. Failures raise furthest_failure. input_end: end of the input; a NUL must
// stand there.

/// Of one kind of terminal each.
const char* test_any_char(const GrammarNode& node, const char* position, const char* input_end);
const char* test_except(const GrammarNode& node, const char* position, const char* input_end);
const char* test_literal(const GrammarNode& node, const char* position, const char* input_end);
const char* test_range(const GrammarNode& node, const char* position, const char* input_end);
const char* test_sort_string(const GrammarNode& node, const char* position, const char* input_end);

/// Of whatever kind `node` is.
const char* test_terminal(const GrammarNode& node, const char* position, const char* input_end);

}  // namespace svcinst
