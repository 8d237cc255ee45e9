#include <utility>

#include "grammar/cursor.h"
#include "grammar/find_text.h"
#include "grammar/reader.h"
#include "grammar/tokens.h"

namespace svcinst {
namespace {

constexpr std::uint16_t kBlankEnds = 0;
constexpr std::uint16_t kLineCommentOpen = 10;

bool opens_comment(const Cursor& cursor, const ByteString& opener) {
  return cursor.remaining() > opener.length && starts_with(cursor, opener);
}

// The comment at the cursor, from `opener` to the end of the first `closer` behind it.
NodePtr comment_until(const Cursor& cursor, const ByteString& opener, const ByteString& closer) {
  const auto found =
      find_text(cursor.position, opener.length, cursor.remaining() - 1, closer.data, closer.length);
  if (!found) return nullptr;
  return make_node(NodeType::comment, cursor.position, cursor.position + *found + closer.length);
}

NodePtr read_blank_piece(const Cursor& cursor, ReadError& error) {
  NodePtr comment = read_comment(cursor.position, cursor.remaining(), error);
  if (comment) return comment;
  if (cursor.remaining() == 0 || !is_whitespace(*cursor.position)) return nullptr;
  return make_node(NodeType::whitespace, cursor.position, cursor.position + 1);
}

}  // namespace

NodePtr read_blank(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  GrammarNodeList pieces;
  while (NodePtr piece = read_blank_piece(cursor, error)) {
    cursor.position = piece->end;
    append(pieces, std::move(piece));
  }
  note(error, kBlankEnds, cursor.position);
  if (pieces.head == nullptr) return nullptr;
  NodePtr blank = make_node(NodeType::unuse_string, position, cursor.position);
  blank->children = std::move(pieces);
  return blank;
}

NodePtr read_comment(const char* position, std::uint64_t remaining, ReadError& error) {
  const Cursor cursor(position, remaining);
  if (opens_comment(cursor, round_comment_open_token)) {
    return comment_until(cursor, round_comment_open_token, round_comment_close_token);
  }
  if (opens_comment(cursor, slash_comment_open_token)) {
    return comment_until(cursor, slash_comment_open_token, slash_comment_close_token);
  }
  if (!opens_comment(cursor, line_comment_open_token)) return nullptr;
  NodePtr comment = comment_until(cursor, line_comment_open_token, line_comment_close_token);
  if (!comment) note(error, kLineCommentOpen, position + line_comment_open_token.length);
  return comment;
}

}  // namespace svcinst
