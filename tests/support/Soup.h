#ifndef ORMELLE_TESTS_SOUP_H
#define ORMELLE_TESTS_SOUP_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>

#include <array>
#include <vector>

class SoNode;

/// A vertex as it is drawn: in world coordinates, with the material it gets.
struct SoupVertex {
  SbVec3f point;
  SbVec3f normal;
  SbColor color;
  float transparency;
};

using SoupTriangle = std::array<SoupVertex, 3>;
using SoupSegment = std::array<SoupVertex, 2>;

double areaOf(const SoupTriangle& triangle);
double lengthOf(const SoupSegment& segment);

/// What a scene draws, taken apart into triangles and line segments. Reading it traverses the scene, as a frame would.
struct Soup {
  std::vector<SoupTriangle> triangles;
  std::vector<SoupSegment> segments;

  static Soup of(SoNode* scene);

  double area() const;
  double length() const;
  SbBox3f box() const;
  bool isFinite() const;
  /// Number of distinct colours.
  int numColors() const;
  /// The drawn triangle whose projection on z = 0 holds the point; null if there is none.
  const SoupTriangle* triangleAt(float x, float y) const;
  /// The colour that the renderer interpolates there, black where nothing is drawn.
  SbColor colorAt(float x, float y) const;
};

#endif
