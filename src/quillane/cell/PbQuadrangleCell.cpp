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
  return 1;
}

int PbQuadrangleCell::set(int index, const int* nodes, float xmin, float ymin, float xmax, float ymax, const float* z) {
  setTopology(index, nodes);
  const float x[4] = {xmin, xmax, xmax, xmin}, y[4] = {ymin, ymin, ymax, ymax};
  for (int node = 0; node < 4; ++node) m_nodes[node].setValue(x[node], y[node], z ? z[nodes[node]] : 0.0f);
  return 1;
}

int PbQuadrangleCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locateInQuadrangle(m_nodes, point, tolerance, pcoord) == PiPlace::INSIDE;
}

void PbQuadrangleCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiQuadrangleShape::weights(pcoord, weights);
}

void PbQuadrangleCell::getDerivs(const SbVec3f& pcoord, float* derivs) const {
  PiQuadrangleShape::derivs(pcoord, derivs);
}
