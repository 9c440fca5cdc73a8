#ifndef ORMELLE_PISKINCACHE_H
#define ORMELLE_PISKINCACHE_H

#include <map>

#include "quillane/surface/PiMeshSkin.h"
#include "quillane/surface/PiSkinBuilder.h"

/// The skins of one mesh, one for each filter that it was ever asked for.
class PiSkinCache {
 public:
  /// What a skin follows from, besides its filter.
  struct Key {
    unsigned int filterId, topologyId, dataId;
    bool operator==(const Key&) const = default;
  };

  /// The skin for `filter`, which is found again if it was made with the same key. The id it gets when it is made is
  /// new. A filter that died is never looked at: should another come to its place, its id differs.
  PiMeshSkin* get(const PbMesh3D& mesh, const PoCellFilter* filter, const Key& key, int valueSetIndex,
                  unsigned int& skinId);

  std::size_t getMemorySize() const;

 private:
  struct Entry {
    Key key{};
    unsigned int skinId = 0;  // 0: not made yet
    PiMeshSkin skin;
  };

  static unsigned int s_nextSkinId;

  std::map<const PoCellFilter*, Entry> m_entries;
  PiSkinBuilder m_builder;
};

#endif
