#ifndef ORMELLE_PIINDEXEDLEVELSURF_H
#define ORMELLE_PIINDEXEDLEVELSURF_H

#include <functional>
#include <span>
#include <vector>

#include "quillane/mesh/PiConnectivity.h"
#include "quillane/surface/PiLevelSurf.h"

/// Makes level surfaces of volumes of indexed cells.
///
/// A first pass over all cells, in blocks side by side, only adds up the sides of their nodes and lists the cells that
/// have nodes on both. All else looks at those alone. Points are found by the ends of their edges.
///
/// Beside the output it needs a byte a node and eight a cut cell, and keeps them for the next surface.
class PiIndexedLevelSurf {
 public:
  /// `isMirrored` tells of the nodes of a cell whether they run the other way round than in the cells for which
  /// `input.isToMax` was settled. It is called by several threads.
  void make(const PiConnectivity& cells, const PiLevelSurfInput& input,
            const std::function<bool(std::span<const int> nodes)>& isMirrored, PiLevelSurfOutput& output);

  std::size_t memorySize() const;

 private:
  struct CutCell {
    int cell;
    unsigned code;  ///< the case id; from bit 8 on: 1 if mirrored, and twice the kind
  };

  void findSides();
  void listCutCells();
  template <int kCellSize>
  void listCutCells(int block);
  void writeFacets();

  int numBlocks() const;

  const PiConnectivity* m_cells = nullptr;
  const PiLevelSurfInput* m_input = nullptr;
  const std::function<bool(std::span<const int>)>* m_isMirrored = nullptr;
  PiLevelSurfOutput* m_output = nullptr;

  PiGrowBuffer<std::uint8_t> m_sides;             // of each node: 0 or 1, and kUnusable
  std::vector<PiGrowBuffer<CutCell>> m_cutCells;  // of each block
};

#endif
