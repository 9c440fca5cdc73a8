#include "support/Soup.h"

#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoCoordinateElement.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/nodes/SoNode.h>
#include <Inventor/nodes/SoQuadMesh.h>

#include <cmath>
#include <set>
#include <tuple>

namespace {

SoupVertex vertexOf(SoCallbackAction* action, const SbVec3f& point, const SbVec3f& normal, int material) {
  SoupVertex vertex;
  action->getModelMatrix().multVecMatrix(point, vertex.point);
  action->getModelMatrix().multDirMatrix(normal, vertex.normal);
  SoState* state = action->getState();
  vertex.color = SoLazyElement::getDiffuse(state, material);
  vertex.transparency = SoLazyElement::getTransparency(state, material);
  return vertex;
}

SoupVertex vertexOf(SoCallbackAction* action, const SoPrimitiveVertex* vertex) {
  return vertexOf(action, vertex->getPoint(), vertex->getNormal(), vertex->getMaterialIndex());
}

void addTriangle(void* soup, SoCallbackAction* action, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b,
                 const SoPrimitiveVertex* c) {
  static_cast<Soup*>(soup)->triangles.push_back({vertexOf(action, a), vertexOf(action, b), vertexOf(action, c)});
}

void addSegment(void* soup, SoCallbackAction* action, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b) {
  static_cast<Soup*>(soup)->segments.push_back({vertexOf(action, a), vertexOf(action, b)});
}

// The toolkit draws a quad mesh with a material for each face rightly, but hands wrong material indices to callbacks.
SoCallbackAction::Response readQuadMesh(void* soup, SoCallbackAction* action, const SoNode* node) {
  if (action->getMaterialBinding() != SoMaterialBinding::PER_FACE) return SoCallbackAction::CONTINUE;
  const auto* mesh = static_cast<const SoQuadMesh*>(node);
  const SoCoordinateElement* points = SoCoordinateElement::getInstance(action->getState());
  const int width = mesh->verticesPerRow.getValue();
  const int height = mesh->verticesPerColumn.getValue();
  int cell = 0;
  for (int row = 0; row + 1 < height; ++row) {
    for (int column = 0; column + 1 < width; ++column, ++cell) {
      const int first = mesh->startIndex.getValue() + row * width + column;
      const auto corner = [&](int index) { return vertexOf(action, points->get3(index), SbVec3f(0, 0, 0), cell); };
      auto& triangles = static_cast<Soup*>(soup)->triangles;
      triangles.push_back({corner(first), corner(first + width), corner(first + 1)});
      triangles.push_back({corner(first + 1), corner(first + width), corner(first + width + 1)});
    }
  }
  return SoCallbackAction::PRUNE;
}

double cross(const SbVec3f& a, const SbVec3f& b, float x, float y) {
  return (static_cast<double>(b[0]) - a[0]) * (static_cast<double>(y) - a[1]) -
         (static_cast<double>(b[1]) - a[1]) * (static_cast<double>(x) - a[0]);
}

/// Barycentric coordinates in the projection on z = 0.
bool locate(const SoupTriangle& t, float x, float y, double weights[3]) {
  const double whole = cross(t[0].point, t[1].point, t[2].point[0], t[2].point[1]);
  if (whole == 0) return false;
  for (int i = 0; i < 3; ++i) {
    weights[i] = cross(t[(i + 1) % 3].point, t[(i + 2) % 3].point, x, y) / whole;
    if (weights[i] < -1e-6) return false;
  }
  return true;
}

template <class Part>
void extend(SbBox3f& box, const std::vector<Part>& parts) {
  for (const Part& part : parts)
    for (const SoupVertex& vertex : part) box.extendBy(vertex.point);
}

template <class Part>
bool areFinite(const std::vector<Part>& parts) {
  for (const Part& part : parts)
    for (const SoupVertex& vertex : part)
      for (int i = 0; i < 3; ++i)
        if (!std::isfinite(vertex.point[i]) || !std::isfinite(vertex.normal[i])) return false;
  return true;
}

template <class Part>
void addColors(std::set<std::tuple<float, float, float>>& colors, const std::vector<Part>& parts) {
  for (const Part& part : parts)
    for (const SoupVertex& vertex : part) colors.emplace(vertex.color[0], vertex.color[1], vertex.color[2]);
}

}  // namespace

double areaOf(const SoupTriangle& triangle) {
  const SbVec3f a = triangle[1].point - triangle[0].point;
  const SbVec3f b = triangle[2].point - triangle[0].point;
  return a.cross(b).length() / 2.0;
}

double lengthOf(const SoupSegment& segment) { return (segment[1].point - segment[0].point).length(); }

Soup Soup::of(SoNode* scene) {
  Soup soup;
  scene->ref();
  SoCallbackAction action;
  action.addPreCallback(SoQuadMesh::getClassTypeId(), &readQuadMesh, &soup);
  action.addTriangleCallback(SoShape::getClassTypeId(), &addTriangle, &soup);
  action.addLineSegmentCallback(SoShape::getClassTypeId(), &addSegment, &soup);
  action.apply(scene);
  scene->unrefNoDelete();
  return soup;
}

double Soup::area() const {
  double sum = 0;
  for (const SoupTriangle& triangle : triangles) sum += areaOf(triangle);
  return sum;
}

double Soup::length() const {
  double sum = 0;
  for (const SoupSegment& segment : segments) sum += lengthOf(segment);
  return sum;
}

SbBox3f Soup::box() const {
  SbBox3f box;
  extend(box, triangles);
  extend(box, segments);
  return box;
}

bool Soup::isFinite() const { return areFinite(triangles) && areFinite(segments); }

int Soup::numColors() const {
  std::set<std::tuple<float, float, float>> colors;
  addColors(colors, triangles);
  addColors(colors, segments);
  return static_cast<int>(colors.size());
}

const SoupTriangle* Soup::triangleAt(float x, float y) const {
  double weights[3];
  for (const SoupTriangle& triangle : triangles)
    if (locate(triangle, x, y, weights)) return &triangle;
  return nullptr;
}

SbColor Soup::colorAt(float x, float y) const {
  SbColor color(0, 0, 0);
  double weights[3];
  const SoupTriangle* triangle = triangleAt(x, y);
  if (!triangle || !locate(*triangle, x, y, weights)) return color;
  for (std::size_t i = 0; i < 3; ++i) color += (*triangle)[i].color * static_cast<float>(weights[i]);
  return color;
}
