#ifndef ORMELLE_PITEXTSCANNER_H
#define ORMELLE_PITEXTSCANNER_H

#include <cstddef>
#include <string>
#include <vector>

class SoInput;

/// Strings one after the other in one piece of memory, since an SbString takes some 270 bytes however short its text.
class PiStringList {
 public:
  void add(const std::string& string) {
    m_text.append(string.c_str());
    m_text += '\0';
  }
  /// Copies the strings, as many as `T` is to be made of.
  template <class T>
  std::vector<T> get(std::size_t num) const {
    std::vector<T> strings;
    strings.reserve(num);
    const char* text = m_text.data();
    for (std::size_t i = 0; i < num; ++i) {
      strings.emplace_back(text);
      while (*text++) continue;
    }
    return strings;
  }

 private:
  std::string m_text;
};

/// Reads numbers, strings and comments from an ASCII stream, where numbers and strings end as the toolkit's do.
///
/// The toolkit gives out characters singly, and slowly. But n numbers or strings take 2n - 1 characters or more, so
/// that those may be fetched at once without taking what comes behind. Fewer than some hundred are read singly all the
/// same, so that the toolkit, which doesn't see line ends in what is fetched at once, names the right line when it
/// reports an error in a file that people write.
///
/// Each function returns false when the stream ends or holds something else; the place in the stream is lost then.
class PiTextScanner {
 public:
  explicit PiTextScanner(SoInput& in) : m_in(in) {}

  bool read(float& number) { return readNumber(number); }
  bool read(int& number) { return readNumber(number); }
  /// Appends `num` numbers. Memory grows as they arrive.
  /// @{
  bool read(std::size_t num, std::vector<float>& numbers) { return readNumbers(num, numbers); }
  bool read(std::size_t num, std::vector<int>& numbers) { return readNumbers(num, numbers); }
  /// @}

  /// A string in double quotes, or without them up to the next blank.
  bool read(std::string& string);
  bool read(std::size_t num, PiStringList& strings);

  /// The comment that follows on the same line, without its mark and the blanks around it; empty if there is none.
  std::string readCommentOfLine();
  /// Skips blanks and comments, and appends the comments to `comments` unless that is null.
  bool skipBlanks(std::string* comments = nullptr);

 private:
  bool get(char& c);
  void putBack(char c);
  bool fetch();
  bool skipLine(std::string* text);
  template <class T>
  bool readNumber(T& number);
  template <class T>
  bool readFetched(T& number);
  template <class T>
  bool readNumbers(std::size_t num, std::vector<T>& numbers);

  SoInput& m_in;
  std::size_t m_numSure = 0;  // so many characters at least are still to come
  std::vector<char> m_fetched;
  std::size_t m_next = 0;  // in m_fetched; 0 if the last character came from the stream
  std::size_t m_end = 0;
  bool m_isAtEnd = false;
  std::string m_token;
};

#endif
