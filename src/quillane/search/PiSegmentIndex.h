#ifndef ORMELLE_PISEGMENTINDEX_H
#define ORMELLE_PISEGMENTINDEX_H

#include <cstddef>
#include <span>
#include <vector>

#include <Inventor/SbVec3f.h>

#include "quillane/search/PiRectTree.h"

/// The points of one line, from the first to the last.
using PiPolyline = std::span<const SbVec3f>;

/// Finds the segments of a set of polylines near a place of the plane; z is passed over. The points aren't copied and
/// must outlive the index.
class PiSegmentIndex {
 public:
  PiSegmentIndex() = default;
  explicit PiSegmentIndex(std::span<const PiPolyline> lines);

  /// Calls `accept(line, from, to)` for the segments near `region` (see PiRectTree), until one is accepted; then true.
  template <class Region, class Accept>
  bool any(const Region& region, Accept&& accept) const {
    return m_tree.any(region, [&](std::size_t number) {
      const Run& run = m_runs[number];
      for (std::size_t i = 0; i < run.numSegments; ++i)
        if (accept(run.line, run.points[i], run.points[i + 1])) return true;
      return false;
    });
  }

 private:
  // Some neighbouring segments of a line.
  struct Run {
    const SbVec3f* points;
    std::size_t numSegments;
    std::size_t line;
  };
  static constexpr std::size_t kRunLength = 4;

  std::vector<Run> m_runs;
  PiRectTree m_tree;
};

#endif
