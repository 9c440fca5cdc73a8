// The skins of a mesh, which are kept for all its representations.

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilter.h>

#include "quillane/surface/PiSkinCache.h"

PiMeshSkin* PbMesh3D::getSkinTopology(const PoCellFilter* filter, int value_set_index, unsigned int& skin_id) const {
  if (!m_skins) m_skins = std::make_shared<PiSkinCache>();
  PiSkinCache::Key key{0, getTopologyId(), 0};
  if (filter) {
    key.filterId = static_cast<unsigned int>(filter->getNodeId());
    if (value_set_index >= 0) key.dataId = getFltDataSetId(value_set_index);
  }
  return m_skins->get(*this, filter, key, value_set_index, skin_id);
}
