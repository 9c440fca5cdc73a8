#include <Ormelle/PbQuadrangleCell.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

const int (&PbQuadrangleCell::c_edgeNodes)[4][2] = PiTopology::kQuadrangleEdges;

PbQuadrangleCell::PbQuadrangleCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kQuadrangle) {}

int PbQuadrangleCell::set(int index, const int* nodes, const float* x, const float* y) {
  return set(index, nodes, x, y, nullptr);
}

int PbQuadrangleCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  computeNormal();
  return 1;
}

int PbQuadrangleCell::set(int index, const int* nodes, float xmin, float ymin, float xmax, float ymax, const float* z) {
  setTopology(index, nodes);
  const float x[4] = {xmin, xmax, xmax, xmin}, y[4] = {ymin, ymin, ymax, ymax};
  for (int node = 0; node < 4; ++node) m_nodes[node].setValue(x[node], y[node], z ? z[nodes[node]] : 0.0f);
  computeNormal();
  return 1;
}

// The normal of the mean plane is that of the two diagonals.
void PbQuadrangleCell::computeNormal() {
  m_isFlat = true;
  for (int node = 1; node < 4; ++node) m_isFlat = m_isFlat && m_nodes[node][2] == m_nodes[0][2];
  const SbVec3f diagonals[2] = {m_nodes[2] - m_nodes[0], m_nodes[3] - m_nodes[1]};
  const float scale = scaleToUnit(std::max(maxAbs(diagonals[0]), maxAbs(diagonals[1])));
  m_normal = (diagonals[0] * scale).cross(diagonals[1] * scale);
  m_normal.normalize();
}

int PbQuadrangleCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  SbVec3f fromPoint[4];
  for (int node = 0; node < 4; ++node) fromPoint[node] = m_nodes[node] - point;
  if (m_isFlat) return locateByNewton<PiQuadrangleShape>(fromPoint, tolerance, pcoord);
  if (maxAbs(m_normal) == 0.0f) return 0;

  const SbVec3f center = (fromPoint[0] + fromPoint[1] + fromPoint[2] + fromPoint[3]) * 0.25f;
  const float maxDistance = ((m_nodes[2] - m_nodes[0]).length() + (m_nodes[3] - m_nodes[1]).length()) * 0.5f / 3.0f;
  // Point and nodes go along the normal onto one plane. The nodes of a warped cell must go, too: only then does the
  // image of a point of the cell have the pcoord of that point.
  const auto [axis0, axis1] = remainingAxes(dominantAxis(m_normal));
  for (SbVec3f& node : fromPoint) {
    const SbVec3f projected = node - m_normal * node.dot(m_normal);
    node.setValue(projected[axis0], projected[axis1], 0.0f);
  }
  if (!locateByNewton<PiQuadrangleShape>(fromPoint, tolerance, pcoord)) return 0;
  return std::fabs(center.dot(m_normal)) < maxDistance;
}

void PbQuadrangleCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiQuadrangleShape::weights(pcoord, weights);
}

void PbQuadrangleCell::getDerivs(const SbVec3f& pcoord, float* derivs) const {
  PiQuadrangleShape::derivs(pcoord, derivs);
}
