// A place in the grammar text together with the text's end, for the reading functions.
#pragma once

#include <cstdint>
#include <cstring>

#include "common/byte_string.h"
#include "grammar/reader.h"

namespace svcinst {

struct Cursor {
  const char* position;
  const char* end;  // of the text; a NUL stands there

  Cursor(const char* start, std::uint64_t remaining) : position(start), end(start + remaining) {}

  [[nodiscard]] std::uint64_t remaining() const {
    return static_cast<std::uint64_t>(end - position);
  }
};

inline void note(ReadError& error, std::uint16_t code, const char* position) {
  error.code = code;
  error.position = position;
}

constexpr bool is_whitespace(char c) {
  return (c >= 9 && c <= 13) || c == 32;
}

// The first byte, mostly all that a token has or all that is needed to refuse it, takes no call.
inline bool starts_with(const Cursor& cursor, const ByteString& token) {
  return cursor.remaining() >= token.length && *cursor.position == *token.data &&
         (token.length == 1 || std::memcmp(cursor.position, token.data, token.length) == 0);
}

/// Moves past `token` when it stands at the cursor; tells whether it did.
inline bool pass(Cursor& cursor, const ByteString& token) {
  if (!starts_with(cursor, token)) return false;
  cursor.position += token.length;
  return true;
}

/// Moves past `token`, or notes `code` where it was expected.
inline bool expect(Cursor& cursor, const ByteString& token, std::uint16_t code, ReadError& error) {
  if (pass(cursor, token)) return true;
  note(error, code, cursor.position);
  return false;
}

/// Moves past the blank text at the cursor, if any: to where read_blank ends, with the same notes,
/// but without the nodes that nobody would look at.
void skip_blank(Cursor& cursor, ReadError& error);

/// Reads with `read` at the cursor and moves past what was read; null leaves the cursor where it
/// is.
template <class Read>
NodePtr read_at(Cursor& cursor, Read read, ReadError& error) {
  NodePtr node = read(cursor.position, cursor.remaining(), error);
  if (node) cursor.position = node->end;
  return node;
}

}  // namespace svcinst
