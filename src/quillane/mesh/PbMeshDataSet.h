#ifndef ORMELLE_PBMESHDATASET_H
#define ORMELLE_PBMESHDATASET_H

#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PbMeshArray.h>

#include <map>

/// One data set of a mesh: its elements, and what the mesh tells about them.
template <class T>
struct PbMeshDataSet {
  SbString name;
  unsigned int dataId = 0;
  PbMesh::DataBinding binding = PbMesh::PER_NODE;
  int isDuplicated = 0;
  PbMeshArray<T> data;
};

/// The data sets of one kind, by rising index.
template <class T>
class PiMeshDataSetMap {
 public:
  using Map = std::map<int, PbMeshDataSet<T>>;

  const PbMeshDataSet<T>* find(int index) const {
    const auto found = m_sets.find(index);
    return found == m_sets.end() ? nullptr : &found->second;
  }
  /// The set with this index; a new one copies what it is given if `isDuplicated`.
  PbMeshDataSet<T>& get(int index, int isDuplicated) {
    const auto [place, isNew] = m_sets.try_emplace(index);
    if (isNew) place->second.isDuplicated = isDuplicated;
    return place->second;
  }
  int remove(int index) { return static_cast<int>(m_sets.erase(index)); }
  void removeAll() { m_sets.clear(); }
  void removeDuplicated() {
    std::erase_if(m_sets, [](const auto& entry) { return entry.second.isDuplicated != 0; });
  }
  int getNum() const { return static_cast<int>(m_sets.size()); }
  typename Map::const_iterator begin() const { return m_sets.begin(); }
  typename Map::const_iterator end() const { return m_sets.end(); }

 private:
  Map m_sets;
};

/// All data sets of a mesh.
struct PiMeshDataSets {
  static const PiMeshDataSets& of(const PbMesh& mesh) { return *mesh.m_dataSets; }

  PiMeshDataSetMap<float> values;
  PiMeshDataSetMap<SbString> strings;
  PiMeshDataSetMap<SbVec3f> vecs;
};

#endif
