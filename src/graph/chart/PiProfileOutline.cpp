#include "graph/chart/PiProfileOutline.h"

#include <Ormelle/PoCircularProfile.h>
#include <Ormelle/PoEllipticProfile.h>
#include <Ormelle/PoProfileCoordinate2.h>
#include <Ormelle/PoSquareProfile.h>

#include <algorithm>
#include <cmath>

#include "graph/chart/PiFiniteRuns.h"

namespace {

constexpr int kNumCircleCorners = 12;

bool isLength(float length) { return length > 0 && std::isfinite(length); }

std::vector<SbVec2f> ellipse(float xRadius, float yRadius) {
  std::vector<SbVec2f> corners;
  if (!isLength(xRadius) || !isLength(yRadius)) return corners;
  for (int i = 0; i < kNumCircleCorners; ++i) {
    const double angle = 2 * M_PI * i / kNumCircleCorners;
    corners.emplace_back(static_cast<float>(xRadius * std::cos(angle)), static_cast<float>(yRadius * std::sin(angle)));
  }
  return corners;
}

/// Turned round if it runs clockwise.
std::vector<SbVec2f> polygon(const SoMFVec2f& points) {
  std::vector<SbVec2f> corners(points.getValues(0), points.getValues(0) + points.getNum());
  double twiceArea = 0;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const SbVec2f &p = corners[i], &q = corners[(i + 1) % corners.size()];
    if (!PiFiniteRuns::isFinite(p)) return {};
    twiceArea += static_cast<double>(p[0]) * q[1] - static_cast<double>(q[0]) * p[1];
  }
  if (corners.size() < 3 || twiceArea == 0) return {};
  if (twiceArea < 0) std::reverse(corners.begin(), corners.end());
  return corners;
}

template <class Profile>
const Profile* as(const PoProfile& profile) {
  return profile.isOfType(Profile::getClassTypeId()) ? static_cast<const Profile*>(&profile) : nullptr;
}

}  // namespace

std::vector<SbVec2f> circleOutline(float radius) { return ellipse(radius, radius); }

std::vector<SbVec2f> outlineOf(const PoProfile& profile) {
  if (const auto* circle = as<PoCircularProfile>(profile)) return circleOutline(circle->radius.getValue());
  if (const auto* oval = as<PoEllipticProfile>(profile))
    return ellipse(oval->xRadius.getValue(), oval->yRadius.getValue());
  if (const auto* corners = as<PoProfileCoordinate2>(profile)) return polygon(corners->point);
  if (const auto* square = as<PoSquareProfile>(profile)) {
    const float x = square->width.getValue() / 2, y = square->height.getValue() / 2;
    if (isLength(x) && isLength(y)) return {SbVec2f(x, y), SbVec2f(-x, y), SbVec2f(-x, -y), SbVec2f(x, -y)};
  }
  return {};
}
