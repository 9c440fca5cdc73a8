#include <Ormelle/PoStreamSurface.h>

#include <algorithm>
#include <cmath>
#include <span>

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoShapeHints.h>

#include "quillane/rep/PiMotionNodes.h"
#include "quillane/rep/PiStreamColors.h"
#include "quillane/stream/PiStreamPath.h"
#include "quillane/stream/PiStreamStrip.h"

PO_KIT_SOURCE(PoStreamSurface)

namespace {

constexpr int kMaxLines = 1'000'000;

/// Where the paths of all rakes start, rake after rake; none if they can't make a surface.
std::vector<SbVec3f> rakeStarts(const SoMFVec3f& middles, SbVec3f direction, float length, int numLines) {
  std::vector<SbVec3f> starts;
  const float norm = direction.length();
  if (!(norm > 0) || !std::isfinite(norm) || !std::isfinite(length) || length == 0 || numLines < 2) return starts;
  direction /= norm;
  for (int rake = 0; rake < middles.getNum(); ++rake)
    for (int line = 0; line < numLines; ++line) {
      const float place = static_cast<float>(line) / static_cast<float>(numLines - 1) - 0.5F;
      starts.push_back(middles[rake] + direction * (place * length));
    }
  return starts;
}

/// The surface of all rakes, from points that paths share.
struct Surface {
  std::vector<SbVec3f> points;
  std::vector<float> values;
  std::vector<int> triangles;
  std::vector<int> rakes;  // of each triangle
};

Surface surfaceOf(const std::vector<PiStreamPath>& paths, int numLines) {
  Surface surface;
  std::vector<int> firsts;
  const auto pointsOf = [&paths](std::size_t path) {
    return std::span(paths[path].getPoints(), static_cast<std::size_t>(std::max(0, paths[path].getNumPoints())));
  };
  for (std::size_t path = 0; path < paths.size(); ++path) {
    firsts.push_back(static_cast<int>(surface.points.size()));
    const auto points = pointsOf(path);
    surface.points.insert(surface.points.end(), points.begin(), points.end());
    surface.values.insert(surface.values.end(), paths[path].getValues(), paths[path].getValues() + points.size());
  }
  for (std::size_t path = 0; path + 1 < paths.size(); ++path) {
    const std::size_t lines = static_cast<std::size_t>(numLines);
    if (path % lines + 1 == lines) continue;  // the last of its rake
    PiStreamStrip::join(pointsOf(path), firsts[path], pointsOf(path + 1), firsts[path + 1], surface.triangles);
    surface.rakes.resize(surface.triangles.size() / 3, static_cast<int>(path / lines));
  }
  return surface;
}

/// Appends the mapped colour of each point, and takes away the triangles with a corner that has none.
void mapColors(Surface& surface, PiStreamColors& colorOf) {
  std::vector<bool> hasColor(surface.points.size());
  for (std::size_t point = 0; point < surface.points.size(); ++point) {
    hasColor[point] = colorOf.append(surface.values[point]);
    if (!hasColor[point]) colorOf.append(SbColor(0, 0, 0));  // of nothing drawn
  }
  std::vector<int> kept;
  for (std::size_t t = 0; t < surface.triangles.size(); t += 3)
    if (std::all_of(&surface.triangles[t], &surface.triangles[t] + 3,
                    [&](int point) { return hasColor[static_cast<std::size_t>(point)]; }))
      kept.insert(kept.end(), &surface.triangles[t], &surface.triangles[t] + 3);
  surface.triangles = std::move(kept);
}

std::vector<int32_t> facesOf(const std::vector<int>& triangles) {
  std::vector<int32_t> faces;
  faces.reserve(triangles.size() / 3 * 4);
  for (std::size_t t = 0; t < triangles.size(); t += 3)
    faces.insert(faces.end(), {triangles[t], triangles[t + 1], triangles[t + 2], -1});
  return faces;
}

}  // namespace

PoStreamSurface::PoStreamSurface() {
  PO_KIT_CONSTRUCTOR(PoStreamSurface);
  PO_KIT_ADD_CATALOG_ENTRY(groupStreamSurface, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(rakeOrientation, (1.0F, 0.0F, 0.0F));
  PO_KIT_ADD_FIELD(numLinesPerRake, (3));
  PO_KIT_ADD_FIELD(rakeLength, (1.0F));
  PO_KIT_CONSTRUCTED(PoStreamSurface);
  for (SoField* field : std::initializer_list<SoField*>{&rakeOrientation, &numLinesPerRake, &rakeLength})
    watchField(*field);
  ownPart(groupStreamSurface);
  beginWatching();
}

PoStreamSurface::~PoStreamSurface() = default;

void PoStreamSurface::rebuild() {
  preRebuild();
  const int numLines = std::min(numLinesPerRake.getValue(), std::max(2, kMaxLines / std::max(1, startPoints.getNum())));
  const std::vector<SbVec3f> starts =
      rakeStarts(startPoints, rakeOrientation.getValue(), rakeLength.getValue(), numLines);
  Surface surface = surfaceOf(integratePaths(static_cast<int>(starts.size()), starts.data()), numLines);
  PiStreamColors colorOf(m_currentDataMapping, colors);
  if (colorOf.areMapped()) mapColors(surface, colorOf);

  auto* group = new SoGroup;
  if (!surface.triangles.empty()) {
    PiMotionNodes::add<SoShapeHints>(group)->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;  // lit from both sides
    PiMotionNodes::addPoints(group, surface.points);
    const std::vector<SbVec3f> normals = PiStreamStrip::normalsOf(surface.points, surface.triangles);
    PiMotionNodes::add<SoNormal>(group)->vector.setValues(0, static_cast<int>(normals.size()), normals.data());
    PiMotionNodes::add<SoNormalBinding>(group)->value = SoNormalBinding::PER_VERTEX_INDEXED;
    auto* shape = new SoIndexedFaceSet;
    if (colorOf.areMapped()) colorOf.addTo(group, SoMaterialBinding::PER_VERTEX_INDEXED);
    if (colorOf.areOfPaths()) {
      for (int rake = 0; rake < startPoints.getNum(); ++rake) colorOf.append(*colorOf.ofPath(rake));
      colorOf.addTo(group, SoMaterialBinding::PER_FACE_INDEXED);
      shape->materialIndex.setValues(0, static_cast<int>(surface.rakes.size()), surface.rakes.data());
    }
    const std::vector<int32_t> faces = facesOf(surface.triangles);
    shape->coordIndex.setValues(0, static_cast<int>(faces.size()), faces.data());
    group->addChild(shape);
  }
  setPart("groupStreamSurface", group);
  postRebuild();
}
