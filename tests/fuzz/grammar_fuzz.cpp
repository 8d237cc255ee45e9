// Any bytes as a grammar text: through the reader, and through the resolution of its rule names.
#include <set>
#include <vector>

#include "grammar/grammar.h"
#include "grammar/reader.h"
#include "tests/fuzz/fuzz_input.h"

namespace svcinst {
namespace {

void check_spans(const GrammarNode& node) {
  const char* at = node.begin;
  for (const auto* entry = node.children.head; entry != nullptr; entry = entry->next) {
    const GrammarNode& child = *entry->value;
    require(at <= child.begin && child.begin <= child.end);
    check_spans(child);
    at = child.end;
  }
  require(at <= node.end);
}

// Every name that a rule bears has become a reference to one, and the table knows that rule.
void check_names(const GrammarNode& node, const Grammar& grammar, const std::set<TextView>& names) {
  const std::uint16_t type = value_of(node.type);
  if (type >= kFirstRuleReference) {
    const GrammarNode* const rule = grammar.rules->slots.at(type);
    require(rule != nullptr && text_of(*first_child(*rule)) == text_of(node));
  } else {
    require(type < kNodeTypeCount);
    require(node.type != NodeType::identifier || !names.contains(text_of(node)));
  }
  for (const auto* entry = node.children.head; entry != nullptr; entry = entry->next)
    check_names(*entry->value, grammar, names);
}

std::set<TextView> names_of_rules(const GrammarNode& root) {
  std::set<TextView> names;
  std::uint16_t count = 0;
  for (const auto* entry = root.children.head; entry != nullptr && count < kMaxRules;
       entry = entry->next, ++count)
    names.insert(text_of(*first_child(*entry->value)));
  return names;
}

// The tree in numbers: what two readings of one text must agree in.
void list_nodes(const GrammarNode& node, const char* text, std::vector<std::ptrdiff_t>& list) {
  list.insert(list.end(), {value_of(node.type), node.begin - text, node.end - text});
  for (const auto* entry = node.children.head; entry != nullptr; entry = entry->next)
    list_nodes(*entry->value, text, list);
}

// Reads `text`; an empty list when that fails.
std::vector<std::ptrdiff_t> read_and_check(const ExactText& text) {
  std::vector<std::ptrdiff_t> list;
  ReadError error;
  const NodePtr root = read_grammar(text.begin(), text.view().size(), error);
  require(error.code <= 21 && text.begin() <= error.position && error.position <= text.end());
  require(error.nesting.levels == 0);
  if (!root) return list;
  require(root->begin == text.begin() && root->end <= text.end());
  check_spans(*root);
  list_nodes(*root, text.begin(), list);
  return list;
}

}  // namespace
}  // namespace svcinst

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ExactText text(as_text(data, size));
  const auto tree = read_and_check(text);
  const Grammar grammar(text.view());
  require((grammar.start_rule != nullptr) == !tree.empty());
  if (tree.empty()) return 0;
  check_names(*grammar.root, grammar, names_of_rules(*grammar.root));
  // What could not be read at the end makes no difference.
  require(read_and_check(ExactText(text.view().substr(0, static_cast<std::size_t>(tree[2])))) ==
          tree);
  return 0;
}
