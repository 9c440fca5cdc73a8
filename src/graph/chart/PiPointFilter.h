#ifndef ORMELLE_PIPOINTFILTER_H
#define ORMELLE_PIPOINTFILTER_H

#include <Inventor/SbVec2f.h>
#include <Ormelle/PoCurve.h>

#include <cstdint>
#include <span>
#include <vector>

/// Which places of a curve get something: a marker, a line.
struct PiPointFilter {
  /// Places by x, of a period or a list, of which there may be more than anything can show. Those beyond are left out.
  static constexpr int MAX_PLACES = 1 << 20;

  PoCurve::FilterType type = PoCurve::INACTIVE;
  int indexPeriod = 1;  ///< one below 1 acts as 1
  std::span<const std::int32_t> indexList;
  float xPeriod = 1;  ///< one that isn't above 0 gives no places
  std::span<const float> xList;

  /// Points of the curve, or places on its segments: of a given x the first on the curve. What isn't there, or isn't
  /// finite, is left out. Costs what points and places add up to, and the sorting of the list.
  std::vector<SbVec2f> select(std::span<const SbVec2f> curve) const;
};

#endif
