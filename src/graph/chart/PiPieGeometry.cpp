#include "graph/chart/PiPieGeometry.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr int kMaxSteps = 4096;

SbVec3f lifted(const SbVec2f& point, float z) { return SbVec3f(point[0], point[1], z); }

void addPolygon(PiPieGeometry::Faces& faces, std::initializer_list<SbVec3f> points,
                std::initializer_list<SbVec3f> normals) {
  faces.points.insert(faces.points.end(), points);
  faces.normals.insert(faces.normals.end(), normals);
  faces.sizes.push_back(static_cast<int>(points.size()));
}

/// The strip between the two arcs of a ring, or the fan of a disc; upwards or downwards.
void addLid(const PiPieGeometry::Sector& sector, const std::vector<SbVec2f>& outer, const std::vector<SbVec2f>& inner,
            float z, bool isUp, PiPieGeometry::Faces& faces) {
  const SbVec3f normal(0, 0, isUp ? 1.0f : -1.0f);
  for (std::size_t i = 0; i + 1 < outer.size(); ++i) {
    const SbVec3f a = lifted(outer[isUp ? i : i + 1], z);
    const SbVec3f b = lifted(outer[isUp ? i + 1 : i], z);
    if (inner.empty())
      addPolygon(faces, {lifted(sector.center, z), a, b}, {normal, normal, normal});
    else
      addPolygon(faces, {a, b, lifted(inner[isUp ? i + 1 : i], z), lifted(inner[isUp ? i : i + 1], z)},
                 {normal, normal, normal, normal});
  }
}

/// The wall along an arc, smooth, with its outside away from the centre or towards it.
void addArcWall(const PiPieGeometry::Sector& sector, const std::vector<SbVec2f>& points, float zMin, float zMax,
                bool isOutwards, PiPieGeometry::Faces& faces) {
  const auto normalAt = [&](const SbVec2f& point) {
    SbVec3f normal(point[0] - sector.center[0], point[1] - sector.center[1], 0);
    normal.normalize();
    return isOutwards ? normal : -normal;
  };
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const SbVec2f& a = points[isOutwards ? i : i + 1];
    const SbVec2f& b = points[isOutwards ? i + 1 : i];
    addPolygon(faces, {lifted(a, zMin), lifted(b, zMin), lifted(b, zMax), lifted(a, zMax)},
               {normalAt(a), normalAt(b), normalAt(b), normalAt(a)});
  }
}

/// The flat wall from `a` to `b`, whose outside lies to the right of that way.
void addFlatWall(const SbVec2f& a, const SbVec2f& b, float zMin, float zMax, PiPieGeometry::Faces& faces) {
  SbVec3f normal(b[1] - a[1], a[0] - b[0], 0);
  normal.normalize();
  addPolygon(faces, {lifted(a, zMin), lifted(b, zMin), lifted(b, zMax), lifted(a, zMax)},
             {normal, normal, normal, normal});
}

void addLine(const std::vector<SbVec2f>& points, float z, PiPieGeometry::Faces& lines) {
  for (const SbVec2f& point : points) lines.points.push_back(lifted(point, z));
  lines.sizes.push_back(static_cast<int>(points.size()));
}

std::vector<SbVec2f> innerArc(const PiPieGeometry::Sector& sector) {
  return sector.innerRadius > 0 ? PiPieGeometry::arc(sector, sector.innerRadius) : std::vector<SbVec2f>();
}

}  // namespace

void PiPieGeometry::Faces::clear() {
  points.clear();
  sizes.clear();
  normals.clear();
}

bool PiPieGeometry::isFullTurn(const Sector& sector) { return sector.end - sector.start >= kTurn * (1 - 1e-9); }

std::vector<SbVec2f> PiPieGeometry::arc(const Sector& sector, float radius) {
  const double step = std::isfinite(sector.angleStep) && sector.angleStep > 0 ? sector.angleStep : 0.05;
  const double sweep = std::clamp(sector.end - sector.start, 0.0, kTurn);
  const int numSteps = std::clamp(static_cast<int>(std::ceil(std::min(sweep / step, 1e6))), 1, kMaxSteps);
  std::vector<SbVec2f> points;
  points.reserve(static_cast<std::size_t>(numSteps) + 1);
  for (int i = 0; i <= numSteps; ++i) {
    const double angle = i == numSteps ? sector.end : sector.start + sweep * i / numSteps;
    points.emplace_back(sector.center[0] + radius * static_cast<float>(std::cos(angle)),
                        sector.center[1] + radius * static_cast<float>(std::sin(angle)));
  }
  if (isFullTurn(sector)) points.back() = points.front();
  return points;
}

void PiPieGeometry::addDisc(const Sector& sector, float z, Faces& faces) {
  std::vector<SbVec2f> outer = arc(sector, sector.radius);
  const std::vector<SbVec2f> inner = innerArc(sector);
  if (!inner.empty()) {
    addLid(sector, outer, inner, z, true, faces);
    return;
  }
  if (isFullTurn(sector))
    outer.pop_back();
  else
    faces.points.push_back(lifted(sector.center, z));
  for (const SbVec2f& point : outer) faces.points.push_back(lifted(point, z));
  faces.sizes.push_back(static_cast<int>(faces.points.size() - faces.normals.size()));
  faces.normals.resize(faces.points.size(), SbVec3f(0, 0, 1));
}

void PiPieGeometry::addSolid(const Sector& sector, float zMin, float zMax, Faces& faces) {
  if (zMin > zMax) std::swap(zMin, zMax);
  const std::vector<SbVec2f> outer = arc(sector, sector.radius);
  const std::vector<SbVec2f> inner = innerArc(sector);
  addLid(sector, outer, inner, zMax, true, faces);
  addLid(sector, outer, inner, zMin, false, faces);
  addArcWall(sector, outer, zMin, zMax, true, faces);
  addArcWall(sector, inner, zMin, zMax, false, faces);
  if (isFullTurn(sector)) return;
  addFlatWall(inner.empty() ? sector.center : inner.front(), outer.front(), zMin, zMax, faces);
  addFlatWall(outer.back(), inner.empty() ? sector.center : inner.back(), zMin, zMax, faces);
}

void PiPieGeometry::addOutline(const Sector& sector, float z, Faces& lines) {
  std::vector<SbVec2f> outer = arc(sector, sector.radius);
  const std::vector<SbVec2f> inner = innerArc(sector);
  if (isFullTurn(sector)) {
    addLine(outer, z, lines);
    if (!inner.empty()) addLine(inner, z, lines);
    return;
  }
  if (inner.empty())
    outer.push_back(sector.center);
  else
    outer.insert(outer.end(), inner.rbegin(), inner.rend());
  outer.push_back(outer.front());
  addLine(outer, z, lines);
}

void PiPieGeometry::addSolidEdges(const Sector& sector, float zMin, float zMax, Faces& lines) {
  addOutline(sector, zMax, lines);
  addOutline(sector, zMin, lines);
  if (isFullTurn(sector)) return;
  const std::vector<SbVec2f> outer = arc(sector, sector.radius);
  const std::vector<SbVec2f> inner = innerArc(sector);
  std::vector<SbVec2f> uprights = {outer.front(), outer.back()};
  if (inner.empty())
    uprights.push_back(sector.center);
  else
    uprights.insert(uprights.end(), {inner.front(), inner.back()});
  for (const SbVec2f& foot : uprights) {
    lines.points.push_back(lifted(foot, zMin));
    lines.points.push_back(lifted(foot, zMax));
    lines.sizes.push_back(2);
  }
}
