// The skins of a mesh, which are kept for all its representations.

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilter.h>

#include <algorithm>

#include "quillane/surface/PiSkinCache.h"

namespace {

/// Appends the cells of `mesh` that `filter` accepts. As a PbCellFilterIterator walks them, but without a branch for
/// each cell, which would be foreseen wrongly wherever the answer changes.
void chooseCells(const PbMesh3D& mesh, const PoCellFilter& filter, int set, std::vector<int>& cells) {
  constexpr int kBlock = 1024;
  const float* values = set == -1 ? nullptr : mesh.getValuesSet(set);
  const int numValues = values ? mesh.getNumValues(set) : 0;
  for (int begin = 0; begin < mesh.getNumCells(); begin += kBlock) {
    const int end = begin + std::min(kBlock, mesh.getNumCells() - begin);
    int accepted[kBlock];
    int num = 0;
    for (int cell = begin; cell < end; ++cell) {
      accepted[num] = cell;
      num += filter.acceptCell(cell, cell < numValues ? values[cell] : 0.0F) ? 1 : 0;
    }
    cells.insert(cells.end(), accepted, accepted + num);
  }
}

}  // namespace

PiMeshSkin* PbMesh3D::getSkinTopology(const PoCellFilter* filter, int value_set_index, unsigned int& skin_id) const {
  if (!m_skins) m_skins = std::make_shared<PiSkinCache>();
  PiSkinCache::Key key{0, getTopologyId(), 0};
  if (filter) {
    key.filterId = static_cast<unsigned int>(filter->getNodeId());
    if (value_set_index >= 0) key.dataId = getFltDataSetId(value_set_index);
  }
  const auto choose = [&](std::vector<int>& cells) { chooseCells(*this, *filter, value_set_index, cells); };
  return m_skins->get(*this, filter, key, choose, skin_id);
}
