#ifndef ORMELLE_PIBITROWS_H
#define ORMELLE_PIBITROWS_H

#include <cstdint>

#include "quillane/surface/PiGrowBuffer.h"

/// One bit for each node of a grid, 64 to a word. Each row of nodes begins with a new word; the bits behind its end are
/// 0.
class PiBitRows {
 public:
  using Word = std::uint64_t;

  void setShape(int numRows, int numInRow) {
    m_numInRow = numInRow;
    m_numWords = (numInRow + 63) / 64;
    m_words.reset(static_cast<std::size_t>(numRows) * static_cast<std::size_t>(m_numWords));
  }
  /// Words in a row.
  int numWords() const { return m_numWords; }
  Word* row(int row) { return m_words.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(m_numWords); }
  const Word* row(int row) const {
    return m_words.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(m_numWords);
  }
  /// The bits of word `word` that stand for the first `num` of a row.
  static Word mask(int word, int num) {
    const int rest = num - 64 * word;
    return rest >= 64 ? ~Word{0} : rest <= 0 ? 0 : (Word{1} << rest) - 1;
  }
  /// Word `word` of a row of `numWords` words, each bit being that of the next node.
  static Word next(const Word* row, int word, int numWords) {
    return row[word] >> 1 | (word + 1 < numWords ? row[word + 1] << 63 : 0);
  }
  std::size_t memorySize() const { return m_words.capacity() * sizeof(Word); }

  /// How many bits are set. Without the instruction for it, which not every machine has.
  static int count(Word word) {
    word -= word >> 1 & 0x5555555555555555U;
    word = (word & 0x3333333333333333U) + (word >> 2 & 0x3333333333333333U);
    word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0FU;
    return static_cast<int>(word * 0x0101010101010101U >> 56);
  }

 private:
  int m_numInRow = 0;
  int m_numWords = 0;
  PiGrowBuffer<Word> m_words;
};

#endif
