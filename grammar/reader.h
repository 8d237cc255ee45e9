// Reads grammar text in the notation of docs/grammar-notation.md into a tree of GrammarNodes.
//
// Each function reads one construct at `position`. remaining: bytes from `position` to the end of
// the text; a NUL must stand behind the text. It returns the finished node, which looks into the
// text, or null when the construct is not there; nothing is then left behind but a note in `error`.
// Nothing is printed. All throw std::bad_alloc.
#pragma once

#include <cstdint>
#include <memory>

#include "grammar/grammar_node.h"

namespace svcinst {

inline constexpr std::uint16_t kNothingNoted = 255;

/// The last problem that a reading function noted. Some are noted on the way to success.
struct ReadError {
  std::uint16_t code = kNothingNoted;
  const char* position = nullptr;
  std::uint32_t depth = 0;  // levels of nesting that are being read; 0 between readings
};

using NodePtr = std::unique_ptr<GrammarNode>;

/// Reads a whole grammar text of `length` bytes: a `syntax` node with the rules in text order. Text
/// behind the last rule that could be read is ignored; null when there is no rule at all. What is
/// nested deeper than kMaxNesting can't be read.
NodePtr read_grammar(const char* text, std::uint64_t length, ReadError& error);

NodePtr read_rule(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_alternation(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_concatenation(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_term(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_group(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_option(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_repeat(const char* position, std::uint64_t remaining, ReadError& error);

NodePtr read_terminal(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_range(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_quote_string(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_dquote_string(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_sort_string(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_integer(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_identifier(const char* position, ReadError& error);

/// Reads a run of whitespace and comments: an `unuse_string` node with one child for each.
NodePtr read_blank(const char* position, std::uint64_t remaining, ReadError& error);
NodePtr read_comment(const char* position, std::uint64_t remaining, ReadError& error);

}  // namespace svcinst
