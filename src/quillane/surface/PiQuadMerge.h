#ifndef ORMELLE_PIQUADMERGE_H
#define ORMELLE_PIQUADMERGE_H

#include <array>
#include <cstddef>

#include "quillane/surface/PiGrowBuffer.h"

/// Optional quadrangles of a level surface: patches that the cells on both sides of a facet propose when the facet can
/// be cut in two ways. Two cells that cut it the same way propose patches of opposite direction, and nothing is
/// missing between them. Two that cut it differently leave a hole, propose the same patch, and it is drawn.
class PiQuadMerge {
 public:
  struct Quadrangle {
    std::array<int, 4> corners;  ///< the smallest index first, in the direction in which they were proposed
    int count;                   ///< how often
    int cell;                    ///< by whom last
  };

  void clear();
  void add(const std::array<int, 4>& corners, int cell);

  /// Calls `use(quadrangle)` for each one that was proposed at least twice, in the order of the first proposals.
  template <class Use>
  void forEachShared(Use&& use) const {
    if (m_numShared == 0) return;
    for (const Quadrangle& quadrangle : m_quadrangles)
      if (quadrangle.count > 1) use(quadrangle);
  }
  /// How many forEachShared() gives.
  std::size_t numShared() const { return m_numShared; }
  std::size_t memorySize() const {
    return m_quadrangles.capacity() * sizeof(Quadrangle) + (m_slots.capacity() + m_next.capacity()) * sizeof(int);
  }

 private:
  std::size_t slotOf(const std::array<int, 4>& corners) const;
  void growSlots();

  PiGrowBuffer<Quadrangle> m_quadrangles;
  PiGrowBuffer<int> m_slots;
  PiGrowBuffer<int> m_next;
  std::size_t m_numShared = 0;
};

#endif
