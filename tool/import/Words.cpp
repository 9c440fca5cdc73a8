#include "Words.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>

namespace importer {

namespace {

constexpr std::size_t kLongestWord = 1000;

}  // namespace

Words::Words(const std::string& file) : m_in(std::fopen(file.c_str(), "rb"), &std::fclose) {
  std::error_code error;
  m_size = std::filesystem::file_size(file, error);
  if (error) m_size = 0;
}

void Words::fill() {
  if (!m_in) return;
  m_next = 0;
  m_end = std::fread(m_buffer.data(), 1, m_buffer.size(), m_in.get());
  m_filled += m_end;
}

std::string Words::line() {
  std::string text;
  for (int c = next(); c != EOF && c != '\n'; c = next())
    if (text.size() < kLongestWord) text += static_cast<char>(c);
  return text;
}

std::string Words::word() {
  std::string text;
  while (peek() != EOF && std::isspace(peek())) next();
  for (int c = peek(); c != EOF && !std::isspace(c); c = peek()) {
    if (text.size() < kLongestWord) text += static_cast<char>(c);
    next();
  }
  return text;
}

bool Words::skip(std::uintmax_t numBytes) {
  if (numBytes <= m_end - m_next) {
    m_next += static_cast<std::size_t>(numBytes);
    return true;
  }
  const std::uintmax_t at = m_filled - (m_end - m_next);
  if (!m_in || numBytes > m_size - std::min(m_size, at)) return false;
  m_filled = at + numBytes;
  m_next = m_end = 0;
  return std::fseek(m_in.get(), static_cast<long>(m_filled), SEEK_SET) == 0;
}

std::uint32_t Words::bigNumber() {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i) number = number << 8 | (static_cast<std::uint32_t>(next()) & 255U);
  return number;
}

std::uint32_t Words::littleNumber() {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i) number |= (static_cast<std::uint32_t>(next()) & 255U) << (8 * i);
  return number;
}

bool isNumber(const std::string& word) {
  char* end = nullptr;
  std::strtod(word.c_str(), &end);
  return !word.empty() && *end == '\0';
}

}  // namespace importer
