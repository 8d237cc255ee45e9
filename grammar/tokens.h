// The delimiters of the grammar notation. They exist from before main until the process ends.
#pragma once

#include "common/byte_string.h"

namespace svcinst {

struct TokenPair {
  ByteString open;
  ByteString close;

  TokenPair(TextView opener, TextView closer) : open(opener), close(closer) {}
};

inline const TokenPair quote_tokens("'", "'");
inline const TokenPair dquote_tokens("\"", "\"");
inline const TokenPair sort_tokens("`", "`");
inline const TokenPair group_tokens("(", ")");
inline const TokenPair option_tokens("[", "]");
inline const TokenPair repeat_tokens("{", "}");
inline const TokenPair repeat_once_tokens("<", ">");
inline const TokenPair round_comment_tokens("(*", "*)");
inline const TokenPair slash_comment_tokens("/*", "*/");
inline const TokenPair line_comment_tokens("//", "\n");

inline const ByteString range_token("~");
inline const ByteString concatenation_token(",");
inline const ByteString alternation_token("|");
inline const ByteString definition_token("=");
inline const ByteString rule_end_token(";");
inline const ByteString any_char_token(".");
inline const ByteString except_token("!");

}  // namespace svcinst
