// The conversions of the format interpreter that print numbers. None of them allocates memory.
#pragma once

#include <cstdint>

#include "format/arguments.h"
#include "format/directive.h"
#include "format/output_buffer.h"

namespace svcinst {

/// Stores `value` as %d, %u and %x print it without flag, width and precision.
void store_signed(OutputBuffer& output, std::int32_t value);
void store_unsigned(OutputBuffer& output, std::uint32_t value);
void store_hex(OutputBuffer& output, std::uint32_t value);

/// Takes the value of d, i, u, x, X, b or p and stores it, dressed as the directive says.
void convert_integer(OutputBuffer& output, char letter, const DirectiveState& directive,
                     Arguments& arguments);

/// Takes the value of f or F and stores it likewise.
void convert_double(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments);

}  // namespace svcinst
