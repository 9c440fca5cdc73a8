#ifndef ORMELLE_PIPIEGEOMETRY_H
#define ORMELLE_PIPIEGEOMETRY_H

#include <vector>

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

/// Outlines and solids of the slices of a pie.
class PiPieGeometry {
 public:
  /// A slice of a disc, or of a ring if the inner radius is greater than 0. Angles in radians, the end after the start
  /// and at most a full turn.
  struct Sector {
    SbVec2f center = SbVec2f(0, 0);
    float innerRadius = 0;
    float radius = 1;
    double start = 0;
    double end = 0;
    /// The largest angle between two points of an arc; out of reason (0, negative, not finite) means 0.05, and what
    /// would give more than 4096 steps a turn is taken as that.
    float angleStep = 0.05f;
  };

  /// Polygons (or lines) by their points and the number of points of each.
  struct Faces {
    std::vector<SbVec3f> points;
    std::vector<int> sizes;
    std::vector<SbVec3f> normals;  ///< one a point

    void clear();
  };

  /// The points of the outer arc from start to end, both included.
  static std::vector<SbVec2f> arc(const Sector& sector, float radius);

  /// The slice at a height, seen from above: one polygon, which begins at the centre and is concave beyond half a turn;
  /// of a ring, quadrangles.
  static void addDisc(const Sector& sector, float z, Faces& faces);
  /// The closed solid between two heights: top, bottom and walls, all outwards. A full turn has no walls along radii.
  static void addSolid(const Sector& sector, float zMin, float zMax, Faces& faces);
  /// The outline at a height as one closed line, of a full turn without the radius (of a ring: two lines).
  static void addOutline(const Sector& sector, float z, Faces& lines);
  /// The edges of the solid: both outlines and the upright edges.
  static void addSolidEdges(const Sector& sector, float zMin, float zMax, Faces& lines);

  static bool isFullTurn(const Sector& sector);
};

#endif
