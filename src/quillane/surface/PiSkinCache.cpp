#include "quillane/surface/PiSkinCache.h"

unsigned int PiSkinCache::s_nextSkinId = 1;

PiMeshSkin* PiSkinCache::get(const PbMesh3D& mesh, const PoCellFilter* filter, const Key& key, int valueSetIndex,
                             unsigned int& skinId) {
  Entry& entry = m_entries[filter];
  if (entry.skinId == 0 || entry.key != key) {
    m_builder.build(mesh, filter, valueSetIndex, entry.skin);
    entry.key = key;
    entry.skinId = s_nextSkinId++;
  }
  skinId = entry.skinId;
  return &entry.skin;
}

std::size_t PiSkinCache::getMemorySize() const {
  std::size_t size = m_builder.getMemorySize();
  for (const auto& entry : m_entries) size += entry.second.skin.getMemorySize();
  return size;
}
