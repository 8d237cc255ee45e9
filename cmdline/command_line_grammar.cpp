#include "cmdline/command_line_grammar.h"

#include "grammar/grammar.h"

namespace svcinst {

const ByteString command_line_grammar(R"(
//(*commandline param syntax define by zor*)
/*first version*/
syntax            = cmd_param;
cmd_param         = <{space}, param_and_value>;
letter            = 'A'~'Z' | 'a'~'z' | '0'~'9' | '_';
short_param_name  = '-', letter;
long_param_name   = "--", <letter>;
param_and_value   = (long_param_name|short_param_name), ['='], {{space}, value};
value             = '"', {!'"'}, '"' | "'", {!"'"}, "'" | !` -`, {!` `};
space             = ' ';
)");

// Here, not in grammar/, so that the engine knows no particular grammar.
Grammar::Grammar() : Grammar(view(command_line_grammar)) {}

}  // namespace svcinst
