#ifndef ORMELLE_TOOL_OUT_BASE64_H
#define ORMELLE_TOOL_OUT_BASE64_H

#include <cstdint>
#include <span>
#include <string>

namespace tool {

/// Bytes as text, by RFC 4648.
inline std::string base64(std::span<const uint8_t> bytes) {
  constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t group = static_cast<uint32_t>(bytes[i]) << 16;
    if (i + 1 < bytes.size()) group |= static_cast<uint32_t>(bytes[i + 1]) << 8;
    if (i + 2 < bytes.size()) group |= bytes[i + 2];
    text += kLetters[group >> 18];
    text += kLetters[group >> 12 & 63];
    text += i + 1 < bytes.size() ? kLetters[group >> 6 & 63] : '=';
    text += i + 2 < bytes.size() ? kLetters[group & 63] : '=';
  }
  return text;
}

}  // namespace tool

#endif
