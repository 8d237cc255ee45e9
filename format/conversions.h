// The conversions of the format interpreter: all letters, and texts and characters themselves. None
// of them allocates memory.
#pragma once

#include <cstdint>

#include "common/text_view.h"
#include "format/arguments.h"
#include "format/directive.h"
#include "format/output_buffer.h"

namespace svcinst {

/// Stores `text`. One that holds an unprintable byte gets '.' in the place of each such byte, and
/// the codes of all its bytes behind it.
void store_annotated(OutputBuffer& output, TextView text);

inline void store_text(OutputBuffer& output, TextView text, bool with_hex) {
  with_hex ? store_annotated(output, text) : store(output, text);
}

/// Stores `byte`. with_hex: an unprintable byte gets its code as a signed number behind it.
void store_character(OutputBuffer& output, char byte, bool with_hex);

/// Converts what `letter` asks for. '*' values are in `directive` already. Takes the value from
/// `arguments` and stores it. False when the letter does not go with the directive's length
/// modifier.
bool convert(OutputBuffer& output, char letter, const DirectiveState& directive,
             Arguments& arguments, bool with_hex);

}  // namespace svcinst
