// What the fuzz targets share: pieces of the fuzzer's input, and the check that ends a run.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "common/text_view.h"

namespace svcinst {

inline void require(bool holds) {
  if (!holds) std::abort();
}

/// A copy with a NUL behind it in a block of exactly that size: reading past the NUL is seen.
class ExactText {
 public:
  explicit ExactText(TextView text)
      : length_(text.size()), bytes_(std::make_unique<char[]>(length_ + 1)) {
    text.copy(bytes_.get(), length_);
  }
  [[nodiscard]] const char* begin() const { return bytes_.get(); }
  [[nodiscard]] const char* end() const { return bytes_.get() + length_; }
  [[nodiscard]] TextView view() const { return {bytes_.get(), length_}; }

 private:
  std::size_t length_;
  std::unique_ptr<char[]> bytes_;
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
