// Reads grammar text in the notation of docs/grammar-notation.md into a tree of GrammarNodes, which
// looks into the text. Nothing is printed.
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
  std::uint32_t depth = 0;  // of nesting, while reading: here, since each function is handed this
};

/// Reads a whole grammar text of `length` bytes with a NUL behind it: a `syntax` node with the
/// rules in text order. Text behind the last rule that could be read is ignored; null when there is
/// none. What is nested deeper than kMaxNesting can't be read. Throws std::bad_alloc.
GrammarNodePtr read_grammar(const char* text, std::uint64_t length, ReadError& error);

}  // namespace svcinst
