#ifndef ORMELLE_PISECTIONVALUES_H
#define ORMELLE_PISECTIONVALUES_H

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilter.h>

#include "quillane/surface/PiMeshSection.h"

/// The values that a section is coloured with, as a rebuild finds them.
struct PiSectionValues {
  const float* ofNodes = nullptr;
  const float* ofCells = nullptr;

  /// Of the set `index` of the mesh; neither if it has too few values for what it is bound to.
  PiSectionValues(const PbMesh3D& mesh, int index) {
    if (index < 0) return;
    const float* values = mesh.getValuesSet(index);
    const bool arePerCell = mesh.getValuesBinding(index) == PbMesh::PER_CELL;
    if (!values || mesh.getNumValues(index) < (arePerCell ? mesh.getNumCells() : mesh.getNumNodes())) return;
    (arePerCell ? ofCells : ofNodes) = values;
  }
  bool areThere() const { return ofNodes || ofCells; }
};

/// The section of the cells that a filter, if there is one, accepts when it is asked with the set of values
/// `filterIndex`.
inline PiSectionRequest sectionRequest(const PiSectionPlane& plane, const float* values, const PbMesh3D& mesh,
                                       const PoCellFilter* filter, int filterIndex) {
  PiSectionRequest request{plane, values};
  if (!filter) return request;
  const float* filterValues = filterIndex < 0 ? nullptr : mesh.getValuesSet(filterIndex);
  const int numValues = filterValues ? mesh.getNumValues(filterIndex) : 0;
  request.accepts = [filter, filterValues, numValues](int cell) {
    return filter->acceptCell(cell, cell < numValues ? filterValues[cell] : 0.0F) != 0;
  };
  return request;
}

#endif
