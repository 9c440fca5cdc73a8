#ifndef ORMELLE_PICURVESEARCH_H
#define ORMELLE_PICURVESEARCH_H

#include <span>
#include <vector>

#include "quillane/mesh/PiFiniteBox.h"

/// A point on a segment of a polyline, which goes from point `segment` to point `segment` + 1.
struct PiCurvePlace {
  int segment;
  float t;  ///< 0 at the start of the segment, 1 at its end
  float x, y;
};

/// Looks along one axis of a polyline for places with given coordinates. Segments with a non-finite end hold none.
class PiCurveSearch {
 public:
  /// The arrays are borrowed.
  PiCurveSearch(std::span<const float> x, std::span<const float> y, bool isAlongX)
      : m_along(isAlongX ? x : y), m_across(isAlongX ? y : x), m_isAlongX(isAlongX) {}

  /// The limits of the finite points.
  PiFiniteRange range() const;

  /// For each coordinate in turn, its places along the polyline. A segment has its start, and not its end. No more than
  /// `maxNum` places are looked for; those further along the polyline are left out. Costs what points, coordinates and
  /// places found add up to, and the sorting of the coordinates.
  std::vector<PiCurvePlace> find(std::span<const float> coordinates, int maxNum) const;

  /// The places where the polyline goes from one side of a coordinate to the other, strictly, within a segment.
  std::vector<PiCurvePlace> findCrossings(float coordinate) const;

 private:
  bool isFinite(size_t point) const;
  PiCurvePlace placeOn(size_t segment, float coordinate) const;

  std::span<const float> m_along, m_across;
  bool m_isAlongX;
};

#endif
