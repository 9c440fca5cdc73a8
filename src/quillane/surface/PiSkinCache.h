#ifndef ORMELLE_PISKINCACHE_H
#define ORMELLE_PISKINCACHE_H

#include <functional>
#include <map>
#include <vector>

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
  /// Appends the cells that a filter accepts, by rising index.
  using Choose = std::function<void(std::vector<int>& cells)>;

  /// The skin for `filter`, which is found again if it was made with the same key; else `choose` is asked for the
  /// cells. Without a filter they are all cells. The id that a skin gets when it is made is new. A filter is an address
  /// only: should another come to the place of one that died, its id differs.
  PiMeshSkin* get(const PbMesh3D& mesh, const void* filter, const Key& key, const Choose& choose, unsigned int& skinId);

  std::size_t getMemorySize() const;

 private:
  struct Entry {
    Key key{};
    unsigned int skinId = 0;  // 0: not made yet
    PiMeshSkin skin;
  };

  static unsigned int s_nextSkinId;

  std::map<const void*, Entry> m_entries;
  std::vector<int> m_accepted;
  PiSkinBuilder m_builder;
};

#endif
