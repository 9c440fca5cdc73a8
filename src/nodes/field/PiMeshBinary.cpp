#include "nodes/field/PiMeshBinary.h"

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace {

constexpr std::size_t kBinaryChunk = 16384;
// Follows the name of a set with one element for each cell, behind a zero byte, where other readers don't look.
constexpr std::string_view kPerCellMark("\0per cell", 9);

static_assert(sizeof(float) == 4 && sizeof(int) == 4);

// From the order of bytes of this machine to that of files, and back.
std::uint32_t swapBytes(std::uint32_t n) {
  if constexpr (std::endian::native == std::endian::big) return n;
  return (n << 24) | ((n & 0xFF00U) << 8) | ((n >> 8) & 0xFF00U) | (n >> 24);
}
template <class T>
std::uint32_t toFile(T number) {
  return swapBytes(std::bit_cast<std::uint32_t>(number));
}
template <class T>
T fromFile(T number) {
  return std::bit_cast<T>(toFile(number));
}

// Strings are padded to whole words.
constexpr std::size_t padding(std::size_t length) { return (4 - length % 4) % 4; }

void writeBytes(SoOutput* out, const void* bytes, std::size_t num) {
  out->writeBinaryArray(static_cast<const unsigned char*>(bytes), static_cast<int>(num));
}
bool readBytes(SoInput* in, void* bytes, std::size_t num) {
  return num == 0 || in->readBinaryArray(static_cast<unsigned char*>(bytes), static_cast<int>(num));
}

}  // namespace

template <class T>
void PiBinaryMeshWriter::write(std::size_t num, const T* numbers) {
  std::array<std::uint32_t, 4096> chunk;
  while (num > 0) {
    const std::size_t numOfChunk = std::min(num, chunk.size());
    std::transform(numbers, numbers + numOfChunk, chunk.begin(), &toFile<T>);
    writeBytes(m_out, chunk.data(), numOfChunk * sizeof(chunk[0]));
    numbers += numOfChunk;
    num -= numOfChunk;
  }
}

template void PiBinaryMeshWriter::write(std::size_t, const float*);
template void PiBinaryMeshWriter::write(std::size_t, const int*);

void PiBinaryMeshWriter::write(std::string_view string) {
  const int length = static_cast<int>(string.size());
  write(1, &length);
  writeBytes(m_out, string.data(), string.size());
  writeBytes(m_out, "\0\0\0", padding(string.size()));
}

void PiBinaryMeshWriter::openSet(const std::string&, PbMesh::DataBinding binding, const SbString& name) {
  std::string string(name.getString());
  if (binding == PbMesh::PER_CELL) string += kPerCellMark;
  write(string);
}

void PiBinaryMeshWriter::strings(std::size_t num, const SbString* strings) {
  for (std::size_t i = 0; i < num; ++i)
    write(std::string_view(strings[i].getString(), static_cast<std::size_t>(strings[i].getLength())));
}

template <class T>
bool PiBinaryMeshReader::read(T& number) {
  if (!readBytes(m_in, &number, sizeof(T))) return false;
  number = fromFile(number);
  return true;
}

template bool PiBinaryMeshReader::read(float&);
template bool PiBinaryMeshReader::read(int&);

template <class T>
bool PiBinaryMeshReader::read(std::size_t num, std::vector<T>& numbers) {
  while (num > 0) {
    const std::size_t numOfChunk = std::min(num, kBinaryChunk);
    const std::size_t first = numbers.size();
    numbers.resize(first + numOfChunk);
    T* const chunk = numbers.data() + first;
    if (!readBytes(m_in, chunk, numOfChunk * sizeof(T))) return false;
    std::transform(chunk, chunk + numOfChunk, chunk, &fromFile<T>);
    num -= numOfChunk;
  }
  return true;
}

template bool PiBinaryMeshReader::read(std::size_t, std::vector<float>&);
template bool PiBinaryMeshReader::read(std::size_t, std::vector<int>&);

bool PiBinaryMeshReader::read(std::string& string) {
  int length;
  if (!read(length) || length < 0) return false;
  string.clear();
  for (std::size_t left = static_cast<std::size_t>(length) + padding(static_cast<std::size_t>(length)); left > 0;) {
    const std::size_t numOfChunk = std::min(left, kBinaryChunk);
    string.resize(string.size() + numOfChunk);
    if (!readBytes(m_in, string.data() + string.size() - numOfChunk, numOfChunk)) return false;
    left -= numOfChunk;
  }
  string.resize(static_cast<std::size_t>(length));
  return true;
}

bool PiBinaryMeshReader::openSet(PbMesh::DataBinding& binding, SbString& name) {
  std::string string;
  if (!read(string)) return false;
  name = string.c_str();
  const std::string_view rest = std::string_view(string).substr(static_cast<std::size_t>(name.getLength()));
  binding = rest == kPerCellMark ? PbMesh::PER_CELL : PbMesh::PER_NODE;
  return true;
}

bool PiBinaryMeshReader::strings(std::size_t num, std::vector<SbString>& strings) {
  PiStringList list;
  std::string string;
  for (std::size_t i = 0; i < num; ++i) {
    if (!read(string)) return false;
    list.add(string);
  }
  strings = list.get<SbString>(num);
  return true;
}
