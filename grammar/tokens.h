// The delimiters of the grammar notation. They exist from before main until the process ends.
#pragma once

#include "common/byte_string.h"

namespace svcinst {

extern const ByteString quote_open_token;
extern const ByteString quote_close_token;
extern const ByteString dquote_open_token;
extern const ByteString dquote_close_token;
extern const ByteString sort_open_token;
extern const ByteString sort_close_token;
extern const ByteString group_open_token;
extern const ByteString group_close_token;
extern const ByteString option_open_token;
extern const ByteString option_close_token;
extern const ByteString repeat_open_token;
extern const ByteString repeat_close_token;
extern const ByteString repeat_once_open_token;
extern const ByteString repeat_once_close_token;
extern const ByteString range_token;
extern const ByteString concatenation_token;
extern const ByteString alternation_token;
extern const ByteString definition_token;
extern const ByteString rule_end_token;
extern const ByteString any_char_token;
extern const ByteString except_token;
extern const ByteString round_comment_open_token;
extern const ByteString round_comment_close_token;
extern const ByteString slash_comment_open_token;
extern const ByteString slash_comment_close_token;
extern const ByteString line_comment_open_token;
extern const ByteString line_comment_close_token;

}  // namespace svcinst
