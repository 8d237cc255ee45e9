#include "grammar/grammar.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include "grammar/reader.h"

namespace svcinst {
namespace {

// Orders rule names bytewise as signed chars; of two names the one that begins the other is less.
struct NameLess {
  bool operator()(TextView left, TextView right) const {
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(),
        [](char a, char b) { return static_cast<signed char>(a) < static_cast<signed char>(b); });
  }
};

struct NumberedRule {
  std::uint16_t number;
  GrammarNode* rule;
};

using NameMap = std::map<TextView, NumberedRule, NameLess>;

// A name that is defined twice stands for its later definition.
NameMap number_rules(const GrammarNode& root) {
  NameMap names;
  std::uint16_t number = 0;
  for (const auto& rule : root.children) {
    if (number == kMaxRules) break;
    names.insert_or_assign(text_of(first_child(*rule)), NumberedRule{number++, rule.get()});
  }
  return names;
}

void resolve(GrammarNode& identifier, const NameMap& names, RuleTable& table) {
  const TextView name = text_of(identifier);
  const auto found = names.find(name);
  if (found == names.end()) {
    std::printf("unkown identifier %.*s\n", static_cast<int>(name.size()), name.data());
    return;
  }
  const auto& [number, rule] = found->second;
  identifier.type = rule_reference(number);
  const std::uint16_t slot = value_of(identifier.type);
  if (slot < table.count) table.slots[slot] = rule;
}

// Makes every identifier below `node` a reference to its rule, or reports that there is none.
void resolve_identifiers(GrammarNode& node, const NameMap& names, RuleTable& table) {
  for (const auto& child : node.children) {
    if (child->type == NodeType::identifier) {
      resolve(*child, names, table);
    } else {
      resolve_identifiers(*child, names, table);
    }
  }
}

}  // namespace

Grammar::Grammar(TextView text) : rules(std::make_unique<RuleTable>()) {
  ReadError error;
  root = read_grammar(text.data(), text.size(), error);
  if (!root) return;
  const NameMap names = number_rules(*root);
  resolve_identifiers(*root, names, *rules);
  start_rule = &first_child(*root);
}

// The tree, the result, the table. Nobody relies on it: none of them looks into another as it goes.
Grammar::~Grammar() {
  root.reset();
  result.reset();
}

}  // namespace svcinst
