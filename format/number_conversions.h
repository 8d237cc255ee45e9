// The conversions of the format interpreter that print numbers. None of them allocates memory.
#pragma once

#include <cstdint>

#include "format/arguments.h"
#include "format/digits.h"
#include "format/directive.h"
#include "format/output_buffer.h"

namespace svcinst {

/// Puts `digits` behind what is stored; what there is no room for is dropped.
void store(OutputBuffer& output, const Digits& digits);

/// Stores the decimal digits of `value`, and a '-' in front of those of a negative one.
void store_signed(OutputBuffer& output, std::int32_t value);

/// Takes the value of d, i, u, x, X, b or p and stores it, laid out as the directive says.
void convert_integer(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments);

/// Takes the value of f or F and stores it likewise.
void convert_double(OutputBuffer& output, const DirectiveState& directive, Arguments& arguments);

}  // namespace svcinst
