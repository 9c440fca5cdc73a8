#include <Ormelle/PbTetrahedronCell.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

const int (&PbTetrahedronCell::c_edgeNodes)[6][2] = PiTopology::kTetrahedronEdges;

PbTetrahedronCell::PbTetrahedronCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kTetrahedron) {}

int PbTetrahedronCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  m_isInverseComputed = m_isInvertible = false;
  return 1;
}

void PbTetrahedronCell::computeInverse() const {
  m_isInverseComputed = true;
  m_isInvertible = false;
  SbVec3f edges[3];
  float extent = 0.0f;
  for (int edge = 0; edge < 3; ++edge) {
    edges[edge] = m_nodes[edge + 1] - m_nodes[0];
    extent = std::max(extent, maxAbs(edges[edge]));
  }
  const float scale = scaleToUnit(extent);
  for (SbVec3f& edge : edges) edge *= scale;
  const float det = edges[0].dot(edges[1].cross(edges[2]));
  if (det == 0.0f || !std::isfinite(det)) return;
  for (int row = 0; row < 3; ++row) {
    const SbVec3f cofactors = edges[(row + 1) % 3].cross(edges[(row + 2) % 3]);
    m_origin[row] = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
      m_inverse[row][axis] = cofactors[axis] / det * scale;
      m_origin[row] -= double(m_inverse[row][axis]) * double(m_nodes[0][axis]);
    }
  }
  m_isInvertible = true;
}

int PbTetrahedronCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  if (!m_isInverseComputed) computeInverse();
  if (!m_isInvertible) return 0;
  for (int row = 0; row < 3; ++row) {
    double sum = m_origin[row];
    for (int axis = 0; axis < 3; ++axis) sum += double(m_inverse[row][axis]) * double(point[axis]);
    pcoord[row] = static_cast<float>(sum);
  }
  return PiTetrahedronShape::isInside(pcoord, tolerance);
}

void PbTetrahedronCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiTetrahedronShape::weights(pcoord, weights);
}
