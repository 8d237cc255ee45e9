#include "grammar/utf8.h"

namespace svcinst {
namespace {

// The length that a lead byte announces, and its payload bits; length 0 for a byte that leads none.
Utf8Char decode_lead(unsigned char lead) {
  if (lead < 0x80) return {1, lead};
  if (lead < 0xC0) return {0, 0};
  if (lead < 0xE0) return {2, lead & 0x1FU};
  if (lead < 0xF0) return {3, lead & 0x0FU};
  if (lead < 0xF8) return {4, lead & 0x07U};
  return {0, 0};
}

}  // namespace

Utf8Char decode_utf8(const char* bytes) {
  Utf8Char decoded = decode_lead(static_cast<unsigned char>(bytes[0]));
  for (std::uint32_t i = 1; i < decoded.length; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if ((byte & 0xC0U) != 0x80U) return {0, 0};
    decoded.code_point = decoded.code_point << 6U | (byte & 0x3FU);
  }
  return decoded;
}

}  // namespace svcinst
