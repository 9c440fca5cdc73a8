#ifndef ORMELLE_PIPLANEDISTANCES_H
#define ORMELLE_PIPLANEDISTANCES_H

#include <cstddef>
#include <optional>
#include <span>

#include "quillane/surface/PiGrowBuffer.h"
#include "quillane/surface/PiSectionPlane.h"

class PbMesh3D;

/// The distances of the nodes of a mesh along the normal of a plane, from the origin: the level surface where they are
/// the distance of the plane is the section by it. They are kept for as long as the normal stays about the same, so
/// that a plane that moves along its normal costs no pass over the nodes.
class PiPlaneDistances {
 public:
  /// Brings the array up to date and gives it: one value for each node; null if the plane isn't finite. Nodes that have
  /// no number in `values`, if that isn't null, have none here either; `valuesId` names what these are.
  const float* update(const PbMesh3D& mesh, const PiSectionPlane& plane, const float* values, unsigned valuesId);

  /// The plane whose level the distance is: the normal for which the array was made, and the distance asked for last.
  PiSectionPlane plane() const { return m_plane.value_or(PiSectionPlane(1, 0, 0, 0)); }
  /// Grows whenever the array or the distance of the plane changes.
  unsigned counter() const { return m_counter; }
  /// How often the array was computed. For tests.
  int numPasses() const { return m_numPasses; }
  std::size_t memorySize() const { return m_distances.capacity() * sizeof(float); }

 private:
  void compute(const PbMesh3D& mesh);
  bool hasGaps(std::span<const float> values, unsigned valuesId);

  PiGrowBuffer<float> m_distances;
  std::optional<PiSectionPlane> m_plane;  // for which they are, with the distance that was asked for last
  unsigned m_geometry = 0;
  std::optional<unsigned> m_gaps;   // the values that undefined distances are those of
  std::optional<unsigned> m_known;  // the values of which it is known whether they have gaps
  bool m_hasGaps = false;
  unsigned m_counter = 0;
  int m_numPasses = 0;
};

#endif
