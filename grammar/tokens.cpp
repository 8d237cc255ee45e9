#include "grammar/tokens.h"

namespace svcinst {

const ByteString quote_open_token("'");
const ByteString quote_close_token("'");
const ByteString dquote_open_token("\"");
const ByteString dquote_close_token("\"");
const ByteString sort_open_token("`");
const ByteString sort_close_token("`");
const ByteString group_open_token("(");
const ByteString group_close_token(")");
const ByteString option_open_token("[");
const ByteString option_close_token("]");
const ByteString repeat_open_token("{");
const ByteString repeat_close_token("}");
const ByteString repeat_once_open_token("<");
const ByteString repeat_once_close_token(">");
const ByteString range_token("~");
const ByteString concatenation_token(",");
const ByteString alternation_token("|");
const ByteString definition_token("=");
const ByteString rule_end_token(";");
const ByteString any_char_token(".");
const ByteString except_token("!");
const ByteString round_comment_open_token("(*");
const ByteString round_comment_close_token("*)");
const ByteString slash_comment_open_token("/*");
const ByteString slash_comment_close_token("*/");
const ByteString line_comment_open_token("//");
const ByteString line_comment_close_token("\n");

}  // namespace svcinst
