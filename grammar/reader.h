// Reads grammar text in the notation of docs/grammar-notation.md into a tree of GrammarNodes.
//
// Each function reads one construct at `position`. remaining: bytes from `position` to the end of
// the text; a NUL must stand behind the text. It returns the finished node, which looks into the
// text, or null when the construct is not there; nothing is then left behind but a note in `error`.
// Nothing is printed. All throw std::bad_alloc.
#pragma once

#include <cstdint>

#include "grammar/grammar_node.h"

namespace svcinst {

/// What a reading function noted.
enum class ReadCode : std::uint16_t {
  blank_ends = 0,         // every time that blank text was looked for
  hex_digit_missing = 1,  // behind "0x"
  not_hex = 2,
  not_decimal = 3,
  not_any_char = 4,
  sort_string_not_closed = 5,
  quote_string_not_closed = 6,
  dquote_string_not_closed = 7,
  not_range = 8,  // a bound without "~" behind it
  not_except = 9,
  line_comment_not_closed = 10,
  not_identifier = 11,
  group_not_closed = 12,
  group_empty = 13,
  not_group = 14,
  option_not_closed = 15,
  option_part_empty = 16,  // behind a second "|"
  option_empty = 17,
  not_option = 18,
  repeat_not_closed = 19,
  not_repeat = 20,
  definition_missing = 21,  // "=" behind a rule's name
  nothing_noted = 255,
};

/// The last problem that a reading function noted. Some are noted on the way to success.
struct ReadError {
  ReadCode code = ReadCode::nothing_noted;
  const char* position = nullptr;
  std::uint32_t depth = 0;  // levels of nesting that are being read; 0 between readings
};

/// Reads a whole grammar text of `length` bytes: a `syntax` node with the rules in text order. Text
/// behind the last rule that could be read is ignored; null when there is no rule at all. What is
/// nested deeper than kMaxNesting can't be read.
GrammarNodePtr read_grammar(const char* text, std::uint64_t length, ReadError& error);

GrammarNodePtr read_rule(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_identifier(const char* position, ReadError& error);
GrammarNodePtr read_alternation(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_concatenation(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_term(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_group(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_option(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_repeat(const char* position, std::uint64_t remaining, ReadError& error);

GrammarNodePtr read_terminal(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_range(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_quote_string(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_dquote_string(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_sort_string(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_integer(const char* position, std::uint64_t remaining, ReadError& error);

/// Reads a run of whitespace and comments: an `unuse_string` node with one child for each.
GrammarNodePtr read_blank(const char* position, std::uint64_t remaining, ReadError& error);
GrammarNodePtr read_comment(const char* position, std::uint64_t remaining, ReadError& error);

}  // namespace svcinst
