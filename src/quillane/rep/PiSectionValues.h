#ifndef ORMELLE_PISECTIONVALUES_H
#define ORMELLE_PISECTIONVALUES_H

#include <Ormelle/PbMesh3D.h>

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

#endif
