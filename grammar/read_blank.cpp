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

// The end of the first `closer` behind `opener`, which stands at the cursor; null when there is
// none.
const char* closed_end(const Cursor& cursor, const ByteString& opener, const ByteString& closer) {
  const auto found =
      find_text(cursor.position, opener.length, cursor.remaining() - 1, closer.data, closer.length);
  return found ? cursor.position + *found + closer.length : nullptr;
}

// The end of the comment at the cursor; null when there is none.
const char* comment_end(const Cursor& cursor, ReadError& error) {
  // What most calls find: a byte that no comment begins with.
  if (*cursor.position != '(' && *cursor.position != '/') return nullptr;
  if (opens_comment(cursor, round_comment_open_token)) {
    return closed_end(cursor, round_comment_open_token, round_comment_close_token);
  }
  if (opens_comment(cursor, slash_comment_open_token)) {
    return closed_end(cursor, slash_comment_open_token, slash_comment_close_token);
  }
  if (!opens_comment(cursor, line_comment_open_token)) return nullptr;
  const char* const end = closed_end(cursor, line_comment_open_token, line_comment_close_token);
  if (end == nullptr) {
    note(error, kLineCommentOpen, cursor.position + line_comment_open_token.length);
  }
  return end;
}

// The end of the whitespace byte or comment at the cursor; null when there is neither.
const char* piece_end(const Cursor& cursor, ReadError& error) {
  if (cursor.remaining() > 0 && is_whitespace(*cursor.position)) return cursor.position + 1;
  return comment_end(cursor, error);
}

}  // namespace

void skip_blank(Cursor& cursor, ReadError& error) {
  while (const char* end = piece_end(cursor, error)) cursor.position = end;
  note(error, kBlankEnds, cursor.position);
}

NodePtr read_blank(const char* position, std::uint64_t remaining, ReadError& error) {
  Cursor cursor(position, remaining);
  GrammarNodeList pieces;
  while (const char* end = piece_end(cursor, error)) {
    const bool is_space = is_whitespace(*cursor.position);
    append(pieces,
           make_node(is_space ? NodeType::whitespace : NodeType::comment, cursor.position, end));
    cursor.position = end;
  }
  note(error, kBlankEnds, cursor.position);
  if (pieces.head == nullptr) return nullptr;
  NodePtr blank = make_node(NodeType::unuse_string, position, cursor.position);
  blank->children = std::move(pieces);
  return blank;
}

NodePtr read_comment(const char* position, std::uint64_t remaining, ReadError& error) {
  const char* const end = comment_end({position, remaining}, error);
  return end != nullptr ? make_node(NodeType::comment, position, end) : nullptr;
}

}  // namespace svcinst
