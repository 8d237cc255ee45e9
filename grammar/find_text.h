// Search for a text inside a text.
#pragma once

#include <cstdint>
#include <optional>

namespace svcinst {

/// The first offset k >= `first` at which `needle` lies wholly inside text[first .. last] (`last`
/// included), counted in bytes from `text`; nothing when there is none.
std::optional<std::uint64_t> find_text(const char* text, std::uint64_t first, std::uint64_t last,
                                       const char* needle, std::uint64_t needle_length);

}  // namespace svcinst
