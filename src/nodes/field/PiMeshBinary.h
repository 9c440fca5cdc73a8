#ifndef ORMELLE_PIMESHBINARY_H
#define ORMELLE_PIMESHBINARY_H

#include <Inventor/SbString.h>
#include <Ormelle/PbMesh.h>

#include <string>
#include <string_view>
#include <vector>

#include "nodes/field/PiMeshGeometry.h"
#include "nodes/field/PiTextScanner.h"

class SoInput;
class SoOutput;

/// Writes a mesh in the toolkit's binary form, highest byte first; has the functions of PiTextMeshWriter.
///
/// The toolkit converts and moves arrays number by number. Bytes it moves in one go, so they are converted here.
class PiBinaryMeshWriter {
 public:
  explicit PiBinaryMeshWriter(SoOutput* out) : m_out(out) {}

  template <class... Number>
  bool line(const char*, const Number&... number) {
    (numbers(1, &number), ...);
    return true;
  }
  template <class T>
  bool block(const char*, std::size_t num, const PiMeshBlock<T>& block) {
    numbers(num, block.get());
    return true;
  }
  void openSet(const std::string&, PbMesh::DataBinding binding, const SbString& name);
  void numbers(std::size_t num, const float* numbers) { write(num, numbers); }
  void numbers(std::size_t num, const int* numbers) { write(num, numbers); }
  void strings(std::size_t num, const SbString* strings);

 private:
  template <class T>
  void write(std::size_t num, const T* numbers);
  void write(std::string_view string);

  SoOutput* m_out;
};

/// Reads a mesh from binary form; has the functions of PiTextMeshReader. Memory grows as numbers arrive.
class PiBinaryMeshReader {
 public:
  explicit PiBinaryMeshReader(SoInput* in) : m_in(in) {}

  template <class... Number>
  bool line(const char*, Number&... numbers) {
    return (read(numbers) && ...);
  }
  template <class T>
  bool block(const char*, std::size_t num, PiMeshBlock<T>& block) {
    return read(num, block.read);
  }
  bool countSets(int& numStrings, int& numValues, int& numVecs) {
    return read(numStrings) && read(numValues) && read(numVecs);
  }
  bool openSet(PbMesh::DataBinding& binding, SbString& name);
  bool numbers(std::size_t num, std::vector<float>& numbers) { return read(num, numbers); }
  bool strings(std::size_t num, std::vector<SbString>& strings);

 private:
  template <class T>
  bool read(T& number);
  template <class T>
  bool read(std::size_t num, std::vector<T>& numbers);
  bool read(std::string& string);

  SoInput* m_in;
};

#endif
