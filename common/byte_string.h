// The growable byte string that holds all text of the system. It owns its block; a NUL stands
// behind the last byte whenever there is a block. Change `length` and `capacity` through resize()
// only.
#pragma once

#include <cstdint>

#include "common/text_view.h"

namespace svcinst {

struct ByteString {
  char* data = nullptr;        // owned; none until the first growth
  std::uint64_t length = 0;    // bytes in use, without the NUL
  std::uint64_t capacity = 0;  // bytes allocated; at least length + 1 when there is a block

  ByteString() = default;
  /// Copies the bytes of `text`. Throws std::bad_alloc.
  explicit ByteString(TextView text);
  ByteString(const ByteString& other);
  ByteString(ByteString&& other) noexcept;
  ByteString& operator=(const ByteString& other);
  ~ByteString();
};

/// Makes `text` exactly `length` bytes long and puts a NUL behind it. Every byte that is new holds
/// `fill`. length: bytes, without the NUL. Views into `text` are dead afterwards: its block may
/// have moved. Throws std::bad_alloc; `text` is then unchanged.
void resize(ByteString& text, std::uint64_t length, char fill);

/// Puts the bytes of `tail`, which must not look into `text`, behind `text`. Throws std::bad_alloc;
/// `text` is then unchanged.
void append(ByteString& text, TextView tail);

/// Frees the block; `text` is empty afterwards and may be used again.
void release(ByteString& text) noexcept;

/// The bytes of `text`, valid until it changes.
inline TextView view(const ByteString& text) {
  return {text.data, text.length};
}

/// The bytes of `text` with their NUL, valid until it changes; "" while it has no block.
inline const char* c_str(const ByteString& text) {
  return text.data != nullptr ? text.data : "";
}

/// Concatenations: a new string of both pieces. They throw std::bad_alloc.
ByteString operator+(const ByteString& left, const ByteString& right);
ByteString operator+(char left, const ByteString& right);
ByteString operator+(const ByteString& left, const char* right);
ByteString operator+(const char* left, const ByteString& right);

}  // namespace svcinst
