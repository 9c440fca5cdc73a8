#ifndef ORMELLE_PICELLBLOCKS_H
#define ORMELLE_PICELLBLOCKS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "quillane/surface/PiGrowBuffer.h"
#include "quillane/surface/PiSectionPlane.h"

class PbCartesianGrid3D;
class PbIndexedMesh3D;
class PbMesh3D;

/// Boxes round blocks of a few cells of a volume mesh, by which a plane passes over all others without a look at them.
/// They take 3 bytes a cell.
///
/// Cells that follow each other are mostly neighbours, and make a block. Where the numbering of a mesh is random, the
/// cells are first put into the order of a curve that fills space, which takes another 4 bytes a cell.
class PiCellBlocks {
 public:
  /// The blocks of a mesh as it is now. They are made on first need, and shared by all who hold them.
  static std::shared_ptr<const PiCellBlocks> of(const PbIndexedMesh3D& mesh);
  static std::shared_ptr<const PiCellBlocks> of(const PbCartesianGrid3D& mesh);

  static constexpr int kBlockSize = 8;

  /// Calls `use(cell)` for the cells of all blocks that the plane meets, in an order that is always the same. No cell
  /// with a node on the plane, or with nodes on both sides of it, is left out, unless a coordinate isn't finite.
  template <class Use>
  void forEachCellNear(const PiSectionPlane& plane, Use&& use) const {
    forEachCellNear(plane, 0, numCells(), use);
  }
  /// The same for those cells that have a place from `begin` to `end` in that order: multiples of the size of a block,
  /// or the number of cells.
  template <class Use>
  void forEachCellNear(const PiSectionPlane& plane, int begin, int end, Use&& use) const {
    static constexpr int kBatch = 512;
    std::uint8_t isMet[kBatch];
    const int lastBlock = (end - 1) / kBlockSize;
    for (int first = begin / kBlockSize; end > begin && first <= lastBlock; first += kBatch) {
      const int num = lastBlock - first < kBatch ? lastBlock - first + 1 : kBatch;
      if (!findMet(plane, static_cast<std::size_t>(first), static_cast<std::size_t>(num), isMet)) continue;
      for (int block = 0; block < num; ++block) {
        if (!isMet[block]) continue;
        const int start = (first + block) * kBlockSize, stop = end - start < kBlockSize ? end : start + kBlockSize;
        for (int place = start; place < stop; ++place)
          use(m_order.empty() ? place : m_order[static_cast<std::size_t>(place)]);
      }
    }
  }

  int numCells() const { return m_numCells; }
  bool isSorted() const { return !m_order.empty(); }
  std::size_t memorySize() const;

 private:
  template <class Cells>
  void build(const Cells& cells);
  template <class Cells>
  float boundBlocks(const Cells& cells);
  template <class Cells>
  void sortCells(const Cells& cells);
  template <class Mesh>
  static std::shared_ptr<const PiCellBlocks> find(const Mesh& mesh);
  bool findMet(const PiSectionPlane& plane, std::size_t first, std::size_t num, std::uint8_t* isMet) const;

  int m_numCells = 0;
  std::vector<float> m_bounds[6];  // least x, y, z and greatest x, y, z of each block
  std::vector<int> m_order;        // the cells, if not by number
};

#endif
