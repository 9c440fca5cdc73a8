#ifndef ORMELLE_PIINDEXEDLEVELSURF_H
#define ORMELLE_PIINDEXEDLEVELSURF_H

#include <array>
#include <atomic>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "quillane/mesh/PiConnectivity.h"
#include "quillane/surface/PiLevelSurf.h"

/// Makes level surfaces of volumes of indexed cells.
///
/// A first pass over all cells, in blocks side by side, only adds up the sides of their nodes and lists the cells that
/// have nodes on both. All else looks at those alone. Points are found by the ends of their edges and numbered in the
/// order in which the cells come to them.
///
/// With several threads, groups of blocks each find their points in a table of their own. Only edges between nodes that
/// cells of two groups have may be in more than one; those are compared one group after the other, and the points get
/// the same numbers as they get with one thread.
///
/// Beside the output it needs a byte a node, or two with several threads, and eight a cut cell, and keeps them for the
/// next surface.
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
  void countFacets();
  void writeFacets();
  void writeFacetsInGroups();
  template <class AddPoint, class Propose>
  void writeBlocks(int firstBlock, int endBlock, AddPoint&& addPoint, Propose&& propose) const;
  void findDuplicates();
  void numberPoints();

  int numBlocks() const;
  int numGroups() const;
  int firstBlockOf(int group) const { return group * numBlocks() / numGroups(); }
  /// How many of the points of a group come before `point` and are its own.
  int rankOf(int group, int point) const;

  const PiConnectivity* m_cells = nullptr;
  const PiLevelSurfInput* m_input = nullptr;
  const std::function<bool(std::span<const int>)>* m_isMirrored = nullptr;
  PiLevelSurfOutput* m_output = nullptr;

  PiGrowBuffer<std::uint8_t> m_sides;  // of each node: 0 or 1, and kUnusable

  /// Cells of one block and what they will write.
  struct Block {
    PiGrowBuffer<CutCell> cutCells;
    std::size_t firstIndex = 0, firstFacet = 0;  // in the output
    std::size_t numIndices = 0, numFacets = 0, numQuads = 0;
  };
  std::vector<Block> m_blocks;
  std::size_t m_numIndices = 0, m_numFacets = 0, m_numQuads = 0;
  int* m_indices = nullptr;

  struct Proposal {
    std::array<int, 4> corners;
    int cell;
  };
  /// A point that an earlier group has, too.
  struct Duplicate {
    int point, owner, ownerPoint;
  };
  /// Blocks that one task looks after.
  struct Group {
    PiPairTable points;
    PiGrowBuffer<int> shared;  // points on edges that other groups may have
    std::vector<Duplicate> duplicates;
    PiGrowBuffer<int> numbers;  // of the points, in the output
    std::vector<Proposal> proposals;
    std::size_t firstPoint = 0;
  };
  std::vector<Group> m_groups;
  PiPairTable m_shared;
  std::vector<std::pair<int, int>> m_owners;       // group and point of each pair that is shared
  std::vector<std::atomic<std::uint8_t>> m_users;  // of each node: 1 + the group that has it, or kSeveral
};

#endif
