#include "quillane/surface/PiSkinCache.h"

unsigned int PiSkinCache::s_nextSkinId = 1;

PiMeshSkin* PiSkinCache::get(const PbMesh3D& mesh, const void* filter, const Key& key, const Choose& choose,
                             unsigned int& skinId) {
  Entry& entry = m_entries[filter];
  if (entry.skinId == 0 || entry.key != key) {
    entry.skinId = 0;  // until it is whole again
    m_accepted.clear();
    if (filter) choose(m_accepted);
    m_builder.build(mesh, filter ? &m_accepted : nullptr, entry.skin);
    entry.key = key;
    entry.skinId = s_nextSkinId++;
  }
  skinId = entry.skinId;
  return &entry.skin;
}

std::size_t PiSkinCache::getMemorySize() const {
  std::size_t size = m_builder.getMemorySize() + m_accepted.capacity() * sizeof(int);
  for (const auto& entry : m_entries) size += entry.second.skin.getMemorySize();
  return size;
}
