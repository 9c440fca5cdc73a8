#ifndef ORMELLE_POSTREAMLINEMOTION_H
#define ORMELLE_POSTREAMLINEMOTION_H

#include <vector>

#include <Inventor/SbColor.h>
#include <Inventor/fields/SoSFColor.h>

#include <Ormelle/PoStreamParticleMotion.h>

/// The paths of a field of vectors as lines, on which pulses of another colour move: the way from a sample to the next.
///
/// @code
/// mesh.addVecsSet(0, velocities, "velocity");
/// auto* pulses = new PoStreamLineMotion;
/// pulses->setMesh(&mesh);
/// pulses->vecsIndex = 0;
/// pulses->startPoints.setValues(0, numStarts, starts);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupStreamLineMotion  SoGroup  of the paths (a SoLineSet in a SoSeparator) and a SoBlinker, whose frames take the
///                                   pulses from the vertices of the paths
/// @endcode
class ORMELLE_API PoStreamLineMotion : public PoStreamParticleMotion {
  PO_KIT_HEADER(PoStreamLineMotion, PoStreamParticleMotion);
  PO_KIT_CATALOG_ENTRY_HEADER(groupStreamLineMotion);

 public:
  /// Of paths and pulses, in pixels; 2 by default.
  SoSFFloat lineWidth;
  /// Of the paths; (0.4, 0, 0) by default.
  SoSFColor lineColor;
  /// Of pulses that have no colour from a data mapping or from `colors`; (0.9, 0, 0) by default.
  SoSFColor particleColor;

  PoStreamLineMotion();

  void rebuild() override;

 protected:
  ~PoStreamLineMotion() override;

  void newAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points) override;
  void newFrame(SoGroup* group, int frame) override;
  void endFrame(SoGroup* group, int frame) override;
  void newParticle(const SbVec3f& point, const SbVec3f& velocity, const SbVec3f& next, const SbColor* color,
                   int index) override;

 private:
  const SbVec3f* m_vertices = nullptr;  ///< of all paths, during a rebuild
  std::vector<int> m_indices;           ///< of the frame under way
  std::vector<SbColor> m_colors;
};

#endif
