#ifndef ORMELLE_PISURFACENORMALS_H
#define ORMELLE_PISURFACENORMALS_H

#include <cstddef>
#include <cstdint>
#include <span>

#include <Inventor/SbVec3f.h>

#include "quillane/surface/PiGrowBuffer.h"

/// Normals of a surface of polygons or triangle strips, for light. They stand on the side from which the corners of a
/// facet run clockwise.
///
/// Without a crease angle each polygon, and each triangle of a strip, has one. With one each point has one: the sum of
/// those of the facets round it, by their area, made 1 long. Where facets round a point meet at more than the angle,
/// each of their corners there has a normal of its own: the sum over the facets that are within the angle of its own.
class PiSurfaceNormals {
 public:
  /// `indices` has a -1 behind each facet. An angle that isn't above 0 makes normals of facets.
  void make(std::span<const std::int32_t> indices, std::span<const SbVec3f> points, bool areStrips, float creaseAngle);

  std::span<const SbVec3f> normals() const { return {m_normals.data(), m_normals.size()}; }
  /// For each of the indices given the normal that belongs to it; empty if it is that of the point.
  std::span<const std::int32_t> normalIndices() const { return {m_indices.data(), m_indices.size()}; }
  std::size_t memorySize() const;

 private:
  /// A corner at a point where the surface has a crease: `place` among the indices given.
  struct Corner {
    int point;
    std::size_t place;
    SbVec3f normal;  // of its facet
  };

  void makeFlat();
  void makeSmooth(float creaseAngle);
  void splitCreases(float cosine);
  /// Calls `use(normal, corners...)` for each polygon or triangle: its normal, as long as twice its area, and the
  /// places of its corners among the indices.
  template <class Use>
  void forEachFacet(Use&& use) const;

  std::span<const std::int32_t> m_given;
  std::span<const SbVec3f> m_points;
  bool m_areStrips = false;
  PiGrowBuffer<SbVec3f> m_normals;
  PiGrowBuffer<std::int32_t> m_indices;
  PiGrowBuffer<std::uint8_t> m_isCreased;  // of each point
  PiGrowBuffer<Corner> m_corners;
};

#endif
