#include "quillane/contour/PiPolylineWalk.h"

#include <algorithm>
#include <cmath>

namespace {

double distanceBetween(const SbVec3f& a, const SbVec3f& b) {
  return std::hypot(double(a[0]) - b[0], double(a[1]) - b[1], double(a[2]) - b[2]);
}

/// The point on the way from `inside`, nearer to `middle` than `distance`, to `outside`, which isn't, at that distance.
SbVec3f pointBetween(const SbVec3f& inside, const SbVec3f& outside, const SbVec3f& middle, double distance) {
  double stepSquare = 0, along = 0, insideSquare = 0;
  for (int a = 0; a < 3; ++a) {
    const double step = double(outside[a]) - inside[a], from = double(inside[a]) - middle[a];
    stepSquare += step * step;
    along += step * from;
    insideSquare += from * from;
  }
  if (stepSquare == 0) return outside;
  const double root = std::sqrt(std::max(0.0, along * along - stepSquare * (insideSquare - distance * distance)));
  const double share = std::clamp((root - along) / stepSquare, 0.0, 1.0);
  return inside + (outside - inside) * static_cast<float>(share);
}

}  // namespace

void PiPolylineWalk::start(PiPolyline points) {
  m_points = points;
  m_isClosed = points.size() > 3 && points.front() == points.back();
  m_runs.resize(points.size());
  m_runs[0] = 0;
  for (std::size_t i = 1; i < points.size(); ++i) m_runs[i] = m_runs[i - 1] + distanceBetween(points[i - 1], points[i]);
}

std::size_t PiPolylineWalk::segmentAt(double run) const {
  return static_cast<std::size_t>(std::lower_bound(m_runs.begin(), m_runs.end() - 1, run) - m_runs.begin());
}

std::size_t PiPolylineWalk::segmentBehind(std::size_t segment, double run) const {
  return std::max(segment + 1, segmentAt(m_runs[segment] + run));
}

bool PiPolylineWalk::pointAtDistance(std::size_t segment, bool isForwards, double distance, SbVec3f& point) const {
  const std::size_t numSegments = this->numSegments();
  const SbVec3f middle = middleOf(segment);
  const double runToMiddle = (m_runs[segment] + m_runs[segment + 1]) / 2;
  // The points of the walk are numbered from 0; a closed line is left at the point before the middle is reached again.
  const std::size_t num = m_isClosed ? numSegments : isForwards ? numSegments - segment : segment + 1;
  const auto indexOf = [&](std::size_t step) {
    if (isForwards) return segment + 1 + step <= numSegments ? segment + 1 + step : segment + 1 + step - numSegments;
    return step <= segment ? segment - step : segment + numSegments - step;
  };
  const auto runTo = [&](std::size_t step) {
    const double run = m_runs[indexOf(step)];
    if (isForwards) return segment + 1 + step <= numSegments ? run - runToMiddle : run + length() - runToMiddle;
    return step <= segment ? runToMiddle - run : runToMiddle - run + length();
  };

  // No point is further away than the way to it is long, so that many needn't be looked at.
  std::size_t step = 0;
  double reach = distance;
  while (true) {
    std::size_t stride = 1;
    while (step + stride < num && runTo(step + stride) < reach) stride *= 2;
    std::size_t last = std::min(step + stride, num);
    while (step < last) {
      const std::size_t half = step + (last - step) / 2;
      if (runTo(half) < reach)
        step = half + 1;
      else
        last = half;
    }
    if (step == num) return false;
    const SbVec3f& reached = m_points[indexOf(step)];
    const double away = distanceBetween(reached, middle);
    if (away >= distance) {
      point = pointBetween(step == 0 ? middle : m_points[indexOf(step - 1)], reached, middle, distance);
      return true;
    }
    reach = runTo(step) + (distance - away);
    if (++step == num) return false;
  }
}
