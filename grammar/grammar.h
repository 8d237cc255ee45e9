// A grammar that is ready for matching: its tree with every rule name resolved to a rule number,
// the table that finds rules by number, and the result of the last match. It looks into the grammar
// text it was made from, which must outlive it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "common/text_view.h"
#include "grammar/grammar_node.h"
#include "grammar/match_node.h"

namespace svcinst {

/// How the matcher finds rules: slot 1024 + n holds rule number n. It does not own the rules.
struct RuleTable {
  static constexpr std::uint64_t kSlots = 2112;

  std::uint64_t count = kSlots;
  std::array<GrammarNode*, kSlots> slots{};
};

struct Grammar {
  GrammarNode* start_rule = nullptr;  // first rule of the text; none when no rule could be read
  MatchNodePtr result;                // tree of the last match, set by whoever matches
  std::unique_ptr<RuleTable> rules;
  GrammarNodePtr root;  // the tree that start_rule and rules point into

  /// The grammar of this program's command line. Defined next to its text, in cmdline/.
  Grammar();
  /// Reads `text`, behind which a NUL must stand. Problems in the text end the reading and are not
  /// reported; a rule name without a rule is reported on standard output, and what refers to it
  /// never matches. Throws std::bad_alloc.
  explicit Grammar(TextView text);
  ~Grammar();
};

}  // namespace svcinst
