#ifndef ORMELLE_PIQUADMESHNORMALS_H
#define ORMELLE_PIQUADMESHNORMALS_H

#include <Inventor/SbVec3f.h>

class SoVertexProperty;

/// Normals for quad meshes behind `CLOCKWISE` shape hints.
///
/// The toolkit finds normals for a quad mesh that only fit `COUNTERCLOCKWISE` hints: behind `CLOCKWISE` ones the two
/// sides of the surface are lit the wrong way round. Handed over as the `vertexProperty` of the shape, these stay out
/// of the way of other shapes. They also spare the toolkit the search, which takes longer than this.
class PiQuadMeshNormals {
 public:
  /// One normal for each point, that of the surface as smooth as it can be; a single one for a plane parallel to z = 0
  /// whose faces all run the same way round.
  static SoVertexProperty* ofSurface(const SbVec3f* points, int numRows, int numColumns, bool isFlat);
  /// Writes the normal at each point: that of the surface as smooth as it can be, on the side from which the faces run
  /// clockwise.
  static void fill(const SbVec3f* points, int numRows, int numColumns, SbVec3f* normals);
};

#endif
