// How deep the reader and the matcher may go. Both recurse for each alternation inside another (a
// group, an option, a repetition, a rule reached through its name) and for each "!", and count it
// here, so that no grammar text and no input can exhaust the stack.
#pragma once

#include <cstdint>

namespace svcinst {

/// The deepest nesting that is read or matched. The command line's own grammar needs 8.
inline constexpr std::uint32_t kMaxNesting = 2000;

/// One level, counted in `depth` for the lifetime of the object.
struct NestingLevel {
  std::uint32_t& depth;

  explicit NestingLevel(std::uint32_t& counter) : depth(counter) { ++depth; }
  NestingLevel& operator=(NestingLevel&&) = delete;  // nor any copy
  ~NestingLevel() { --depth; }

  /// False when what is at this level must fail instead of being read or matched.
  [[nodiscard]] bool allowed() const { return depth <= kMaxNesting; }
};

}  // namespace svcinst
