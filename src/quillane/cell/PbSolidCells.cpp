// The solids that are located by iteration: hexahedron, wedge, pyramid.

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbWedgeCell.h>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

const int (&PbHexahedronCell::c_edgeNodes)[12][2] = PiTopology::kHexahedronEdges;

PbHexahedronCell::PbHexahedronCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kHexahedron) {}

int PbHexahedronCell::set(int index, const int* nodes, const float* x, const float* y, const float* z) {
  setNodes(index, nodes, x, y, z);
  return 1;
}

int PbHexahedronCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locateByNewton<PiHexahedronShape>(m_nodes, point, tolerance, pcoord) == PiPlace::INSIDE;
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
  return locateByNewton<PiWedgeShape>(m_nodes, point, tolerance, pcoord) == PiPlace::INSIDE;
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
  return locateByNewton<PiPyramidShape>(m_nodes, point, tolerance, pcoord) == PiPlace::INSIDE;
}

void PbPyramidCell::getWeight(const SbVec3f& pcoord, float* weights) const { PiPyramidShape::weights(pcoord, weights); }

void PbPyramidCell::getDerivs(const SbVec3f& pcoord, float* derivs) const { PiPyramidShape::derivs(pcoord, derivs); }
