#include <Ormelle/PbTriangleCell.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

const int (&PbTriangleCell::c_edgeNodes)[3][2] = PiTopology::kTriangleEdges;

PbTriangleCell::PbTriangleCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kTriangle) {}

int PbTriangleCell::set(int index, const int* nodes, const float* x, const float* y) {
  return set(index, nodes, x, y, nullptr);
}

int PbTriangleCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  return 1;
}

int PbTriangleCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locateInTriangle(m_nodes, point, tolerance, pcoord) == PiPlace::INSIDE;
}

void PbTriangleCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiTriangleShape::weights(pcoord, weights);
}
