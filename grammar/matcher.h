// Matches input text against a grammar. Choices are ordered, repetitions greedy, nothing is tried a
// second way, nothing is remembered. Only one match may run at a time.
#pragma once

#include <cstdint>

#include "grammar/grammar.h"
#include "grammar/match_node.h"
#include "grammar/terminal.h"  // furthest_failure

namespace svcinst {

/// Matches `node` (from outside: a grammar's start rule; none never matches) at `position`.
/// remaining: bytes from `position` to the end of the input, behind which a NUL must stand.
/// Returns the result tree, which may be shorter than the input, or null when the node does not
/// match or the nesting passes kMaxNesting. Throws std::bad_alloc.
MatchNodePtr match(const GrammarNode* node, const char* position, const std::uint64_t& remaining,
                   const RuleTable& rules);

}  // namespace svcinst
