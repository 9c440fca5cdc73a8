// What VTK's readers believe, and had better not.

#include "read_vtk_guard.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string_view>

#include "Dataset.h"
#include "Words.h"

namespace importer {

namespace {

// ---- XML files ------------------------------------------------------------------------------------------------------

// Counts in the elements of an XML file, and the most that each may be; 0: as many as the file can hold.
struct Count {
  std::string_view attribute;
  std::uintmax_t most;
};
constexpr std::uintmax_t kMostComponents = 10'000;
constexpr std::array kCounts{Count{" NumberOfComponents=\"", kMostComponents},
                             Count{" NumberOfPoints=\"", 0},
                             Count{" NumberOfCells=\"", 0},
                             Count{" NumberOfVerts=\"", 0},
                             Count{" NumberOfLines=\"", 0},
                             Count{" NumberOfStrips=\"", 0},
                             Count{" NumberOfPolys=\"", 0},
                             Count{" NumberOfTuples=\"", 0}};

// Of grids, unless what the file holds of them is in other files.
constexpr std::array kGrids{"\"ImageData\"", "\"RectilinearGrid\"", "\"StructuredGrid\""};

// No packing of the formats makes a byte out of less than a thousandth.
constexpr std::uintmax_t kMostPacked = 1000;

// Of the attributes WholeExtent and Extent: from where to where nodes run along each axis.
void refuseExtents(std::string_view text, std::uintmax_t fileSize) {
  constexpr std::string_view start = "Extent=\"";
  for (std::size_t at = text.find(start); at != std::string_view::npos; at = text.find(start, at + start.size())) {
    const std::string_view rest = text.substr(at + start.size());
    const std::string value(rest.substr(0, std::min<std::size_t>(rest.find('"'), 100)));
    std::istringstream numbers(value);
    double count = 1, low = 0, high = 0;
    for (int axis = 0; axis < 3 && numbers >> low >> high; ++axis) count *= std::max(high - low + 1, 0.0);
    if (count > static_cast<double>(fileSize) * kMostPacked) throw Failure("its extent of " + value + " can't be true");
  }
}

void refuseLies(std::string_view text, std::uintmax_t fileSize) {
  constexpr std::string_view start = " NumberOf";
  for (std::size_t at = text.find(start); at != std::string_view::npos; at = text.find(start, at + start.size())) {
    const std::string_view rest = text.substr(at);
    for (const Count& count : kCounts) {
      if (!rest.starts_with(count.attribute)) continue;
      const std::string_view value = rest.substr(count.attribute.size());
      const std::size_t end = value.find('"');
      if (end == std::string_view::npos) continue;  // seen whole with what is read next
      const std::string_view digits = value.substr(0, end);
      std::uintmax_t number = 0;
      const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
      const std::uintmax_t most = count.most > 0 ? count.most : fileSize * kMostPacked;
      if (result.ec != std::errc() || result.ptr != digits.data() + digits.size() || number > most)
        throw Failure("its" + std::string(count.attribute) + std::string(digits) + "\" can't be true");
    }
  }
}

// ---- Legacy files ---------------------------------------------------------------------------------------------------

// Follows a legacy file through what it announces.
class LegacyGuard {
 public:
  explicit LegacyGuard(const std::string& file) : m_words(file) {}

  void check() {
    if (!m_words.isOpen()) return;
    m_isNew = m_words.line().find("Version 5") != std::string::npos;
    m_words.line();
    const std::string form = upper(m_words.word());
    m_isBinary = form == "BINARY";
    if (!m_isBinary && form != "ASCII") return;
    for (std::string word = upper(m_words.word()); !word.empty() && checkSection(word); word = upper(m_words.word())) {
    }
  }

 private:
  using Count = unsigned long long;
  static constexpr std::array<std::string_view, 5> kCells{"CELLS", "VERTICES", "LINES", "POLYGONS", "TRIANGLE_STRIPS"};

  // What follows a keyword; false where it isn't known, or nothing more can be said.
  bool checkSection(const std::string& keyword) {
    m_section = keyword;
    if (const int numbers = isFixed(keyword)) return takeText(static_cast<Count>(numbers));
    if (keyword == "DATASET") return !m_words.word().empty();
    if (keyword == "POINTS") return takeTyped(3);
    if (keyword == "X_COORDINATES" || keyword == "Y_COORDINATES" || keyword == "Z_COORDINATES") return takeTyped(1);
    if (keyword == "CELL_TYPES") return take(count(), "int");
    if (keyword == "POINT_DATA" || keyword == "CELL_DATA") {
      m_numTuples = count();
      return true;
    }
    if (std::find(kCells.begin(), kCells.end(), keyword) != kCells.end()) return takeCells();
    if (isOneOf(keyword, {"VECTORS", "NORMALS"})) return takeNamed(3);
    if (keyword == "TENSORS") return takeNamed(9);
    if (isOneOf(keyword, {"GLOBAL_IDS", "PEDIGREE_IDS", "EDGE_FLAGS"})) return takeNamed(1);
    if (keyword == "SCALARS") return takeScalars();
    if (keyword == "COLOR_SCALARS") {
      m_words.word();
      return take(count() * m_numTuples, "unsigned_char");
    }
    if (keyword == "LOOKUP_TABLE") {
      m_words.word();
      return take(4 * count(), "unsigned_char");
    }
    if (keyword == "TEXTURE_COORDINATES") {
      m_words.word();
      const Count numbers = count() * m_numTuples;
      return take(numbers, m_words.word());
    }
    // VTK reads no farther than the end of a keyword, and then numbers that aren't announced.
    for (const std::string_view start : kCells)
      if (keyword.starts_with(start))
        throw Failure("the name of a section begins with " + std::string(start) + ", but is none");
    return keyword == "FIELD" && takeField();
  }

  static int isFixed(const std::string& keyword) {
    if (isOneOf(keyword, {"DIMENSIONS", "SPACING", "ORIGIN", "ASPECT_RATIO"})) return 3;
    return keyword == "EXTENT" ? 6 : 0;
  }
  static bool isOneOf(const std::string& word, std::initializer_list<const char*> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
  }
  static std::string upper(std::string word) {
    for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return word;
  }

  Count count() {
    const std::string word = m_words.word();
    Count number = 0;
    const std::from_chars_result result = std::from_chars(word.data(), word.data() + word.size(), number);
    if (result.ec != std::errc() || result.ptr != word.data() + word.size() || number > 1ULL << 31)
      throw Failure("a count in its " + m_section + " can't be true");
    return number;
  }

  // Bytes that each number of a type takes in a binary file; 0 for what isn't known, or differs.
  static Count sizeOf(const std::string& type) {
    if (isOneOf(type, {"CHAR", "UNSIGNED_CHAR"})) return 1;
    if (isOneOf(type, {"SHORT", "UNSIGNED_SHORT"})) return 2;
    if (isOneOf(type, {"INT", "UNSIGNED_INT", "FLOAT"})) return 4;
    return isOneOf(type, {"DOUBLE", "VTKTYPEINT64", "VTKTYPEUINT64"}) ? 8 : 0;
  }

  // Numbers of a type, behind the line that announces them.
  bool take(Count numbers, const std::string& type) {
    if (!m_isBinary) return takeText(numbers);
    const Count size = sizeOf(upper(type));
    if (size > 0) m_words.line();
    if (size > 0 && !m_words.skip(numbers * size)) throw Failure("it breaks off in its " + m_section);
    return size > 0;
  }
  bool takeText(Count numbers) {
    for (Count i = 0; i < numbers; ++i) {
      const std::string word = m_words.word();
      if (word.empty()) throw Failure("it breaks off in its " + m_section);
      if (!isNumber(word)) throw Failure("a number of its " + m_section + " is none");
    }
    return true;
  }
  bool takeTyped(Count each) {
    const Count numbers = each * count();
    return take(numbers, m_words.word());
  }
  bool takeNamed(Count each) {
    m_words.word();
    return take(each * m_numTuples, m_words.word());
  }
  bool takeCells() {
    const Count first = count(), second = count();
    if (!m_isNew) return takeOldCells(first, second);
    m_words.word();  // OFFSETS, and their type
    if (!take(first, m_words.word())) return false;
    m_words.word();  // CONNECTIVITY
    return take(second, m_words.word());
  }
  // Each cell has the number of its nodes in front: VTK makes room for `all` and writes what the cells say.
  bool takeOldCells(Count numCells, Count all) {
    if (m_isBinary) m_words.line();
    Count used = 0;
    for (Count cell = 0; cell < numCells; ++cell) {
      const Count numNodes = m_isBinary ? m_words.bigNumber() : count();
      used += 1 + numNodes;
      if (used > all) break;
      if (!m_isBinary) {
        takeText(numNodes);
      } else if (!m_words.skip(4 * numNodes)) {
        throw Failure("it breaks off in its " + m_section);
      }
    }
    if (used != all) throw Failure("its " + m_section + " have not as many numbers as they announce");
    return true;
  }
  bool takeScalars() {
    m_words.word();
    const std::string type = m_words.word(), rest = m_words.line();
    const std::size_t digit = rest.find_first_of("123456789");
    const Count each = digit == std::string::npos ? 1 : static_cast<Count>(rest[digit] - '0');
    if (upper(m_words.word()) != "LOOKUP_TABLE") return false;
    m_words.word();
    return take(each * m_numTuples, type);
  }
  bool takeField() {
    m_words.word();
    for (Count left = count(); left > 0; --left) {
      if (upper(m_words.word()) == "METADATA") return false;
      const Count components = count(), tuples = count();
      const std::string type = m_words.word();
      if (type == "string" || !take(components * tuples, type)) return false;
    }
    return true;
  }

  Words m_words;
  std::string m_section;
  Count m_numTuples = 0;
  bool m_isNew = false, m_isBinary = false;
};

}  // namespace

void refuseLies(const std::string& file) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(std::fopen(file.c_str(), "rb"), &std::fclose);
  if (!in) return;  // which the reader will tell
  const std::uintmax_t size = std::filesystem::file_size(file);
  constexpr std::size_t kOverlap = 256;
  std::string text;
  std::array<char, 1 << 16> buffer{};
  bool isGrid = false;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), in.get())) {
    text.append(buffer.data(), count);
    const std::size_t appended = text.find("<AppendedData");
    const std::string_view elements = std::string_view(text).substr(0, appended);
    refuseLies(elements, size);
    isGrid = isGrid || std::any_of(kGrids.begin(), kGrids.end(),
                                   [&](const char* type) { return elements.find(type) != std::string_view::npos; });
    if (isGrid) refuseExtents(elements, size);
    if (appended != std::string::npos) return;
    if (text.size() > kOverlap) text.erase(0, text.size() - kOverlap);
  }
}

void refuseBrokenLegacy(const std::string& file) { LegacyGuard(file).check(); }

}  // namespace importer
