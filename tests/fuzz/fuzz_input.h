// What the fuzz targets share: pieces of the fuzzer's input, and the check that ends a run.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "common/text_view.h"

namespace svcinst {

inline void require(bool holds) {
  if (!holds) std::abort();
}

/// A copy with a NUL behind it in a block of exactly that size: reading past the NUL is seen.
class ExactText {
 public:
  explicit ExactText(TextView text) : bytes_(text.size() + 1) {
    text.copy(bytes_.data(), text.size());
  }
  [[nodiscard]] const char* begin() const { return bytes_.data(); }
  [[nodiscard]] const char* end() const { return &bytes_.back(); }
  [[nodiscard]] TextView view() const { return {begin(), end()}; }

 private:
  std::vector<char> bytes_;
};

/// What stands before `separator`, which goes too; all of `input` when there is none.
inline TextView take_until(TextView& input, TextView separator) {
  const TextView piece = input.substr(0, input.find(separator));
  input.remove_prefix(std::min(piece.size() + separator.size(), input.size()));
  return piece;
}

inline TextView as_text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace svcinst
