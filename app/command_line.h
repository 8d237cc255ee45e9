// From argv to the one line of text that is parsed, and from a parsed value to what it stands for.
#pragma once

#include "common/byte_string.h"

namespace svcinst {

/// The arguments behind the program's name, each with a space in front and with double quotes round
/// it when it holds a space. Quotes inside an argument stay as they are. Throws std::bad_alloc.
ByteString join_arguments(int argc, const char* const* argv);

/// `value` without the double quotes at its start and end, when it has them at both; otherwise as
/// it is. An absent value stays absent.
TextView strip_quotes(TextView value);

}  // namespace svcinst
