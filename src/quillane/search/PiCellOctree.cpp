#include "quillane/search/PiCellOctree.h"

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// How far a cell reaches beyond its nodes, as a share of its extent, when parametric coordinates may leave [0, 1] by
// `t`: the weights of a hexahedron, of which none is larger than those of the other kinds, then sum to (1 + 2 t)^3 in
// absolute value, and half of what exceeds 1 pulls beyond.
double reachOf(double t) { return 3 * t + 6 * t * t + 4 * t * t * t; }

}  // namespace

void PiCellOctree::update(const PbMesh& mesh, float tolerance, const void* coordsKey) {
  // Beyond the limit nothing is left out any more, and infinity would make boxes of no number.
  const double wanted = tolerance > 0 ? std::min<double>(tolerance, 1e6) : 0;
  const bool isSameMesh = m_isBuilt && m_geometryId == mesh.getGeometryId() && m_coordsKey == coordsKey;
  if (isSameMesh && wanted <= m_tolerance) return;

  m_tolerance = isSameMesh ? std::max(wanted, 2 * m_tolerance) : wanted;
  m_geometryId = mesh.getGeometryId();
  m_coordsKey = coordsKey;
  m_isBuilt = true;

  const SbBox3f box = mesh.getBoundingBox();
  for (int a = 0; a < 3; ++a) {
    const double min = box.getMin()[a], max = box.getMax()[a];
    const double center = (min + max) / 2, half = (max - min) * 0.505;
    m_domain.min[a] = center - half;
    m_domain.max[a] = center + half;
  }
  m_tree.build(m_domain, mesh.getNumCells(),
               [&](int index, PiBoxTree::Box& cellBox) { return boxOf(mesh, index, cellBox); });
}

bool PiCellOctree::boxOf(const PbMesh& mesh, int index, PiBoxTree::Box& box) const {
  const PbCell* cell = mesh.getCell(index);
  if (!cell || cell->getNumNodes() < 1) return false;
  SbVec3f min = cell->getNodeCoord(0), max = min;
  float sum = 0;  // becomes NaN when a coordinate isn't finite
  for (int n = 0; n < cell->getNumNodes(); ++n) {
    const SbVec3f node = cell->getNodeCoord(n);
    for (int a = 0; a < 3; ++a) {
      min[a] = std::min(min[a], node[a]);
      max[a] = std::max(max[a], node[a]);
      sum += node[a] * 0;
    }
  }
  if (!(sum == 0)) return false;

  double extent[3], all = 0, largest = 0;
  for (int a = 0; a < 3; ++a) {
    extent[a] = double(max[a]) - min[a];
    all += extent[a];
    largest = std::max({largest, std::fabs(double(min[a])), std::fabs(double(max[a]))});
  }
  // The inversion of a cell stops at steps below 0.001, which leaves second-order errors of the extent, and computes in
  // float, which leaves a few last bits of the coordinates.
  double margin = 1e-5 * all + 1e-6 * largest;
  // A cell of a surface in space accepts what lies above it by up to a third of its diagonal, and is extended as a
  // plane.
  const bool isInSpace = m_kind == SURFACE && extent[2] > 0;
  if (isInSpace) margin += 2 * all;
  for (int a = 0; a < 3; ++a) {
    const double reach = reachOf(m_tolerance) * (isInSpace ? all : extent[a]) + margin;
    box.min[a] = min[a] - reach;
    box.max[a] = max[a] + reach;
  }
  // A flat cell doesn't look at z.
  if (m_kind == SURFACE && !isInSpace) {
    box.min[2] = -std::numeric_limits<double>::infinity();
    box.max[2] = std::numeric_limits<double>::infinity();
  }
  return true;
}

const PbCell* PiCellOctree::find(const PbMesh& mesh, const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                 const PbArrayOfInt& excluded) const {
  const float place[3] = {point[0], point[1], point[2]};
  if (m_kind == VOLUME)
    for (int a = 0; a < 3; ++a)
      if (!(place[a] >= m_domain.min[a] && place[a] <= m_domain.max[a])) return nullptr;
  const PbCell* found = nullptr;
  m_tree.findFirst(place, [&](int index) {
    if (excluded.find(index) >= 0) return false;
    const PbCell* cell = mesh.getCell(index);
    if (!cell || !cell->locatePoint(point, tolerance, pcoord)) return false;
    found = cell;
    return true;
  });
  return found;
}
