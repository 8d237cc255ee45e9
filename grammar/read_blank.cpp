#include "grammar/reading_steps.h"

namespace svcinst {
namespace {

bool opens(const Cursor& cursor, const TokenPair& comment) {
  return cursor.remaining() > comment.open.length && starts_with(cursor, comment.open);
}

// The end of the comment at the cursor; null when there is none.
const char* comment_end(const Cursor& cursor, ReadError& error) {
  // What most calls find: a byte that no comment begins with.
  if (*cursor.position != '(' && *cursor.position != '/') return nullptr;
  for (const TokenPair* comment : {&round_comment_tokens, &slash_comment_tokens})
    if (opens(cursor, *comment)) return closed_end(cursor, *comment);
  if (!opens(cursor, line_comment_tokens)) return nullptr;
  const char* const end = closed_end(cursor, line_comment_tokens);
  if (end == nullptr) {
    const char* const behind = cursor.position + line_comment_tokens.open.length;
    note(error, ReadCode::line_comment_not_closed, behind);
  }
  return end;
}

// The end of the whitespace byte or comment at the cursor; null when there is neither.
const char* piece_end(const Cursor& cursor, ReadError& error) {
  if (cursor.remaining() > 0 && is_whitespace(*cursor.position)) return cursor.position + 1;
  return comment_end(cursor, error);
}

// Moves past blank text and calls `found` with the ends of each whitespace byte and comment.
template <class Found>
void pass_blank(Cursor& cursor, ReadError& error, Found found) {
  while (const char* end = piece_end(cursor, error)) {
    found(cursor.position, end);
    cursor.position = end;
  }
  note(error, ReadCode::blank_ends, cursor.position);
}

}  // namespace

void skip_blank(Cursor& cursor, ReadError& error) {
  pass_blank(cursor, error, [](const char*, const char*) {});
}

GrammarNodePtr read_blank(Cursor cursor, ReadError& error) {
  const char* const begin = cursor.position;
  GrammarNodeList pieces;
  pass_blank(cursor, error, [&pieces](const char* piece, const char* end) {
    const NodeType type = is_whitespace(*piece) ? NodeType::whitespace : NodeType::comment;
    append(pieces, make_node(type, piece, end));
  });
  if (pieces.head == nullptr) return nullptr;
  return make_node(NodeType::unuse_string, begin, cursor.position, std::move(pieces));
}

GrammarNodePtr read_comment(Cursor cursor, ReadError& error) {
  const char* const end = comment_end(cursor, error);
  return end != nullptr ? make_node(NodeType::comment, cursor.position, end) : nullptr;
}

}  // namespace svcinst
