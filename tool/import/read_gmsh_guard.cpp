// What Gmsh's library believes of the results in a file, and had better not.

#include "read_gmsh_guard.h"

#include <charconv>
#include <cstdint>
#include <limits>

#include "Dataset.h"
#include "Words.h"

namespace importer {

namespace {

// Follows the sections with values of nodes and cells, as the format's description lays them out: texts, real numbers
// and whole numbers with their counts in front, of which the third whole number is the number of values at once and the
// one behind it that of the nodes or cells; then these, each with its number.
class ResultsGuard {
 public:
  explicit ResultsGuard(const std::string& file) : m_words(file) {}

  void check() {
    if (m_words.line().find("$MeshFormat") == std::string::npos) return;
    m_words.word();
    m_isBinary = m_words.word() == "1";
    m_words.line();
    // Other machines have the bytes of their numbers in the other order.
    if (m_isBinary && m_words.littleNumber() != 1) return;
    while (!m_words.isAtEnd()) {
      const std::string line = m_words.line();
      for (const char* name : {"NodeData", "ElementData", "ElementNodeData"})
        if (line.starts_with("$" + std::string(name))) checkSection(name);
    }
  }

 private:
  [[noreturn]] void refuse() const { throw Failure("a number in its " + m_section + " can't be true"); }

  std::int64_t number(std::int64_t least, std::int64_t most) {
    const std::string word = m_words.word();
    std::int64_t number = 0;
    const std::from_chars_result result = std::from_chars(word.data(), word.data() + word.size(), number);
    if (result.ec != std::errc() || result.ptr != word.data() + word.size() || number < least || number > most)
      refuse();
    return number;
  }

  void checkSection(const std::string& name) {
    constexpr std::int64_t kMostTags = 1000, kMostSteps = 10'000'000, kMostComponents = 1000;
    m_section = name;
    const std::int64_t numTexts = number(0, kMostTags);
    m_words.line();
    for (std::int64_t i = 0; i < numTexts; ++i) m_words.line();
    for (std::int64_t left = number(0, kMostTags); left > 0; --left) m_words.word();
    const std::int64_t numWhole = number(0, kMostTags);
    if (numWhole < 3) return;
    number(0, kMostSteps);
    const std::int64_t numComponents = number(1, kMostComponents);
    const std::int64_t count = number(0, static_cast<std::int64_t>(m_words.size()));
    for (std::int64_t i = 3; i < numWhole; ++i) m_words.word();
    if (m_isBinary) m_words.line();
    for (std::int64_t i = 0; i < count; ++i) checkEntry(numComponents);
  }

  void checkEntry(std::int64_t numComponents) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max() - 1, kMostNodes = 1000;
    const bool hasNodes = m_section == "ElementNodeData";
    const auto whole = [&](std::int64_t most) {
      if (!m_isBinary) return number(1, most);
      const std::int64_t value = m_words.littleNumber();
      if (value < 1 || value > most) refuse();
      return value;
    };
    whole(kLargest);
    const std::int64_t values = numComponents * (hasNodes ? whole(kMostNodes) : 1);
    if (m_isBinary && !m_words.skip(static_cast<std::uintmax_t>(values) * sizeof(double))) refuse();
    for (std::int64_t i = 0; i < values && !m_isBinary; ++i)
      if (!isNumber(m_words.word())) refuse();
  }

  Words m_words;
  std::string m_section;
  bool m_isBinary = false;
};

}  // namespace

void refuseBrokenGmsh(const std::string& file) { ResultsGuard(file).check(); }

}  // namespace importer
