// The solids that are located by iteration: hexahedron, wedge, pyramid.

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbWedgeCell.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

namespace {

template <class Shape>
int locate(const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord) {
  SbVec3f fromPoint[Shape::numNodes];
  for (int node = 0; node < Shape::numNodes; ++node) fromPoint[node] = nodes[node] - point;
  return locateByNewton<Shape>(fromPoint, tolerance, pcoord);
}

}  // namespace

const int (&PbHexahedronCell::c_edgeNodes)[12][2] = PiTopology::kHexahedronEdges;

PbHexahedronCell::PbHexahedronCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kHexahedron) {}

int PbHexahedronCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  return 1;
}

int PbHexahedronCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locate<PiHexahedronShape>(m_nodes, point, tolerance, pcoord);
}

void PbHexahedronCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiHexahedronShape::weights(pcoord, weights);
}

void PbHexahedronCell::getDerivs(const SbVec3f& pcoord, float* derivs) const {
  PiHexahedronShape::derivs(pcoord, derivs);
}

const int (&PbWedgeCell::c_edgeNodes)[9][2] = PiTopology::kWedgeEdges;

PbWedgeCell::PbWedgeCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kWedge) {}

int PbWedgeCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  return 1;
}

int PbWedgeCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locate<PiWedgeShape>(m_nodes, point, tolerance, pcoord);
}

void PbWedgeCell::getWeight(const SbVec3f& pcoord, float* weights) const { PiWedgeShape::weights(pcoord, weights); }

void PbWedgeCell::getDerivs(const SbVec3f& pcoord, float* derivs) const { PiWedgeShape::derivs(pcoord, derivs); }

const int (&PbPyramidCell::c_edgeNodes)[8][2] = PiTopology::kPyramidEdges;

PbPyramidCell::PbPyramidCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kPyramid) {}

int PbPyramidCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  return 1;
}

int PbPyramidCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  if (locate<PiPyramidShape>(m_nodes, point, tolerance, pcoord)) return 1;
  // At the apex all u and v are one point, so the Jacobian is singular there and the iteration fails.
  const SbVec3f& apex = m_nodes[4];
  float extent = 0.0f;
  for (int node = 0; node < 4; ++node) extent = std::max(extent, maxAbs(m_nodes[node] - apex));
  if (!(maxAbs(point - apex) <= kInversionError * extent) || getVolume() == 0.0f) return 0;
  pcoord.setValue(0.5f, 0.5f, 1.0f);
  return PiPyramidShape::isInside(pcoord, tolerance);
}

void PbPyramidCell::getWeight(const SbVec3f& pcoord, float* weights) const { PiPyramidShape::weights(pcoord, weights); }

void PbPyramidCell::getDerivs(const SbVec3f& pcoord, float* derivs) const { PiPyramidShape::derivs(pcoord, derivs); }
