#include "graph/format/PiTextLines.h"

namespace {

unsigned byteAt(std::string_view text, size_t i) { return static_cast<unsigned char>(text[i]); }

bool isContinuation(std::string_view text, size_t i) { return (byteAt(text, i) & 0xC0) == 0x80; }

// The bytes of the character that starts at `i`; 0 if it isn't well-formed UTF-8.
size_t characterLength(std::string_view text, size_t i) {
  const unsigned lead = byteAt(text, i);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (lead < 0xC2 || length == 0 || i + length > text.size()) return 0;
  for (size_t k = 1; k < length; ++k)
    if (!isContinuation(text, i + k)) return 0;
  const unsigned second = byteAt(text, i + 1);
  const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool isNoCharacter = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
  return isOverlong || isNoCharacter ? 0 : length;
}

bool isUtf8(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    const size_t length = characterLength(text, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

// Bytes of the first `count` characters, or of all if there are fewer.
size_t bytesOf(std::string_view text, int count) {
  size_t i = 0;
  for (; count > 0 && i < text.size(); --count) do
      ++i;
    while (i < text.size() && isContinuation(text, i));
  return i;
}

void fillLines(std::string_view text, int lineLength, std::vector<std::string>& lines) {
  for (;;) {
    size_t end = bytesOf(text, lineLength);
    size_t next = end;
    if (end < text.size()) {
      const size_t blank = text.rfind(' ', end);  // the blank right behind a full line breaks it too
      const size_t wordEnd = blank == text.npos ? text.npos : text.find_last_not_of(' ', blank);
      if (wordEnd != text.npos) {
        end = wordEnd + 1;
        next = blank;
      }
    }
    lines.emplace_back(text.substr(0, end));
    next = text.find_first_not_of(' ', next);
    if (next == text.npos) return;
    text.remove_prefix(next);
  }
}

}  // namespace

std::string PiTextLines::toUtf8(std::string_view text) {
  if (isUtf8(text)) return std::string(text);
  std::string converted;
  converted.reserve(2 * text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned code = byteAt(text, i);
    if (code < 0x80) {
      converted += static_cast<char>(code);
    } else {
      converted += static_cast<char>(0xC0 | code >> 6);
      converted += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return converted;
}

std::vector<std::string> PiTextLines::split(std::string_view text, char endLineChar, int lineLength) {
  std::vector<std::string> lines;
  if (lineLength <= 0) {
    lines.emplace_back(text);
    return lines;
  }
  while (endLineChar != ' ') {
    const size_t end = text.find(endLineChar);
    if (end == text.npos) break;
    fillLines(text.substr(0, end), lineLength, lines);
    text.remove_prefix(end + 1);
  }
  if (!text.empty() || lines.empty()) fillLines(text, lineLength, lines);
  return lines;
}
