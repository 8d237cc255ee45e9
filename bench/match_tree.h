// Parse trees, ours and the peer's, as one kind of text that can be compared.
#pragma once

#include <string>
#include <string_view>

namespace svcinst::bench {

/// One node as text: its depth, what it is (the rule's name, "" for a terminal), where its text
/// begins in the input and how long it is.
void describe_node(std::string& tree, int depth, std::string_view kind, std::size_t begin,
                   std::size_t length);

/// The peer's tree of `line`; "no match" when it does not match as a whole.
std::string peer_tree(const std::string& line);

/// Matches `line`, builds the peer's tree and frees it.
void peer_match(const std::string& line);

}  // namespace svcinst::bench
