#ifndef ORMELLE_PIPIEEMITTER_H
#define ORMELLE_PIPIEEMITTER_H

#include <Inventor/SbColor.h>

#include "graph/chart/PiPieGeometry.h"

class SoGroup;

/// Turns the geometry of a pie into nodes.
class PiPieEmitter {
 public:
  /// Polygons in one colour, without normals of their own if they are flat.
  static void addFaces(const PiPieGeometry::Faces& faces, bool hasNormals, SoGroup* group);
  static void addLines(const PiPieGeometry::Faces& lines, SoGroup* group);
  static void addColor(const SbColor& color, SoGroup* group);
};

#endif
