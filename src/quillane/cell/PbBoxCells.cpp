// The cells whose edges are parallel to the axes: pixel and voxel.

#include <Ormelle/PbPixelCell.h>
#include <Ormelle/PbVoxelCell.h>

#include <cmath>

#include "quillane/cell/PiCellTopology.h"
#include "quillane/cell/PiLocate.h"
#include "quillane/cell/PiShapeFunctions.h"

namespace {

template <class Value>
Value bilinear(const SbVec3f& pcoord, const Value* values, const int* nodes) {
  const float u = pcoord[0], v = pcoord[1];
  const Value low = values[nodes[0]] * (1 - u) + values[nodes[1]] * u;
  const Value high = values[nodes[3]] * (1 - u) + values[nodes[2]] * u;
  return low * (1 - v) + high * v;
}

template <class Value>
Value trilinear(const SbVec3f& pcoord, const Value* values, const int* nodes) {
  return bilinear(pcoord, values, nodes) * (1 - pcoord[2]) + bilinear(pcoord, values, nodes + 4) * pcoord[2];
}

}  // namespace

const int (&PbPixelCell::c_edgeNodes)[4][2] = PiTopology::kQuadrangleEdges;

PbPixelCell::PbPixelCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kQuadrangle) {}

int PbPixelCell::set(int index, const int* nodes, float xmin, float ymin, float xmax, float ymax) {
  setTopology(index, nodes);
  m_origin.setValue(xmin, ymin, 0.0f);
  m_size.setValue(xmax - xmin, ymax - ymin, 0.0f);
  const float x[4] = {xmin, xmax, xmax, xmin}, y[4] = {ymin, ymin, ymax, ymax};
  for (int node = 0; node < 4; ++node) m_nodes[node].setValue(x[node], y[node], 0.0f);
  return 1;
}

float PbPixelCell::getArea() const { return areNodesFinite() ? std::fabs(m_size[0] * m_size[1]) : 0.0f; }

int PbPixelCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locateInBox(m_origin, m_size, 2, point, tolerance, pcoord) == PiPlace::INSIDE;
}

void PbPixelCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiQuadrangleShape::weights(pcoord, weights);
}

SbVec3f PbPixelCell::getValue(const SbVec3f& pcoord, const SbVec3f* values) const {
  return m_nodeIndices && values ? bilinear(pcoord, values, m_nodeIndices) : SbVec3f(0.0f, 0.0f, 0.0f);
}

float PbPixelCell::getValue(const SbVec3f& pcoord, const float* values) const {
  return m_nodeIndices && values ? bilinear(pcoord, values, m_nodeIndices) : 0.0f;
}

const int (&PbVoxelCell::c_edgeNodes)[12][2] = PiTopology::kHexahedronEdges;

PbVoxelCell::PbVoxelCell(const PbMesh* mesh) : PbCell(mesh, PiTopology::kHexahedron) {}

int PbVoxelCell::set(int index, const int* nodes, float xmin, float ymin, float zmin, float xmax, float ymax,
                     float zmax) {
  setTopology(index, nodes);
  m_origin.setValue(xmin, ymin, zmin);
  m_size.setValue(xmax - xmin, ymax - ymin, zmax - zmin);
  const float x[4] = {xmin, xmax, xmax, xmin}, y[4] = {ymin, ymin, ymax, ymax};
  for (int node = 0; node < 4; ++node) {
    m_nodes[node].setValue(x[node], y[node], zmin);
    m_nodes[node + 4].setValue(x[node], y[node], zmax);
  }
  return 1;
}

float PbVoxelCell::getVolume() const { return areNodesFinite() ? std::fabs(m_size[0] * m_size[1] * m_size[2]) : 0.0f; }

int PbVoxelCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
  return locateInBox(m_origin, m_size, 3, point, tolerance, pcoord) == PiPlace::INSIDE;
}

void PbVoxelCell::getWeight(const SbVec3f& pcoord, float* weights) const {
  PiHexahedronShape::weights(pcoord, weights);
}

SbVec3f PbVoxelCell::getValue(const SbVec3f& pcoord, const SbVec3f* values) const {
  return m_nodeIndices && values ? trilinear(pcoord, values, m_nodeIndices) : SbVec3f(0.0f, 0.0f, 0.0f);
}

float PbVoxelCell::getValue(const SbVec3f& pcoord, const float* values) const {
  return m_nodeIndices && values ? trilinear(pcoord, values, m_nodeIndices) : 0.0f;
}
