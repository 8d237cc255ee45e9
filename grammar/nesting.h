// How deep the reader and the matcher may go. Both recurse for each alternation inside another (a
// group, an option, a repetition, a rule reached through its name), the reader also for each "!",
// and count it here, so that no grammar text and no input can exhaust the stack.
#pragma once

#include <cstdint>

namespace svcinst {

/// The deepest nesting that is read or matched. The command line's own grammar needs 10.
inline constexpr std::uint32_t kMaxNesting = 2000;

/// The count of one reading or one match. Once `exceeded` is set, nothing more is entered, and the
/// whole reading or match has failed.
struct Nesting {
  std::uint32_t levels = 0;
  bool exceeded = false;
};

/// One level, entered for the lifetime of the object.
class NestingLevel {
 public:
  explicit NestingLevel(Nesting& nesting) : nesting_(nesting) {
    if (++nesting_.levels > kMaxNesting) nesting_.exceeded = true;
  }
  NestingLevel(const NestingLevel&) = delete;
  NestingLevel& operator=(const NestingLevel&) = delete;
  ~NestingLevel() { --nesting_.levels; }

  /// False when the construct at this level must fail instead of being read or matched.
  [[nodiscard]] bool allowed() const { return !nesting_.exceeded; }

 private:
  Nesting& nesting_;
};

}  // namespace svcinst
