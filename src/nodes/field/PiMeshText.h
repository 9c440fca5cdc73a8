#ifndef ORMELLE_PIMESHTEXT_H
#define ORMELLE_PIMESHTEXT_H

#include <Inventor/SbString.h>
#include <Ormelle/PbMesh.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "nodes/field/PiMeshGeometry.h"
#include "nodes/field/PiNumberText.h"
#include "nodes/field/PiTextScanner.h"

class SoOutput;

/// Writes a mesh as text. The codecs and PiMeshDataPart call the same functions on each form of a mesh; those that read
/// return false when they could not.
class PiTextMeshWriter {
 public:
  explicit PiTextMeshWriter(SoOutput* out);
  ~PiTextMeshWriter();
  PiTextMeshWriter(const PiTextMeshWriter&) = delete;
  PiTextMeshWriter& operator=(const PiTextMeshWriter&) = delete;

  /// Some numbers on a line, and what they are.
  template <class... Number>
  bool line(const char* comment, const Number&... numbers) {
    std::string text;
    (appendNumber(text, numbers), ...);
    endLine(text, comment);
    return true;
  }
  /// What the numbers are, and lines with `num` of them.
  template <class T>
  bool block(const char* comment, std::size_t num, const PiMeshBlock<T>& block) {
    writeLine("# ", comment);
    numbers(num, block.get());
    return true;
  }
  /// Opens a data set with what it is and its name.
  void openSet(const std::string& comment, PbMesh::DataBinding binding, const SbString& name);
  void numbers(std::size_t num, const float* numbers);
  void numbers(std::size_t num, const int* numbers);
  void strings(std::size_t num, const SbString* strings);

 private:
  template <class Number>
  static void appendNumber(std::string& text, Number number) {
    char digits[PiNumberText::kMaxLength];
    if (!text.empty()) text += ' ';
    text.append(digits, PiNumberText::write(digits, number));
  }
  template <class T>
  void writeNumbers(std::size_t num, const T* numbers);
  void writeLine(std::string_view mark, std::string_view text);
  void endLine(const std::string& text, const char* comment);
  static std::string quote(const SbString& string);

  SoOutput* m_out;
};

/// Reads a mesh from text.
class PiTextMeshReader {
 public:
  explicit PiTextMeshReader(SoInput* in) : m_scanner(*in) {}

  template <class... Number>
  bool line(const char*, Number&... numbers) {
    return (m_scanner.read(numbers) && ...);
  }
  template <class T>
  bool block(const char*, std::size_t num, PiMeshBlock<T>& block) {
    return m_scanner.read(num, block.read);
  }
  /// No string sets in the older form, which has no count of them.
  bool countSets(int& numStrings, int& numValues, int& numVecs);
  bool openSet(PbMesh::DataBinding& binding, SbString& name);
  bool numbers(std::size_t num, std::vector<float>& numbers) { return m_scanner.read(num, numbers); }
  bool strings(std::size_t num, std::vector<SbString>& strings);

 private:
  PiTextScanner m_scanner;
};

#endif
