#include "quillane/search/PiCellOctree.h"

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>

#include <algorithm>

#include "quillane/search/PiCellBox.h"

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
  m_tree.build(m_domain, mesh.getNumCells(), [&](int index, PiBoxTree::Box& cellBox) {
    const PbCell* cell = mesh.getCell(index);
    if (!cell) return false;
    return m_kind == VOLUME ? findVolumeCellBox(*cell, m_tolerance, cellBox)
                            : findSurfaceCellBox(*cell, m_tolerance, cellBox);
  });
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
