#include "quillane/mesh/PbMeshDataSet.h"

#include <cmath>

// The part of PbMesh that deals with data sets.

unsigned int PbMesh::sm_nextFltDataId = 1;
unsigned int PbMesh::sm_nextVecDataId = 1;
unsigned int PbMesh::sm_nextStrDataId = 1;

namespace {

constexpr unsigned int kUnknownId = 0xFFFFFFFFU;

// The new data id is left to the caller: each kind counts its own.
template <class T>
PbMeshDataSet<T>& store(PiMeshDataSetMap<T>& sets, int index, const T* data, int num, PbMesh::DataBinding binding,
                        const SbString& name, int isDuplicated) {
  PbMeshDataSet<T>& set = sets.get(index, isDuplicated);
  set.data.set(data, num, set.isDuplicated);
  if (&set.name != &name) set.name = name;
  set.binding = binding == PbMesh::PER_NODE ? PbMesh::PER_NODE : PbMesh::PER_CELL;
  return set;
}

template <class T>
const SbString* nameOf(const PbMeshDataSet<T>* set) {
  return set ? &set->name : nullptr;
}
template <class T>
const T* dataOf(const PbMeshDataSet<T>* set) {
  return set ? set->data.get() : nullptr;
}
template <class T>
PbMesh::DataBinding bindingOf(const PbMeshDataSet<T>* set) {
  return set ? set->binding : PbMesh::PER_NODE;
}

float measure(float value) { return value; }
// In double, where the square of no float overflows.
float measure(const SbVec3f& v) {
  const double x = v[0], y = v[1], z = v[2];
  return static_cast<float>(std::sqrt(x * x + y * y + z * z));
}

// The element that `isBetter` than all others, measured; NaN is skipped.
template <class T, class IsBetter>
int findExtreme(const PbMeshDataSet<T>* set, float& extreme, IsBetter isBetter) {
  if (!set) return 0;
  bool isFound = false;
  float best = 0;
  for (int i = 0; i < set->data.getNum(); ++i) {
    const float value = measure(set->data[i]);
    if (std::isnan(value) || (isFound && !isBetter(value, best))) continue;
    best = value;
    isFound = true;
  }
  if (isFound) extreme = best;
  return isFound;
}

constexpr auto kIsLess = [](float a, float b) { return a < b; };
constexpr auto kIsGreater = [](float a, float b) { return a > b; };

}  // namespace

void PbMesh::addValuesSet(int set_index, const float* val, const SbString& set_name) {
  addValuesSet(set_index, val, PER_NODE, set_name);
}

void PbMesh::addValuesSet(int set_index, const float* val, DataBinding binding, const SbString& set_name) {
  const int num = binding == PER_NODE ? m_numMeshNodes : m_numMeshCells;
  updateFltDataId(store(m_dataSets->values, set_index, val, num, binding, set_name, m_isDataDuplicate).dataId);
  setChangeType(MESH_VALUES_CHANGE);
  notifyChange();
}

void PbMesh::addStringsSet(int set_index, const SbString* val, const SbString& set_name) {
  updateStrDataId(
      store(m_dataSets->strings, set_index, val, m_numMeshNodes, PER_NODE, set_name, m_isDataDuplicate).dataId);
  setChangeType(MESH_STRINGS_CHANGE);
  notifyChange();
}

void PbMesh::addVecsSet(int set_index, const SbVec3f* val, const SbString& set_name) {
  addVecsSet(set_index, val, PER_NODE, set_name);
}

void PbMesh::addVecsSet(int set_index, const SbVec3f* val, DataBinding binding, const SbString& set_name) {
  const int num = binding == PER_NODE ? m_numMeshNodes : m_numMeshCells;
  updateVecDataId(store(m_dataSets->vecs, set_index, val, num, binding, set_name, m_isDataDuplicate).dataId);
  setChangeType(MESH_VECS_CHANGE);
  notifyChange();
}

void PbMesh::addCopiedVecsSet(int set_index, const SbVec3f* val, const SbString& set_name) {
  m_dataSets->vecs.get(set_index, 1).isDuplicated = 1;
  addVecsSet(set_index, val, PER_NODE, set_name);
}

const SbString* PbMesh::getValuesSetName(int set_index) const { return nameOf(m_dataSets->values.find(set_index)); }
const SbString* PbMesh::getStringsSetName(int set_index) const { return nameOf(m_dataSets->strings.find(set_index)); }
const SbString* PbMesh::getVecsSetName(int set_index) const { return nameOf(m_dataSets->vecs.find(set_index)); }

const float* PbMesh::getValuesSet(int set_index) const { return dataOf(m_dataSets->values.find(set_index)); }
const SbString* PbMesh::getStringsSet(int set_index) const { return dataOf(m_dataSets->strings.find(set_index)); }
const SbVec3f* PbMesh::getVecsSet(int set_index) const { return dataOf(m_dataSets->vecs.find(set_index)); }

int PbMesh::removeValuesSet(int set_index) {
  const int isRemoved = m_dataSets->values.remove(set_index);
  setChangeType(MESH_VALUES_CHANGE);
  notifyChange();
  return isRemoved;
}

int PbMesh::removeStringsSet(int set_index) {
  const int isRemoved = m_dataSets->strings.remove(set_index);
  setChangeType(MESH_STRINGS_CHANGE);
  notifyChange();
  return isRemoved;
}

int PbMesh::removeVecsSet(int set_index) {
  const int isRemoved = m_dataSets->vecs.remove(set_index);
  setChangeType(MESH_VALUES_CHANGE);
  notifyChange();
  return isRemoved;
}

void PbMesh::removeAllValuesSet() {
  m_dataSets->values.removeAll();
  setChangeType(MESH_VALUES_CHANGE);
  notifyChange();
}

void PbMesh::removeAllStringsSet() {
  m_dataSets->strings.removeAll();
  setChangeType(MESH_STRINGS_CHANGE);
  notifyChange();
}

void PbMesh::removeAllVecsSet() {
  m_dataSets->vecs.removeAll();
  setChangeType(MESH_VALUES_CHANGE);
  notifyChange();
}

int PbMesh::getNumValuesSet() const { return m_dataSets->values.getNum(); }
int PbMesh::getNumStringsSet() const { return m_dataSets->strings.getNum(); }
int PbMesh::getNumVecsSet() const { return m_dataSets->vecs.getNum(); }

int PbMesh::getMinValuesSet(int set_index, float& min) const {
  return findExtreme(m_dataSets->values.find(set_index), min, kIsLess);
}
int PbMesh::getMinVecsSet(int set_index, float& min) const {
  return findExtreme(m_dataSets->vecs.find(set_index), min, kIsLess);
}
int PbMesh::getMaxValuesSet(int set_index, float& max) const {
  return findExtreme(m_dataSets->values.find(set_index), max, kIsGreater);
}
int PbMesh::getMaxVecsSet(int set_index, float& max) const {
  return findExtreme(m_dataSets->vecs.find(set_index), max, kIsGreater);
}

PbMesh::DataBinding PbMesh::getValuesBinding(int set_index) const {
  return bindingOf(m_dataSets->values.find(set_index));
}
PbMesh::DataBinding PbMesh::getVecsBinding(int set_index) const { return bindingOf(m_dataSets->vecs.find(set_index)); }

int PbMesh::getNumValues(int set_index) const {
  const auto* set = m_dataSets->values.find(set_index);
  return set ? set->data.getNum() : 0;
}

unsigned int PbMesh::getFltDataSetId(int set_index) const {
  const auto* set = m_dataSets->values.find(set_index);
  return set ? set->dataId : kUnknownId;
}
unsigned int PbMesh::getVecDataSetId(int set_index) const {
  const auto* set = m_dataSets->vecs.find(set_index);
  return set ? set->dataId : kUnknownId;
}
