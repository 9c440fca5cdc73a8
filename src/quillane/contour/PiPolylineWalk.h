#ifndef ORMELLE_PIPOLYLINEWALK_H
#define ORMELLE_PIPOLYLINEWALK_H

#include <cstddef>
#include <vector>

#include "quillane/search/PiSegmentIndex.h"

/// Walks along one polyline after another. A line that ends where it began is closed, and a walk goes on round it.
class PiPolylineWalk {
 public:
  /// Takes up a line of at least two points, which must live as long as it is walked along.
  void start(PiPolyline points);

  std::size_t numSegments() const { return m_points.size() - 1; }
  SbVec3f middleOf(std::size_t segment) const { return (m_points[segment] + m_points[segment + 1]) / 2; }
  double length() const { return m_runs.back(); }
  /// The first segment whose start is at least `run` behind the line's start; numSegments() if there is none.
  std::size_t segmentAt(double run) const;
  /// The same, `run` behind the start of `segment`, and not that segment itself.
  std::size_t segmentBehind(std::size_t segment, double run) const;
  /// The first point along the line whose distance from the middle of `segment` is `distance`, walking forwards or back
  /// from there. False if the walk ends before.
  bool pointAtDistance(std::size_t segment, bool isForwards, double distance, SbVec3f& point) const;

 private:
  PiPolyline m_points;
  std::vector<double> m_runs;  // length from the start to each point
  bool m_isClosed = false;
};

#endif
