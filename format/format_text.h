// The format interpreter: printf-like, with directive rules of its own.
//
//   %[flag][width][.precision][length]letter
//
// At most one flag of "-+ #0"; a width of 8 bits; a precision that gives a number that many digits
// behind a point; letters d i u x X b f F p c s %. Any other letter prints nothing and takes no
// argument. Nothing allocates memory, and several threads may format at once into buffers of their
// own.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "format/output_buffer.h"

namespace svcinst {

/// Formats into `buffer`, which is the caller's. No NUL is put behind the text.
/// with_hex: not 0 to show the codes of the unprintable bytes that %s and %c print.
/// buffer, size: where at most `size` bytes are stored; null and 0 to only count.
/// format: NUL-terminated, never null. arguments: one of the right kind for every '*' and every
/// letter that takes one. An 'l' integer is read as 32 bits, those of ll, j, z, t and %p as 64.
/// Returns the number of bytes stored, or that there would be. For a directive that cannot be read:
/// the negated offset in `format` of the character where reading stopped; what was stored before it
/// stays.
std::int32_t format_text(std::uint8_t with_hex, char* buffer, std::uint64_t size,
                         const char* format, std::va_list arguments);

/// The same behind what `output` holds already. Its count goes up by what is stored, also where the
/// result is negative; a result that is not negative is that count.
std::int32_t format_text(std::uint8_t with_hex, OutputBuffer& output, const char* format,
                         std::va_list arguments);

/// format_text() without hex codes and without a limit: `buffer` must have room for the whole text.
/// buffer: null to only count.
std::int32_t format_into(char* buffer, const char* format, ...);

}  // namespace svcinst
