#ifndef ORMELLE_PIMESHDATAPART_H
#define ORMELLE_PIMESHDATAPART_H

#include <string>
#include <vector>

#include "quillane/mesh/PbMeshDataSet.h"

/// The data sets of a mesh in a file, which come behind the geometry and are the same for all mesh classes.
class PiMeshDataPart {
 public:
  template <class Writer>
  static void write(Writer& out, const PbMesh& mesh) {
    const PiMeshDataSets& sets = PiMeshDataSets::of(mesh);
    const auto strings = listWhole(sets.strings, mesh);
    const auto values = listWhole(sets.values, mesh);
    const auto vecs = listWhole(sets.vecs, mesh);
    out.line("number of string data-set", static_cast<int>(strings.size()));
    out.line("number of scalar data-set", static_cast<int>(values.size()));
    out.line("number of vector data-set", static_cast<int>(vecs.size()));
    for (int i = 0; const auto* set : values) {
      const char* binding = set->binding == PbMesh::PER_NODE ? ", binding per node" : ", binding per cell";
      out.openSet("set of scalars, index " + std::to_string(i++) + binding, set->binding, set->name);
      out.numbers(count(*set), set->data.get());
    }
    for (int i = 0; const auto* set : strings) {
      out.openSet("set of strings, index " + std::to_string(i++), set->binding, set->name);
      out.strings(count(*set), set->data.get());
    }
    for (int i = 0; const auto* set : vecs) {
      const char* binding = set->binding == PbMesh::PER_NODE ? "" : ", binding per cell";
      out.openSet("set of vectors, index " + std::to_string(i++) + binding, set->binding, set->name);
      out.numbers(3 * count(*set), reinterpret_cast<const float*>(set->data.get()));
    }
  }

  /// Adds the sets to a mesh that has its geometry already, and none else. Returns false if they cannot be read.
  template <class Reader>
  static bool read(Reader& in, PbMesh& mesh) {
    int numStrings = 0, numValues = 0, numVecs = 0;
    if (!in.countSets(numStrings, numValues, numVecs)) return false;
    if (numStrings < 0 || numValues < 0 || numVecs < 0) return false;
    SbString name;
    PbMesh::DataBinding binding;
    for (int i = 0; i < numValues; ++i) {
      std::vector<float> values;
      if (!in.openSet(binding, name) || !in.numbers(count(mesh, binding), values)) return false;
      mesh.addValuesSet(i, values.data(), binding, name);
    }
    for (int i = 0; i < numStrings; ++i) {
      std::vector<SbString> strings;
      if (!in.openSet(binding, name) || !in.strings(count(mesh, PbMesh::PER_NODE), strings)) return false;
      mesh.addStringsSet(i, strings.data(), name);
    }
    for (int i = 0; i < numVecs; ++i) {
      std::vector<float> vecs;
      if (!in.openSet(binding, name) || !in.numbers(3 * count(mesh, binding), vecs)) return false;
      mesh.addVecsSet(i, reinterpret_cast<const SbVec3f*>(vecs.data()), binding, name);
    }
    return true;
  }

 private:
  static_assert(sizeof(SbVec3f) == 3 * sizeof(float));

  static std::size_t count(const PbMesh& mesh, PbMesh::DataBinding binding) {
    return static_cast<std::size_t>(binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells());
  }
  template <class T>
  static std::size_t count(const PbMeshDataSet<T>& set) {
    return static_cast<std::size_t>(set.data.getNum());
  }
  /// The sets with as many elements as there are nodes or cells.
  template <class T>
  static std::vector<const PbMeshDataSet<T>*> listWhole(const PiMeshDataSetMap<T>& sets, const PbMesh& mesh) {
    std::vector<const PbMeshDataSet<T>*> whole;
    for (const auto& [index, set] : sets)
      if (count(set) == count(mesh, set.binding)) whole.push_back(&set);
    return whole;
  }
};

#endif
