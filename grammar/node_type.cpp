#include "grammar/node_type.h"

#include <iterator>

namespace svcinst {

const char* node_type_name(NodeType type) {
  static constexpr const char* kNames[] = {
      "syntax",          "rule",
      "alternation",     "concatenation",
      "meta_definition", "group",
      "option",          "repeat",
      "terminal_string", "except_terminal_string",
      "sort_string",     "quote_string",
      "dquote_string",   "range_string",
      "any_char",        "digit_hex",
      "integer_dec",     "integer_hex",
      "integer",         "identifier",
      "nonwhitespace",   "digit",
      "alphabet",        "identifier_chars",
      "nonascii_chars",  "ascii",
      "all_chars",       "whitespace",
      "comment",         "multiline_comment",
      "unuse_string",    "",
      "repeat >= 1",
  };
  static_assert(std::size(kNames) == value_of(NodeType::count));
  return value_of(type) < value_of(NodeType::count) ? kNames[value_of(type)] : "";
}

}  // namespace svcinst
