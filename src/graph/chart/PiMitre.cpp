#include "graph/chart/PiMitre.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMaxReach = 2;

struct Direction {
  double x, y;
};

}  // namespace

std::vector<SbVec2f> mitresOf(std::span<const SbVec2f> run, const SbVec2f& stretch) {
  std::vector<SbVec2f> mitres(run.size());
  // The direction to the next point that is elsewhere, from the end; at the end itself that of the way there.
  std::vector<Direction> onwards(run.size(), {1, 0});
  bool isFound = false;
  for (std::size_t i = run.size() - 1; i-- > 0;) {
    const double dx = (static_cast<double>(run[i + 1][0]) - run[i][0]) * stretch[0];
    const double dy = (static_cast<double>(run[i + 1][1]) - run[i][1]) * stretch[1];
    const double length = std::hypot(dx, dy);
    onwards[i] = length > 0 ? Direction{dx / length, dy / length} : onwards[i + 1];
    if (length > 0 && !isFound) {
      std::fill(onwards.begin() + static_cast<std::ptrdiff_t>(i) + 1, onwards.end(), onwards[i]);
      isFound = true;
    }
  }
  for (std::size_t i = 0; i < run.size(); ++i) {
    const Direction &from = onwards[i > 0 ? i - 1 : 0], &to = onwards[i];
    // Half the way from one normal to the other, and longer the sharper the bend is.
    double x = -(from.y + to.y), y = from.x + to.x;
    const double square = x * x + y * y;  // 4 cos^2 of half the angle
    double reach = square > 0 ? 2 / square : kMaxReach;
    if (square < 4 / (kMaxReach * kMaxReach)) {
      const double length = std::sqrt(square);
      if (length > 1e-6) {
        reach = kMaxReach / length;
      } else {
        x = -to.y;
        y = to.x;
        reach = 1;
      }
    }
    mitres[i].setValue(static_cast<float>(x * reach / stretch[0]), static_cast<float>(y * reach / stretch[1]));
  }
  return mitres;
}
