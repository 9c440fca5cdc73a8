#ifndef ORMELLE_PIGRADATIONS_H
#define ORMELLE_PIGRADATIONS_H

#include <span>
#include <vector>

#include <Ormelle/PoAxis.h>

/// Where an axis has gradations: numbers only.
namespace PiGradations {

/// No axis has more gradations, nor more sub-ticks: nobody could tell them apart.
constexpr int MAX_GRADATIONS = 10000;

struct Range {
  float start = 0;
  float end = 0;
};

/// What the margins leave of an axis; margins that leave nothing leave its end.
Range withoutMargins(float start, float end, PoAxis::MarginType type, float marginStart, float marginEnd);

/// How gradations are split, see the fields of PoAxis on ticks.
struct Split {
  PoAxis::TickSubDef subDef = PoAxis::PERIOD_MAIN_TICK;
  int numOrPeriod = 1;
  int first = 1;  ///< the first main gradation, counted from 1
  int last = 1;   ///< the last one, counted from 1 from the end
};

/// Splits `coords`, which rise or fall steadily in steps of `step`, within `range`. `mainIndices` tells which of
/// `coords` each main gradation is. Sub-gradations come in the order of the axis where they are chosen from `coords`.
void split(const Split& how, const Range& range, float step, std::span<const float> coords,
           std::vector<float>& mainCoords, std::vector<int>& mainIndices, std::vector<float>& subCoords);

/// The digits that are gradated inside a decade on an axis of `numDecades` decades.
std::span<const int> decadeDigits(int numDecades);

}  // namespace PiGradations

#endif
