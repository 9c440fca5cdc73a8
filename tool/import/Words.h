#ifndef ORMELLE_TOOL_IMPORT_WORDS_H
#define ORMELLE_TOOL_IMPORT_WORDS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace importer {

/// Reads words, lines and bytes of a file, for a look at what it promises before a library believes it.
class Words {
 public:
  explicit Words(const std::string& file);

  bool isOpen() const { return m_in != nullptr; }
  /// In bytes.
  std::uintmax_t size() const { return m_size; }

  /// The rest of the line, or the beginning of a long one. Empty at the end, too.
  std::string line();
  /// The next word, or the beginning of a long one. Empty at the end.
  std::string word();
  /// Passes by bytes; false if there are fewer.
  bool skip(std::uintmax_t numBytes);
  /// Four bytes as a number, the highest or the lowest first.
  std::uint32_t bigNumber();
  std::uint32_t littleNumber();
  bool isAtEnd() { return peek() == EOF; }

 private:
  int peek() {
    if (m_next == m_end) fill();
    return m_next == m_end ? EOF : static_cast<unsigned char>(m_buffer[m_next]);
  }
  int next() {
    const int c = peek();
    if (c != EOF) ++m_next;
    return c;
  }
  void fill();

  std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_in;
  std::uintmax_t m_size = 0, m_filled = 0;  // bytes of the file, and of it up to the end of the buffer
  std::array<char, 1 << 16> m_buffer{};
  std::size_t m_next = 0, m_end = 0;
};

/// Whether a word is a number as a whole.
bool isNumber(const std::string& word);

}  // namespace importer

#endif
