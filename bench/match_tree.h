// Parse trees, ours and the peer's, as one kind of text that can be compared.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace svcinst::bench {

/// One node as text: its depth, what it is (the rule's name, "" for a terminal), where its text
/// begins in the input and how long it is.
inline void describe_node(std::string& tree, int depth, std::string_view kind, std::ptrdiff_t begin,
                          std::uint64_t length) {
  for (const auto number : {std::uint64_t(depth), std::uint64_t(begin), length})
    tree += std::to_string(number) + " ";
  tree.append(kind) += "\n";
}

/// The peer's tree of `line`; "no match" when it does not match as a whole.
std::string peer_tree(const std::string& line);

/// Matches `line`, builds the peer's tree and frees it.
void peer_match(const std::string& line);

}  // namespace svcinst::bench
