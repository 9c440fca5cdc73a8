#ifndef ORMELLE_PISKINBUILDER_H
#define ORMELLE_PISKINBUILDER_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "quillane/surface/PiFacetHash.h"
#include "quillane/surface/PiFacetSet.h"
#include "quillane/surface/PiMeshSkin.h"

class PbGrid3D;
class PbMesh3D;
class PiConnectivity;

/// Finds the skins of volume meshes. It keeps its memory from one skin to the next: for an indexed mesh 8 bytes a node
/// for each thread, but no more than 16 bytes a node or 8 a cell, and besides what is proportional to the cells at the
/// skin.
class PiSkinBuilder {
 public:
  /// Replaces `skin` by that of the cells listed by rising index in `accepted`, or of all cells if it is null.
  void build(const PbMesh3D& mesh, const std::vector<int>* accepted, PiMeshSkin& skin);

  std::size_t getMemorySize() const;

 private:
  struct Cells;
  /// The share of one thread.
  struct Share {
    std::vector<PiFacetHash::Word> parities;  ///< for each node
    std::vector<int> openCells;               ///< of its cells those with an open node
    std::vector<std::uint32_t> counts;        ///< for each open node, the facets of those cells that it is smallest of
    std::uint32_t begin = 0, end = 0;         ///< open nodes whose facets this share compares
    PiFacetSet facets;                        ///< of those; their cells are places in m_openCells
  };

  void buildIndexed(const Cells& cells, PiMeshSkin& skin);
  void buildGrid(const PbGrid3D& grid, const std::vector<int>* accepted, PiMeshSkin& skin);
  void buildAny(const PbMesh3D& mesh, const std::vector<int>* accepted, PiMeshSkin& skin);

  void setNumShares(const Cells& cells);
  void pairFacets(const Cells& cells);
  std::uint32_t numberOpenNodes();
  void findOpenCells(const Cells& cells, std::uint32_t numOpenNodes);
  void shareOpenNodes(std::uint32_t numOpenNodes);
  void compareFacets(const PiConnectivity& cells, Share& share) const;
  void store(const PiConnectivity& cells, PiMeshSkin& skin) const;

  std::vector<Share> m_shares;
  std::vector<int> m_openCells;            // of all shares
  std::vector<std::uint32_t> m_buckets;    // the first bucket of each open node, and the end
  std::vector<std::uint8_t> m_isAccepted;  // of each cell of a grid
};

#endif
