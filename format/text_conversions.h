// The conversions of the format interpreter that print texts and characters. None of them allocates
// memory.
#pragma once

#include <cstdint>

#include "common/text_view.h"
#include "format/output_buffer.h"

namespace svcinst {

/// Stores `text`. One that holds an unprintable byte gets '.' in the place of each such byte, and
/// the codes of all its bytes behind it.
void store_annotated(OutputBuffer& output, TextView text);

/// Stores the `length` bytes at `text`, NULs included. length: 0 for those up to the NUL, and for
/// none where `text` is null. with_hex: annotated.
inline void store_text(OutputBuffer& output, const char* text, std::uint32_t length,
                       bool with_hex) {
  if (text == nullptr && length == 0) return;
  const TextView bytes = length > 0 ? TextView(text, length) : TextView(text);
  if (with_hex) return store_annotated(output, bytes);
  store(output, bytes);
}

/// Stores `byte`. with_hex: an unprintable byte gets its code as a signed number behind it.
void store_character(OutputBuffer& output, char byte, bool with_hex);

}  // namespace svcinst
