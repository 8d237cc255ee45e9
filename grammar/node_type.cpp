#include "grammar/node_type.h"

#include <array>

namespace svcinst {

const char* node_type_name(NodeType type) {
  static constexpr std::array<const char*, kNodeTypeCount> kNames = {
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
  return value_of(type) < kNames.size() ? kNames[value_of(type)] : "";
}

}  // namespace svcinst
