#include "nodes/field/PiTextScanner.h"

#include <Inventor/SoInput.h>

#include <algorithm>
#include <array>

#include "nodes/field/PiNumberText.h"

namespace {

constexpr std::size_t kMostFetched = 65536;
constexpr std::size_t kLeastFetched = 1024;
// No text of a number is longer, unless for mischief.
constexpr std::size_t kMaxTokenLength = 1024;
// From there on the text of a number is read singly if it goes on.
constexpr std::size_t kUsualTokenLength = 64;

constexpr bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool isLineEnd(char c) { return c == '\n' || c == '\r'; }

constexpr std::array<bool, 256> kEndsToken = [] {
  std::array<bool, 256> ends{};
  for (const char c : {' ', '\t', '\n', '\v', '\f', '\r', '#', '"', ',', '~', '=', '{', '}', '[', ']', '\0'})
    ends[static_cast<unsigned char>(c)] = true;
  return ends;
}();
bool endsToken(char c) { return kEndsToken[static_cast<unsigned char>(c)]; }

}  // namespace

bool PiTextScanner::get(char& c) {
  if (m_next < m_end || fetch()) {
    c = m_fetched[m_next++];
    return true;
  }
  // The toolkit leaves the file when it is asked again behind its end.
  if (m_isAtEnd) return false;
  m_isAtEnd = !m_in.get(c);
  return !m_isAtEnd;
}

void PiTextScanner::putBack(char c) {
  if (m_next > 0)
    --m_next;
  else
    m_in.putBack(c);
}

bool PiTextScanner::fetch() {
  m_next = m_end = 0;
  if (m_isAtEnd || m_numSure < kLeastFetched) return false;
  const std::size_t num = std::min(m_numSure, kMostFetched);
  m_fetched.resize(num);
  m_isAtEnd = !m_in.readBinaryArray(reinterpret_cast<unsigned char*>(m_fetched.data()), static_cast<int>(num));
  if (!m_isAtEnd) m_end = num;
  return !m_isAtEnd;
}

bool PiTextScanner::skipLine(std::string* text) {
  char c;
  while (get(c)) {
    if (isLineEnd(c)) {
      putBack(c);
      return true;
    }
    if (text) *text += c;
  }
  return false;
}

bool PiTextScanner::skipBlanks(std::string* comments) {
  char c;
  while (get(c)) {
    if (c == '#') {
      if (!skipLine(comments)) return false;
      if (comments) *comments += '\n';
    } else if (!isBlank(c)) {
      putBack(c);
      return true;
    }
  }
  return false;
}

std::string PiTextScanner::readCommentOfLine() {
  std::string comment;
  char c;
  while (get(c)) {
    if (c == '#') {
      skipLine(&comment);
      break;
    }
    if (c != ' ' && c != '\t') {
      putBack(c);
      break;
    }
  }
  const std::size_t first = comment.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return comment.substr(first, comment.find_last_not_of(" \t") + 1 - first);
}

template <class T>
bool PiTextScanner::readNumber(T& number) {
  if (!skipBlanks()) return false;
  m_token.clear();
  char c;
  while (get(c)) {
    if (endsToken(c)) {
      putBack(c);
      break;
    }
    if (m_token.size() == kMaxTokenLength) return false;
    m_token += c;
  }
  const char* const end = m_token.data() + m_token.size();
  return !m_token.empty() && PiNumberText::read(m_token.data(), end, number) == end;
}

// The fast way, for a number that is sure to lie within what was fetched. Reads nothing otherwise.
template <class T>
bool PiTextScanner::readFetched(T& number) {
  while (m_next < m_end && isBlank(m_fetched[m_next])) ++m_next;
  if (m_end - m_next < kUsualTokenLength) return false;
  const char* const begin = m_fetched.data() + m_next;
  const char* const end = m_fetched.data() + m_end;
  const char* const rest = PiNumberText::read(begin, end, number);
  if (!rest || rest == end || !endsToken(*rest)) return false;
  m_next += static_cast<std::size_t>(rest - begin);
  return true;
}

template <class T>
bool PiTextScanner::readNumbers(std::size_t num, std::vector<T>& numbers) {
  for (std::size_t left = num; left > 0; --left) {
    m_numSure = 2 * (left - 1);
    T number;
    if (!readFetched(number) && !readNumber(number)) return false;
    numbers.push_back(number);
  }
  return true;
}

template bool PiTextScanner::readNumber(float&);
template bool PiTextScanner::readNumber(int&);
template bool PiTextScanner::readNumbers(std::size_t, std::vector<float>&);
template bool PiTextScanner::readNumbers(std::size_t, std::vector<int>&);

bool PiTextScanner::read(std::string& string) {
  string.clear();
  char c;
  if (!skipBlanks() || !get(c)) return false;
  if (c != '"') {
    do {
      if (isBlank(c)) {
        putBack(c);
        break;
      }
      string += c;
    } while (get(c));
    return true;
  }
  while (get(c)) {
    if (c == '"') return true;
    string += c;
    if (c != '\\') continue;
    if (!get(c)) return false;
    if (c != '"') {
      putBack(c);
      continue;
    }
    // A quoted quote; but at the end of a line the backslash is the last character of the string.
    if (!get(c)) return true;
    putBack(c);
    if (isLineEnd(c)) return true;
    string.back() = '"';
  }
  return false;
}

bool PiTextScanner::read(std::size_t num, PiStringList& strings) {
  std::string string;
  for (std::size_t left = num; left > 0; --left) {
    m_numSure = 2 * (left - 1);
    if (!read(string)) return false;
    strings.add(string);
  }
  return true;
}
