#include "common/byte_string.h"

#include <cassert>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace svcinst {
namespace {

ByteString join(TextView left, TextView right) {
  ByteString whole;
  resize(whole, left.size() + right.size(), '\0');
  left.copy(whole.data, left.size());
  right.copy(whole.data + left.size(), right.size());
  return whole;
}

// The size in bytes of a block for `length` bytes that replaces one of `capacity` bytes.
std::uint64_t grown_capacity(std::uint64_t capacity, std::uint64_t length) {
  constexpr std::uint64_t kLongest = std::numeric_limits<std::ptrdiff_t>::max() / 2 - 1;
  if (length > kLongest) throw std::bad_alloc();
  return capacity == 0 ? length + 1 : 2 * (length + 1);
}

}  // namespace

ByteString::ByteString(TextView text) {
  resize(*this, text.size(), '\0');
  text.copy(data, text.size());
}

ByteString::ByteString(const ByteString& other) : ByteString(view(other)) {}

ByteString::ByteString(ByteString&& other) noexcept
    : data(std::exchange(other.data, nullptr)),
      length(std::exchange(other.length, 0)),
      capacity(std::exchange(other.capacity, 0)) {}

ByteString& ByteString::operator=(const ByteString& other) {
  if (this == &other) return *this;
  resize(*this, other.length, '\0');
  view(other).copy(data, other.length);
  return *this;
}

ByteString::~ByteString() {
  release(*this);
}

void resize(ByteString& text, std::uint64_t length, char fill) {
  if (length >= text.capacity) {
    const std::uint64_t capacity = grown_capacity(text.capacity, length);
    auto block = std::make_unique_for_overwrite<char[]>(capacity);
    view(text).copy(block.get(), text.length);
    std::memset(block.get() + text.length, fill, capacity - text.length);
    delete[] std::exchange(text.data, block.release());
    text.capacity = capacity;
  } else if (length > text.length) {
    std::memset(text.data + text.length, fill, length - text.length);
  }
  text.length = length;
  text.data[length] = '\0';
}

void append(ByteString& text, TextView tail) {
  assert(tail.data() < text.data || tail.data() >= text.data + text.capacity);
  const std::uint64_t old_length = text.length;
  resize(text, old_length + tail.size(), '\0');
  tail.copy(text.data + old_length, tail.size());
}

void release(ByteString& text) noexcept {
  delete[] std::exchange(text.data, nullptr);
  text.length = 0;
  text.capacity = 0;
}

ByteString operator+(const ByteString& left, const ByteString& right) {
  return join(view(left), view(right));
}

ByteString operator+(char left, const ByteString& right) {
  return join({&left, 1}, view(right));
}

ByteString operator+(const ByteString& left, const char* right) {
  return join(view(left), right);
}

ByteString operator+(const char* left, const ByteString& right) {
  return join(left, view(right));
}

}  // namespace svcinst
