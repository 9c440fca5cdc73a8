#ifndef ORMELLE_PIBANDPOLYGONS_H
#define ORMELLE_PIBANDPOLYGONS_H

#include <cstdint>

#include "quillane/contour/PiContourWalk.h"
#include "quillane/contour/PiCutCell.h"
#include "quillane/surface/PiGrowBuffer.h"

/// Divides the cells of a surface into polygons of one band each. Gets the cells from a PiContourWalk.
class PiBandPolygons {
 public:
  static constexpr bool kWantsWholeCells = true;

  /// The corners of each polygon and a -1: nodes of the surface, and behind these the cut points.
  PiGrowBuffer<std::int32_t> coordIndex;
  /// Of each polygon: index in the list of the isovalue below it, or -1.
  PiGrowBuffer<int> lowerIsovalues;

  /// Forgets all polygons. The arguments must live until all cells have come.
  void start(int numNodes, int numCells, const float* values, const PiContourLevels& levels, const PiCutPoints& cuts);

  void whole(const PiCellNodes& cell, int band) {
    std::int32_t* corners = coordIndex.room(5);
    for (int c = 0; c < cell.num; ++c) corners[c] = cell.node[c];
    corners[cell.num] = -1;
    coordIndex.addWritten(static_cast<std::size_t>(cell.num) + 1);
    lowerIsovalues.push_back(m_levels->isMovedAt(band) ? lowerIsovalueOf(cell) : m_levels->lowerIsovalue(band));
  }
  void cut(const PiCutCell& cell);

  std::size_t memorySize() const {
    return (coordIndex.capacity() + lowerIsovalues.capacity()) * sizeof(int) + m_ring.capacity() * sizeof(RingPoint);
  }

 private:
  /// A corner of a cell or a cut point on one of its edges.
  struct RingPoint {
    int index;       // as in coordIndex
    int partner;     // place in the ring of the other end of its line; -1 for a corner
    int bandBehind;  // of the piece of edge that follows
    int isPassed;    // whether a polygon has that piece
    float value;
    const SbVec3f* point;
  };

  int lowerIsovalueOf(const PiCellNodes& cell) const;
  void makeRing(const PiCutCell& cell);
  void addPolygon(std::size_t start);

  int m_numNodes = 0;
  const float* m_values = nullptr;
  const PiContourLevels* m_levels = nullptr;
  const PiCutPoints* m_cuts = nullptr;
  PiGrowBuffer<RingPoint> m_ring;
  PiGrowBuffer<int> m_polygon;  // places in the ring
};

#endif
