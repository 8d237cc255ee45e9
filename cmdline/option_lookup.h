// Reads option names and values out of a matched command line. A name is looked up as it was
// written: without its dashes, case-sensitive, its first occurrence. Nothing is kept between calls.
#pragma once

#include <cstdint>

#include "common/linked_list.h"
#include "common/text_view.h"
#include "grammar/grammar.h"

namespace svcinst {

/// Appends every descendant of `node` of `type` to `list`, each before its own descendants. `node`
/// itself is not looked at. Throws std::bad_alloc.
void collect_nodes_of_type(const MatchNode& node, std::uint16_t type,
                           LinkedList<const MatchNode*>& list);

/// True when the command line holds an option called `name`; false also without a match result.
/// Throws std::bad_alloc.
bool has_option(const Grammar& grammar, TextView name);

/// Like has_option. Sets `value` to the option's value as it was written, its quotes included, in
/// the command line's own bytes; an option without a value leaves `value` as it was.
bool get_option_value(const Grammar& grammar, TextView name, TextView& value);

}  // namespace svcinst
