#include "graph/axis/PiGradations.h"

#include <algorithm>
#include <cmath>

namespace PiGradations {

namespace {

/// Adds values `from`, `from` + `step`, ... while they lie within the range; a whole number of steps each, so that
/// errors don't add up.
void walk(float from, float step, const Range& range, std::vector<float>& out) {
  const float low = std::min(range.start, range.end), high = std::max(range.start, range.end);
  if (!std::isfinite(from) || !std::isfinite(step) || from + step == from) return;
  for (int i = 0; static_cast<int>(out.size()) < MAX_GRADATIONS; ++i) {
    const float value = from + static_cast<float>(i) * step;
    if (value < low || value > high) return;
    out.push_back(value);
  }
}

/// Ticks between main gradations that have the same distance from each other, and on both sides as far as the range
/// goes.
void subTicksBetween(int numBetween, const Range& range, std::span<const float> mains, std::vector<float>& out) {
  const float step = (mains[1] - mains[0]) / static_cast<float>(numBetween + 1);
  if (mains[0] + step == mains[0]) return;
  walk(mains[0] - step, -step, range, out);
  std::reverse(out.begin(), out.end());
  for (size_t m = 0; m + 1 < mains.size(); ++m)
    for (int k = 1; k <= numBetween && static_cast<int>(out.size()) < MAX_GRADATIONS; ++k)
      out.push_back(mains[m] + static_cast<float>(k) * step);
  walk(mains.back() + step, step, range, out);
}

/// Ticks of an axis with one main gradation or none.
void subTicksAbout(int numBetween, const Range& range, float step, std::span<const float> mains,
                   std::vector<float>& out) {
  float spacing = step / static_cast<float>(numBetween + 1);
  const float low = std::min(range.start, range.end), high = std::max(range.start, range.end);
  if (!mains.empty() && mains[0] > low && mains[0] < high) spacing /= 2;
  if (spacing == 0) return;
  // The first multiple of the step in the range; on an axis without a multiple, the first of the spacing.
  const auto firstMultiple = [&](float unit) {
    float first = std::trunc(range.start / unit) * unit;
    while (unit > 0 ? first < range.start : first > range.start) {
      if (first + unit == first) break;
      first += unit;
    }
    return first;
  };
  float first = firstMultiple(step);
  if (first < low || first > high) first = firstMultiple(spacing);
  std::vector<float> all;
  walk(first, spacing, range, all);
  std::vector<float> before;
  walk(first - spacing, -spacing, range, before);
  all.insert(all.begin(), before.rbegin(), before.rend());
  for (const float value : all)
    if (mains.empty() || !(std::abs(value - mains[0]) < std::abs(spacing) / 2)) out.push_back(value);
}

}  // namespace

Range withoutMargins(float start, float end, PoAxis::MarginType type, float marginStart, float marginEnd) {
  float atStart = std::abs(marginStart), atEnd = std::abs(marginEnd);
  if (type == PoAxis::REL_MARGIN) {
    atStart *= std::abs(end - start);
    atEnd *= std::abs(end - start);
  }
  // However far beyond the axis a margin reaches, there is a coordinate left.
  const float most = 1000 * std::abs(end - start);
  atStart = std::min(atStart, most);
  atEnd = std::min(atEnd, most);
  if (start < end) {
    Range range{start + atStart, end - atEnd};
    if (!(range.start < range.end)) range.start = range.end;
    return range;
  }
  Range range{start - atStart, end + atEnd};
  if (!(range.start > range.end)) range.start = range.end;
  return range;
}

void split(const Split& how, const Range& range, float step, std::span<const float> coords,
           std::vector<float>& mainCoords, std::vector<int>& mainIndices, std::vector<float>& subCoords) {
  mainCoords.clear();
  mainIndices.clear();
  subCoords.clear();
  const int num = static_cast<int>(coords.size());
  if (num == 0) return;
  const bool isPeriodic = how.subDef == PoAxis::PERIOD_MAIN_TICK;
  const int period = isPeriodic ? std::max(1, how.numOrPeriod) : 1;
  const int first = std::max(0, how.first - 1), end = num - std::max(0, how.last - 1);
  for (int i = 0; i < num; ++i) {
    if (i >= first && i < end && (i - first) % period == 0) {
      mainCoords.push_back(coords[static_cast<size_t>(i)]);
      mainIndices.push_back(i);
    } else if (isPeriodic) {
      subCoords.push_back(coords[static_cast<size_t>(i)]);
    }
  }
  if (isPeriodic || how.numOrPeriod <= 0) return;
  if (mainCoords.size() >= 2)
    subTicksBetween(how.numOrPeriod, range, mainCoords, subCoords);
  else if (step != 0)
    subTicksAbout(how.numOrPeriod, range, step, mainCoords, subCoords);
}

std::span<const int> decadeDigits(int numDecades) {
  static constexpr int kEight[] = {2, 3, 4, 5, 6, 7, 8, 9}, kFour[] = {2, 4, 6, 8}, kThree[] = {3, 6, 9},
                       kTwo[] = {4, 8}, kOne[] = {5};
  if (numDecades < 3) return kEight;
  if (numDecades < 5) return kFour;
  if (numDecades < 9) return kThree;
  if (numDecades < 17) return kTwo;
  if (numDecades < 33) return kOne;
  return {};
}

}  // namespace PiGradations
