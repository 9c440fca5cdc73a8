#ifndef ORMELLE_PINODEVALUES_H
#define ORMELLE_PINODEVALUES_H

#include <Ormelle/PbMesh.h>

/// The set of values `index` of `mesh`, if it has one value for each node; else null.
inline const float* findNodeValues(const PbMesh& mesh, int index) {
  if (mesh.getValuesBinding(index) != PbMesh::PER_NODE) return nullptr;
  // None at all are stored where a mesh class of the application computes its values; such a class knows their number.
  const int num = mesh.getNumValues(index);
  return num > 0 && num < mesh.getNumNodes() ? nullptr : mesh.getValuesSet(index);
}

#endif
