#ifndef ORMELLE_PIGRIDLEVELSURF_H
#define ORMELLE_PIGRIDLEVELSURF_H

#include <array>
#include <functional>
#include <vector>

#include "quillane/surface/PiBitRows.h"
#include "quillane/surface/PiLevelSurf.h"
#include "quillane/view/PiView3D.h"

/// Makes level surfaces of grids.
///
/// The side of each node is one bit. The edges that the surface cuts follow from the bits by shifts and exclusive ors,
/// 64 at once, and counting them numbers the points: those of a row of nodes lie together, first those on edges along
/// k, then along j, then along i. So no table of edges is needed, a stretch of 64 cells on one side costs a look, and
/// all passes run over blocks of rows side by side, with the same result for any number of threads.
///
/// Beside the output it needs three bits a node at most, and 24 bytes a row; all of it is kept for the next surface.
class PiGridLevelSurf {
 public:
  /// `isMirrored` tells of a cell (i, j, k) whether its nodes run the other way round than in the cells for which
  /// `input.isToMax` was settled; it is empty if there are none such.
  void make(const PiGridShape& shape, const PiLevelSurfInput& input,
            const std::function<bool(int i, int j, int k)>& isMirrored, PiLevelSurfOutput& output);

  std::size_t memorySize() const;

 private:
  using Word = PiBitRows::Word;
  /// Where what belongs to a row of nodes, and to the row of cells that begins there, starts.
  struct Row {
    int pointK, pointJ, pointI, cell, facet, index;
  };
  struct Totals {
    std::size_t points = 0, cells = 0, facets = 0, indices = 0, quads = 0;
  };
  struct Proposal {
    std::array<int, 4> corners;
    int cell;
  };

  void findSides();
  void findUsed();
  void countPoints();
  void countFacets();
  void writePoints();
  void writeFacets(int* indices);
  template <bool kIsMasked>
  void writeRow(int i, int j, int* indices, std::vector<Proposal>& proposals) const;

  int rowOf(int i, int j) const { return i * m_shape.numY + j; }
  int numRows() const { return m_shape.numX * m_shape.numY; }
  bool hasCellRow(int row) const { return row / m_shape.numY + 1 < m_shape.numX && (row + 1) % m_shape.numY != 0; }
  int numBlocks() const;
  /// Calls `use(row)` for the rows of a block.
  template <class Use>
  void forRows(int block, Use&& use) const;
  Word mixedCells(int row, int word) const;
  Word cutAlongK(int row, int word) const;
  unsigned caseOf(int row, int k) const;
  bool accepts(int i, int j, int k) const;

  PiGridShape m_shape{};
  const PiLevelSurfInput* m_input = nullptr;
  const std::function<bool(int, int, int)>* m_isMirrored = nullptr;
  PiLevelSurfOutput* m_output = nullptr;
  bool m_isMasked = false;  ///< not all cells take part
  bool m_isAnyNaN = false;
  Totals m_totals;

  PiBitRows m_sides;
  PiBitRows m_accepted;                 // of mixed cells; masked only
  PiBitRows m_usedK, m_usedJ, m_usedI;  // cut edges of accepted cells, at their first node; masked only
  PiGrowBuffer<Row> m_rows;             // of nodes
  PiGrowBuffer<std::uint16_t> m_cases;  // of mixed cells: the id, and 256 if it is mirrored; 0 if not accepted
  std::vector<std::vector<Proposal>> m_proposals;  // of each block
};

#endif
