#ifndef ORMELLE_PIMESHCOMPARER_H
#define ORMELLE_PIMESHCOMPARER_H

#include <Inventor/SbString.h>
#include <Ormelle/PbMesh.h>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "nodes/field/PiMeshGeometry.h"

/// Takes a mesh as a writer does, but only to compare it with another. The mesh must not change meanwhile.
class PiMeshComparer {
 public:
  template <class... Number>
  bool line(const char*, const Number&... numbers) {
    (m_small.append(reinterpret_cast<const char*>(&numbers), sizeof(numbers)), ...);
    return true;
  }
  template <class T>
  bool block(const char*, std::size_t num, const PiMeshBlock<T>& block) {
    numbers(num, block.get());
    return true;
  }
  void openSet(const std::string& comment, PbMesh::DataBinding, const SbString& name) {
    m_small.append(comment).append(name.getString()) += '\0';
  }
  template <class T>
  void numbers(std::size_t num, const T* numbers) {
    if (num > 0) m_arrays.emplace_back(reinterpret_cast<const char*>(numbers), num * sizeof(T));
  }
  void strings(std::size_t num, const SbString* strings) {
    for (std::size_t i = 0; i < num; ++i) m_small.append(strings[i].getString()) += '\0';
  }

  /// Bit by bit, so that NaN equals itself.
  bool operator==(const PiMeshComparer&) const = default;

 private:
  std::string m_small;
  std::vector<std::string_view> m_arrays;
};

#endif
