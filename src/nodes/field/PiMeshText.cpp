#include "nodes/field/PiMeshText.h"

#include <Inventor/SoOutput.h>

#include <algorithm>

namespace {

constexpr std::size_t kNumbersPerLine = 15;
constexpr std::string_view kStringSetCount = "number of string data-set";
constexpr std::string_view kPerCellWords = "per cell";

}  // namespace

PiTextMeshWriter::PiTextMeshWriter(SoOutput* out) : m_out(out) {
  m_out->incrementIndent();
  m_out->write('\n');
}

PiTextMeshWriter::~PiTextMeshWriter() { m_out->decrementIndent(); }

void PiTextMeshWriter::writeLine(std::string_view mark, std::string_view text) {
  m_out->indent();
  m_out->write(std::string(mark).append(text).append("\n").c_str());
}

void PiTextMeshWriter::endLine(const std::string& text, const char* comment) {
  writeLine(text, std::string("   # ").append(comment));
}

template <class T>
void PiTextMeshWriter::writeNumbers(std::size_t num, const T* numbers) {
  char line[kNumbersPerLine * (PiNumberText::kMaxLength + 1) + 2];
  while (num > 0) {
    const std::size_t numOfLine = std::min(num, kNumbersPerLine);
    char* end = line;
    for (std::size_t i = 0; i < numOfLine; ++i) {
      end = PiNumberText::write(end, numbers[i]);
      *end++ = ' ';
    }
    *end++ = '\n';
    *end = '\0';
    m_out->indent();
    m_out->write(line);
    numbers += numOfLine;
    num -= numOfLine;
  }
}

void PiTextMeshWriter::numbers(std::size_t num, const float* numbers) { writeNumbers(num, numbers); }
void PiTextMeshWriter::numbers(std::size_t num, const int* numbers) { writeNumbers(num, numbers); }

void PiTextMeshWriter::strings(std::size_t num, const SbString* strings) {
  for (std::size_t i = 0; i < num; ++i) writeLine(quote(strings[i]), {});
}

void PiTextMeshWriter::openSet(const std::string& comment, PbMesh::DataBinding, const SbString& name) {
  writeLine("# ", comment);
  std::string quoted = quote(name);
  // A backslash before the closing quote ends the string only if the line ends there too.
  if (name.getLength() > 0 && name[name.getLength() - 1] == '\\') {
    writeLine(quoted, {});
    quoted.clear();
  }
  endLine(quoted, "set name");
}

std::string PiTextMeshWriter::quote(const SbString& string) {
  const std::string_view text(string.getString(), static_cast<std::size_t>(string.getLength()));
  std::string quoted = "\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted += '\\';
    quoted += text[i];
    // To the toolkit, and to this reader, a quoted quote at the end of a line would end the string.
    if (text[i] == '"' && i + 1 < text.size() && (text[i + 1] == '\n' || text[i + 1] == '\r')) quoted += ' ';
  }
  return quoted += '"';
}

bool PiTextMeshReader::countSets(int& numStrings, int& numValues, int& numVecs) {
  int first;
  if (!m_scanner.read(first)) return false;
  if (m_scanner.readCommentOfLine() == kStringSetCount) {
    numStrings = first;
    if (!m_scanner.read(numValues)) return false;
  } else {
    numStrings = 0;
    numValues = first;
  }
  return m_scanner.read(numVecs);
}

bool PiTextMeshReader::openSet(PbMesh::DataBinding& binding, SbString& name) {
  std::string comments, string;
  if (!m_scanner.skipBlanks(&comments) || !m_scanner.read(string)) return false;
  binding = comments.find(kPerCellWords) == std::string::npos ? PbMesh::PER_NODE : PbMesh::PER_CELL;
  name = string.c_str();
  return true;
}

bool PiTextMeshReader::strings(std::size_t num, std::vector<SbString>& strings) {
  PiStringList list;
  if (!m_scanner.read(num, list)) return false;
  strings = list.get<SbString>(num);
  return true;
}
