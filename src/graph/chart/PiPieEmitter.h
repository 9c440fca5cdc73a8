#ifndef ORMELLE_PIPIEEMITTER_H
#define ORMELLE_PIPIEEMITTER_H

#include <functional>

#include <Inventor/SbColor.h>
#include <Inventor/fields/SoMFColor.h>

#include "graph/chart/PiPieGeometry.h"

class SoGroup;

/// Turns the geometry of a pie into nodes.
class PiPieEmitter {
 public:
  /// Polygons in one colour, without normals of their own if they are flat.
  static void addFaces(const PiPieGeometry::Faces& faces, bool hasNormals, SoGroup* group);
  static void addLines(const PiPieGeometry::Faces& lines, SoGroup* group);
  static void addColor(const SbColor& color, SoGroup* group);

  /// That of slice `index`, in turn; `index` -1 is the group. Without colours, one of eight.
  static SbColor color(const SoMFColor& colors, int index);
};

#endif
