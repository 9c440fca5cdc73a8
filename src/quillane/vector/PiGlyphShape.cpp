#include "quillane/vector/PiGlyphShape.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

constexpr double kTurn = 6.283185307179586;

SbVec3f onCircle(int i, int num) {
  const double angle = kTurn * i / num;
  return SbVec3f(0, static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)));
}

}  // namespace

int PiGlyphShape::numParts() const { return static_cast<int>(std::count(indices.begin(), indices.end(), -1)); }

void PiGlyphShape::addFace(std::initializer_list<int> counterclockwise) {
  indices.insert(indices.end(), std::make_reverse_iterator(counterclockwise.end()),
                 std::make_reverse_iterator(counterclockwise.begin()));
  indices.push_back(-1);
}

/// A half turn about z would do for solids; a mirror keeps flat shapes in their plane too, and turns faces over.
void PiGlyphShape::reverse() {
  for (SbVec3f& point : points) point[0] = 1 - point[0];
  for (SbVec3f& normal : normals) normal[0] = -normal[0];
  auto first = indices.begin();
  while (first != indices.end()) {
    const auto last = std::find(first, indices.end(), -1);
    std::reverse(first, last);
    first = last + 1;
  }
}

PiGlyphShape PiGlyphShape::point() {
  PiGlyphShape shape;
  shape.kind = POINTS;
  shape.points = {SbVec3f(1, 0, 0)};
  return shape;
}

PiGlyphShape PiGlyphShape::line() {
  PiGlyphShape shape;
  shape.kind = LINES;
  shape.points = {SbVec3f(0, 0, 0), SbVec3f(1, 0, 0)};
  shape.indices = {0, 1, -1};
  return shape;
}

PiGlyphShape PiGlyphShape::chevron(bool isReversed) {
  PiGlyphShape shape;
  shape.kind = LINES;
  shape.points = {SbVec3f(0, 1, 0), SbVec3f(1, 0, 0), SbVec3f(0, -1, 0)};
  shape.indices = {0, 1, 2, -1};
  if (isReversed) shape.reverse();
  return shape;
}

PiGlyphShape PiGlyphShape::triangle(bool isReversed) {
  PiGlyphShape shape;
  shape.points = {SbVec3f(0, 1, 0), SbVec3f(0, -1, 0), SbVec3f(1, 0, 0)};
  shape.normals.assign(3, SbVec3f(0, 0, 1));
  shape.addFace({0, 1, 2});
  if (isReversed) shape.reverse();
  return shape;
}

PiGlyphShape PiGlyphShape::rectangle() {
  PiGlyphShape shape;
  shape.points = {SbVec3f(0, 1, 0), SbVec3f(0, -1, 0), SbVec3f(1, -1, 0), SbVec3f(1, 1, 0)};
  shape.normals.assign(4, SbVec3f(0, 0, 1));
  shape.addFace({0, 1, 2, 3});
  return shape;
}

PiGlyphShape PiGlyphShape::cylinder(int numSides) {
  PiGlyphShape shape;
  for (const float x : {0.0f, 1.0f})
    for (int i = 0; i < numSides; ++i) {
      shape.normals.push_back(onCircle(i, numSides));
      shape.points.push_back(shape.normals.back() + SbVec3f(x, 0, 0));
    }
  for (int i = 0; i < numSides; ++i) {
    const int next = (i + 1) % numSides;
    shape.addFace({i, next, numSides + next, numSides + i});
  }
  return shape;
}

PiGlyphShape PiGlyphShape::cone(int numSides, float radiusOfHeight, bool isReversed) {
  PiGlyphShape shape;
  // The rim, the apex once for each side, and the rim again for the base.
  for (int i = 0; i < numSides; ++i) {
    SbVec3f normal = onCircle(i, numSides) + SbVec3f(radiusOfHeight, 0, 0);
    normal.normalize();
    shape.points.push_back(onCircle(i, numSides));
    shape.normals.push_back(normal);
  }
  for (int i = 0; i < numSides; ++i) {
    SbVec3f normal = onCircle(2 * i + 1, 2 * numSides) + SbVec3f(radiusOfHeight, 0, 0);
    normal.normalize();
    shape.points.emplace_back(1.0f, 0.0f, 0.0f);
    shape.normals.push_back(normal);
  }
  for (int i = 0; i < numSides; ++i) {
    shape.points.push_back(onCircle(i, numSides));
    shape.normals.emplace_back(-1.0f, 0.0f, 0.0f);
  }
  for (int i = 0; i < numSides; ++i) shape.addFace({i, (i + 1) % numSides, numSides + i});
  for (int i = 0; i < numSides; ++i) shape.indices.push_back(2 * numSides + i);
  shape.indices.push_back(-1);
  if (isReversed) shape.reverse();
  return shape;
}

PiGlyphShape PiGlyphShape::coarseCone(int numSides, float radiusOfHeight, bool isReversed) {
  PiGlyphShape shape;
  for (int i = 0; i < numSides; ++i) {
    SbVec3f normal = onCircle(i, numSides) + SbVec3f(radiusOfHeight, 0, 0);
    normal.normalize();
    shape.points.push_back(onCircle(i, numSides));
    shape.normals.push_back(normal);
  }
  shape.points.emplace_back(1.0f, 0.0f, 0.0f);
  shape.normals.emplace_back(1.0f, 0.0f, 0.0f);
  for (int i = 0; i < numSides; ++i) shape.addFace({i, (i + 1) % numSides, numSides});
  for (int i = 0; i < numSides; ++i) shape.indices.push_back(i);
  shape.indices.push_back(-1);
  if (isReversed) shape.reverse();
  return shape;
}

PiGlyphShape PiGlyphShape::sphere(int numSides) {
  PiGlyphShape shape;
  const int numRings = std::max(2, numSides / 2) - 1;
  shape.points.emplace_back(-1.0f, 0.0f, 0.0f);
  for (int ring = 1; ring <= numRings; ++ring) {
    const double angle = kTurn / 2 * ring / (numRings + 1);
    for (int i = 0; i < numSides; ++i)
      shape.points.push_back(SbVec3f(static_cast<float>(-std::cos(angle)), 0, 0) +
                             onCircle(i, numSides) * static_cast<float>(std::sin(angle)));
  }
  shape.points.emplace_back(1.0f, 0.0f, 0.0f);
  shape.normals = shape.points;
  const int last = static_cast<int>(shape.points.size()) - 1;
  for (int i = 0; i < numSides; ++i) {
    const int next = (i + 1) % numSides;
    shape.addFace({0, 1 + next, 1 + i});
    for (int ring = 0; ring + 1 < numRings; ++ring) {
      const int low = 1 + ring * numSides;
      const int high = low + numSides;
      shape.addFace({low + i, low + next, high + next, high + i});
    }
    shape.addFace({last - numSides + i, last - numSides + next, last});
  }
  return shape;
}
