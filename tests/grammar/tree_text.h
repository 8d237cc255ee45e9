// Trees written as one line of text, for comparing.
#pragma once

#include <string>

#include "grammar/grammar_node.h"
#include "grammar/match_node.h"

namespace svcinst {

/// Leaves are shown as their text, identifiers in round brackets' place as :name, references as #n,
/// and composites as name(children) with the names cut to what is in `short_name`.
std::string tree_text(const GrammarNode* node);

/// Leaves as their text in quotes, others as TYPE(children); an empty match as TYPE().
std::string tree_text(const MatchNode* node);

}  // namespace svcinst
