// For the reader's own files: its functions, the steps that they are made of, and the place in the
// grammar text at which they take them.
#pragma once

#include <cassert>
#include <cstring>

#include "grammar/find_text.h"
#include "grammar/reader.h"
#include "grammar/tokens.h"

namespace svcinst {

/// A place in a grammar text.
struct Cursor {
  const char* position;
  const char* end;  // of the text; a NUL stands there

  Cursor(const char* start, std::uint64_t remaining) : position(start), end(start + remaining) {
    assert(*end == '\0');
  }

  [[nodiscard]] std::uint64_t remaining() const {
    return static_cast<std::uint64_t>(end - position);
  }
};

/// Reads one construct at the cursor. Returns the finished node, which looks into the text, or null
/// when the construct is not there; nothing is then left behind but a note in `error`. Throws
/// std::bad_alloc.
using Read = GrammarNodePtr(Cursor cursor, ReadError& error);

Read read_rule, read_identifier, read_alternation, read_concatenation, read_term;
Read read_group, read_option, read_repeat, read_integer;
Read read_terminal, read_range, read_quote_string, read_dquote_string, read_sort_string;
Read read_blank;  // a run of whitespace and comments: `unuse_string` with one child for each
Read read_comment;

inline void note(ReadError& error, ReadCode code, const char* position) {
  error.code = code;
  error.position = position;
}

constexpr bool is_whitespace(char c) {
  return (c >= 9 && c <= 13) || c == 32;
}

constexpr bool is_decimal_digit(char c) {
  return c >= '0' && c <= '9';
}

// The first byte, mostly all that a token has or all that is needed to refuse it, takes no call.
inline bool starts_with(const Cursor& cursor, const ByteString& token) {
  return cursor.remaining() >= token.length && *cursor.position == *token.data &&
         (token.length == 1 || std::memcmp(cursor.position, token.data, token.length) == 0);
}

/// The end of the text that begins with `tokens.open`, which stands at the cursor: behind the first
/// `tokens.close`. Null when there is none.
inline const char* closed_end(const Cursor& cursor, const TokenPair& tokens) {
  const auto found = find_text(cursor.position, tokens.open.length, cursor.remaining() - 1,
                               tokens.close.data, tokens.close.length);
  return found ? cursor.position + *found + tokens.close.length : nullptr;
}

/// Moves past `token` when it stands at the cursor; tells whether it did.
inline bool pass(Cursor& cursor, const ByteString& token) {
  if (!starts_with(cursor, token)) return false;
  cursor.position += token.length;
  return true;
}

/// Moves past the blank text at the cursor, if any: to where read_blank ends, with the same notes,
/// but without the nodes that nobody would look at.
void skip_blank(Cursor& cursor, ReadError& error);

/// Moves past blank text and `token`, or notes `code` where the token was expected.
inline bool expect(Cursor& cursor, const ByteString& token, ReadCode code, ReadError& error) {
  skip_blank(cursor, error);
  if (pass(cursor, token)) return true;
  note(error, code, cursor.position);
  return false;
}

/// Reads with `read` and moves past what was read; null leaves the cursor where it is.
inline GrammarNodePtr read_at(Cursor& cursor, Read& read, ReadError& error) {
  GrammarNodePtr node = read(cursor, error);
  if (node) cursor.position = node->end;
  return node;
}

/// Like read_at, with the node put behind the last one of `nodes`; tells whether there was one.
inline bool append_read(GrammarNodeList& nodes, Cursor& cursor, Read& read, ReadError& error) {
  GrammarNodePtr node = read_at(cursor, read, error);
  if (!node) return false;
  append(nodes, std::move(node));
  return true;
}

}  // namespace svcinst
