#include <Ormelle/PbTetrahedronCell.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

const int (&PbTetrahedronCell::c_edgeNodes)[6][2] = PiTopology::kTetrahedronEdges;

PbTetrahedronCell::PbTetrahedronCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kTetrahedron) {}

int PbTetrahedronCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  return 1;
}

int PbTetrahedronCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locateInTetrahedron(m_nodes, point, tolerance, pcoord) == PiPlace::INSIDE;
}

void PbTetrahedronCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiTetrahedronShape::weights(pcoord, weights);
}
