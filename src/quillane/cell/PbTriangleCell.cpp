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
  m_isFlat = m_nodes[1][2] == m_nodes[0][2] && m_nodes[2][2] == m_nodes[0][2];
  computeInverse();
  return 1;
}

void PbTriangleCell::computeInverse() {
  m_isInvertible = false;
  SbVec3f edges[2] = {m_nodes[1] - m_nodes[0], m_nodes[2] - m_nodes[0]};
  const float scale = scaleToUnit(std::max(maxAbs(edges[0]), maxAbs(edges[1])));
  for (SbVec3f& edge : edges) edge *= scale;
  m_normal = edges[0].cross(edges[1]);
  const int dropped = dominantAxis(m_normal);
  const auto [axis0, axis1] = remainingAxes(dropped);
  const float det = edges[0][axis0] * edges[1][axis1] - edges[0][axis1] * edges[1][axis0];
  if (det == 0.0f || !std::isfinite(det)) return;
  m_inverse[0][0] = edges[1][axis1] / det * scale;
  m_inverse[0][1] = -edges[1][axis0] / det * scale;
  m_inverse[1][0] = -edges[0][axis1] / det * scale;
  m_inverse[1][1] = edges[0][axis0] / det * scale;
  m_axes[0] = axis0;
  m_axes[1] = axis1;
  m_normal.normalize();
  m_maxDistance = (edges[0].length() + edges[1].length() + (edges[1] - edges[0]).length()) / 9.0f / scale;
  m_isInvertible = true;
}

int PbTriangleCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  if (!m_isInvertible) return 0;
  const SbVec3f offset = point - m_nodes[0];
  for (int row = 0; row < 2; ++row)
    pcoord[row] = m_inverse[row][0] * offset[m_axes[0]] + m_inverse[row][1] * offset[m_axes[1]];
  pcoord[2] = 0.0f;
  if (!PiTriangleShape::isInside(pcoord, tolerance)) return 0;
  return m_isFlat || std::fabs(offset.dot(m_normal)) < m_maxDistance;
}

void PbTriangleCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiTriangleShape::weights(pcoord, weights);
}
