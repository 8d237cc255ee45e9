// Where the text of a terminal ends in the input. Nothing is built here: the matcher makes results.
#pragma once

#include "grammar/grammar_node.h"

namespace svcinst {

/// The furthest input position at which a terminal failed during the last match; none before. The
/// caller resets it before a match.
extern const char* furthest_failure;

/// Raises furthest_failure to `position` where that lies further. Returns null, for the failure.
const char* record_failure(const char* position);

// Each returns where the text that the terminal `node`, of one kind, matches at `position` ends, or
// null when it matches none. Failures are recorded, but not those of any_char_end and range_end at
// the end of the input. input_end: end of the input; a NUL must stand there.

const char* any_char_end(const GrammarNode& node, const char* position, const char* input_end);
const char* literal_end(const GrammarNode& node, const char* position, const char* input_end);
const char* range_end(const GrammarNode& node, const char* position, const char* input_end);
const char* sort_string_end(const GrammarNode& node, const char* position, const char* input_end);

}  // namespace svcinst
