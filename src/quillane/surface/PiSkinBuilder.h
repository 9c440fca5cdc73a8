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
class PoCellFilter;

/// Finds the skins of volume meshes. It keeps its memory from one skin to the next: for an indexed mesh 8 bytes a node,
/// or twice that with more than one thread, and what is proportional to the cells at the skin; for a filter 4 bytes an
/// accepted cell besides.
class PiSkinBuilder {
 public:
  /// Replaces `skin` by that of the cells that `filter`, given the set of values `valueSetIndex`, accepts; of all cells
  /// if there is no filter.
  void build(const PbMesh3D& mesh, const PoCellFilter* filter, int valueSetIndex, PiMeshSkin& skin);

  std::size_t getMemorySize() const;

 private:
  struct Cells;
  /// The facets whose smallest node is in a range of open nodes.
  struct Range {
    std::uint32_t begin = 0, end = 0;    ///< numbers of open nodes
    std::vector<std::uint32_t> buckets;  ///< the first bucket of each, and the end
    PiFacetSet facets;
  };

  void buildIndexed(const Cells& cells, PiMeshSkin& skin);
  void buildGrid(const PbGrid3D& grid, bool isFiltered, PiMeshSkin& skin);
  void buildAny(const PbMesh3D& mesh, bool isFiltered, PiMeshSkin& skin);

  void pairFacets(const Cells& cells);
  std::uint32_t numberOpenNodes();
  void findOpenCells(const Cells& cells);
  void cutIntoRanges(std::uint32_t numOpenNodes);
  void collect(const Cells& cells, Range& range) const;
  void store(PiMeshSkin& skin) const;

  std::vector<int> m_accepted;                             // cells that the filter accepts
  std::vector<std::vector<PiFacetHash::Word>> m_parities;  // for each node, one of them for each thread
  std::vector<std::vector<int>> m_openCellsOf;             // the same block by block
  std::vector<int> m_openCells;                            // cells with an open node
  std::vector<Range> m_ranges;
  std::vector<std::uint8_t> m_isAccepted;  // of each cell of a grid
};

#endif
