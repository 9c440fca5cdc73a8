#include "quillane/cell/PiPlainCell.h"

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

namespace {

const PiCellTopology* topologyOf(PiPlainCell::Kind kind) {
  switch (kind) {
    case PiPlainCell::TRIANGLE:
      return &PiTopology::kTriangle;
    case PiPlainCell::QUADRANGLE:
    case PiPlainCell::PIXEL:
      return &PiTopology::kQuadrangle;
    case PiPlainCell::TETRAHEDRON:
      return &PiTopology::kTetrahedron;
    case PiPlainCell::PYRAMID:
      return &PiTopology::kPyramid;
    case PiPlainCell::WEDGE:
      return &PiTopology::kWedge;
    case PiPlainCell::HEXAHEDRON:
    case PiPlainCell::VOXEL:
      return &PiTopology::kHexahedron;
    case PiPlainCell::NONE:
      break;
  }
  return nullptr;
}

PiPlace locateIn(PiPlainCell::Kind kind, const SbVec3f* nodes, const SbVec3f& point, float tolerance, SbVec3f& pcoord) {
  switch (kind) {
    case PiPlainCell::TRIANGLE:
      return locateInTriangle(nodes, point, tolerance, pcoord);
    case PiPlainCell::QUADRANGLE:
      return locateInQuadrangle(nodes, point, tolerance, pcoord);
    case PiPlainCell::PIXEL:
      return locateInBox(nodes[0], nodes[2] - nodes[0], 2, point, tolerance, pcoord);
    case PiPlainCell::TETRAHEDRON:
      return locateInTetrahedron(nodes, point, tolerance, pcoord);
    case PiPlainCell::PYRAMID:
      return locateByNewton<PiPyramidShape>(nodes, point, tolerance, pcoord);
    case PiPlainCell::WEDGE:
      return locateByNewton<PiWedgeShape>(nodes, point, tolerance, pcoord);
    case PiPlainCell::HEXAHEDRON:
      return locateByNewton<PiHexahedronShape>(nodes, point, tolerance, pcoord);
    case PiPlainCell::VOXEL:
      return locateInBox(nodes[0], nodes[6] - nodes[0], 3, point, tolerance, pcoord);
    case PiPlainCell::NONE:
      break;
  }
  return PiPlace::UNKNOWN;
}

}  // namespace

PiPlainCell::Kind PiPlainCell::kindOf(int dimension, int numNodes) {
  if (dimension == 2) return numNodes == 3 ? TRIANGLE : numNodes == 4 ? QUADRANGLE : NONE;
  switch (numNodes) {
    case 4:
      return TETRAHEDRON;
    case 5:
      return PYRAMID;
    case 6:
      return WEDGE;
    case 8:
      return HEXAHEDRON;
    default:
      return NONE;
  }
}

void PiPlainCell::reset(Kind kind, int index) {
  const PiCellTopology* topology = topologyOf(kind);
  m_kind = kind;
  m_index = topology ? index : -1;
  m_numNodes = topology ? topology->numNodes : 0;
}

bool PiPlainCell::locate(const SbVec3f& point, float tolerance, SbVec3f& pcoord, bool* isKnown) const {
  const PiPlace place = locateIn(m_kind, m_points, point, tolerance, pcoord);
  if (isKnown) *isKnown = place != PiPlace::UNKNOWN;
  return place == PiPlace::INSIDE;
}

void PiPlainCell::weights(const SbVec3f& pcoord, float* weights) const {
  switch (m_kind) {
    case TRIANGLE:
      return PiTriangleShape::weights(pcoord, weights);
    case QUADRANGLE:
    case PIXEL:
      return PiQuadrangleShape::weights(pcoord, weights);
    case TETRAHEDRON:
      return PiTetrahedronShape::weights(pcoord, weights);
    case PYRAMID:
      return PiPyramidShape::weights(pcoord, weights);
    case WEDGE:
      return PiWedgeShape::weights(pcoord, weights);
    case HEXAHEDRON:
    case VOXEL:
      return PiHexahedronShape::weights(pcoord, weights);
    case NONE:
      break;
  }
}

float PiPlainCell::longestEdge() const {
  const PiCellTopology* topology = topologyOf(m_kind);
  return topology ? longestEdgeOf(topology->edges, m_points) : 0.0F;
}
