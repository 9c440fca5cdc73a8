#include "graph/axis/PiGradLegibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "graph/axis/PiAxisLayout.h"

namespace PiGradLegibility {

namespace {

/// The font size at which two neighbours of those chosen just touch.
double touchingSize(const Line& line, const Choice& choice) {
  const int num = static_cast<int>(line.coords.size());
  double least = std::numeric_limits<double>::infinity();
  int former = -1;
  for (int i = choice.next(-1, num); i < num; i = choice.next(i, num)) {
    if (line.boxes[static_cast<size_t>(i)].isEmpty()) continue;
    if (former >= 0) {
      int low = former, high = i;
      double gap = static_cast<double>(line.coords[static_cast<size_t>(i)]) - line.coords[static_cast<size_t>(former)];
      if (gap < 0) {
        std::swap(low, high);
        gap = -gap;
      }
      const double both =
          static_cast<double>(line.boxes[static_cast<size_t>(low)].xmax) - line.boxes[static_cast<size_t>(high)].xmin;
      if (both > 0) least = std::min(least, gap / both);
    }
    former = i;
  }
  return least;
}

/// The font size at which the farthest text just stays near enough.
double reachingSize(const Line& line) {
  double extent = 0;
  for (const PiTextBox& box : line.boxes)
    if (!box.isEmpty()) extent = std::max<double>(extent, std::max(std::abs(box.ymin), std::abs(box.ymax)));
  const double room = static_cast<double>(MAX_DISTANCE) * line.along - std::abs(line.nearest);
  return std::max(0.0, room / (PiAxisLayout::TEXT_GAP + extent));
}

bool isSameText(const PiTextRun& a, const PiTextRun& b) {
  return std::equal(a.pieces, a.pieces + a.num, b.pieces, b.pieces + b.num,
                    [](const auto& x, const auto& y) { return std::strcmp(x.text, y.text) == 0; });
}

/// Whether two texts that follow each other are the same: every second half hour is "0'".
bool readAlike(const Line& line, const Choice& choice) {
  const auto num = static_cast<int>(line.texts.size());
  int former = choice.next(-1, num);
  for (int i = choice.next(former, num); former < num && i < num; former = i, i = choice.next(i, num))
    if (isSameText(line.texts[static_cast<size_t>(former)], line.texts[static_cast<size_t>(i)])) return true;
  return false;
}

Choice everyOf(const Line& line, int period) {
  Choice choice{line.size, period, 0, false};
  const long phase = line.firstMultiple % period;
  choice.first = static_cast<int>((period - phase) % period);
  return choice;
}

int count(const Choice& choice, int num) {
  return num > choice.first ? (num - 1 - choice.first) / choice.period + 1 : 0;
}

}  // namespace

int Choice::next(int i, int num) const {
  if (isEnds) return i < 0 ? 0 : i == 0 && num > 1 ? num - 1 : num;
  return std::min(num, i < 0 ? first : i + period);
}

bool overlap(const Line& line, const Choice& choice) { return choice.size > touchingSize(line, choice); }

Choice choose(const Line& line) {
  const int num = static_cast<int>(line.coords.size());
  Choice all{line.size, 1, 0, false};
  const double reaching = line.isSizeFixed ? std::numeric_limits<double>::infinity() : reachingSize(line);
  if (num == 0 ||
      (!overlap(line, all) && (line.isSizeFixed || line.size >= MIN_SIZE * line.along) && line.size <= reaching))
    return all;

  // The best size of a choice: as large as allowed, with room between neighbours.
  const auto withSize = [&](Choice choice) {
    if (line.isSizeFixed) return choice;
    const double fitting = PiAxisLayout::TEXT_ROOM * touchingSize(line, choice);
    choice.size = static_cast<float>(std::min({static_cast<double>(line.largest), fitting, reaching}));
    return choice;
  };
  const auto isGood = [&](const Choice& choice) {
    return line.isSizeFixed ? !overlap(line, choice) : choice.size >= GOOD_SIZE * line.along;
  };

  const bool mustDiffer = !readAlike(line, all);
  Choice best = withSize(all);
  if (!line.isThinned || isGood(best) || best.size >= reaching) return best;
  for (long unit = 1; unit < num; unit *= 10) {
    for (const long factor : std::array{1L, 2L, 5L}) {
      const long period = unit * factor;
      if (period == 1 || period >= num) continue;
      const Choice choice = withSize(everyOf(line, static_cast<int>(period)));
      if (count(choice, num) < 2 || (mustDiffer && readAlike(line, choice))) continue;
      if (isGood(choice)) return choice;
      if (choice.size > best.size) best = choice;
    }
  }
  Choice ends{line.size, 1, 0, true};
  ends = withSize(ends);
  if (mustDiffer && readAlike(line, ends)) return best;
  return num > 2 && (line.isSizeFixed || ends.size > best.size) ? ends : best;
}

}  // namespace PiGradLegibility
