// For the reader's own files: its functions, the steps that they are made of, and the place in the
// grammar text at which they take them.
#pragma once

#include <cstring>

#include "grammar/find_text.h"
#include "grammar/reader.h"
#include "grammar/tokens.h"

namespace svcinst {

// Each function reads one construct at `position`. remaining: bytes from `position` to the end of
// the text; a NUL must stand behind the text. It returns the finished node, which looks into the
// text, or null when the construct is not there; nothing is then left behind but a note in `error`.
// All throw std::bad_alloc.

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

struct Cursor {
  const char* position;
  const char* end;  // of the text; a NUL stands there

  Cursor(const char* start, std::uint64_t remaining) : position(start), end(start + remaining) {}

  [[nodiscard]] std::uint64_t remaining() const {
    return static_cast<std::uint64_t>(end - position);
  }
};

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

/// Reads with `read` at the cursor and moves past what was read; null leaves the cursor where it
/// is.
template <class Read>
GrammarNodePtr read_at(Cursor& cursor, Read read, ReadError& error) {
  GrammarNodePtr node = read(cursor.position, cursor.remaining(), error);
  if (node) cursor.position = node->end;
  return node;
}

/// Like read_at, with the node put behind the last one of `nodes`; tells whether there was one.
template <class Read>
bool append_read(GrammarNodeList& nodes, Cursor& cursor, Read read, ReadError& error) {
  GrammarNodePtr node = read_at(cursor, read, error);
  if (!node) return false;
  append(nodes, std::move(node));
  return true;
}

}  // namespace svcinst
