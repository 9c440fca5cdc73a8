#ifndef ORMELLE_POSTREAMPOINTMOTION_H
#define ORMELLE_POSTREAMPOINTMOTION_H

#include <vector>

#include <Inventor/SbColor.h>

#include <Ormelle/PoStreamParticleMotion.h>

/// Particles that move along the paths of a field of vectors, as points.
///
/// Points without a colour of their own have that of the traversal state. All points of a frame are one SoPointSet.
///
/// @code
/// mesh.addVecsSet(0, velocities, "velocity");
/// auto* particles = new PoStreamPointMotion;
/// particles->setMesh(&mesh);
/// particles->vecsIndex = 0;
/// particles->startPoints.setValues(0, numStarts, starts);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupStreamPointMotion  SoGroup  of a SoDrawStyle and a SoBlinker
/// @endcode
class ORMELLE_API PoStreamPointMotion : public PoStreamParticleMotion {
  PO_KIT_HEADER(PoStreamPointMotion, PoStreamParticleMotion);
  PO_KIT_CATALOG_ENTRY_HEADER(groupStreamPointMotion);

 public:
  /// In pixels; 3 by default.
  SoSFFloat pointSize;

  PoStreamPointMotion();

  void rebuild() override;

 protected:
  ~PoStreamPointMotion() override;

  void newAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points) override;
  void newFrame(SoGroup* group, int frame) override;
  void endFrame(SoGroup* group, int frame) override;
  void newParticle(const SbVec3f& point, const SbVec3f& velocity, const SbVec3f& next, const SbColor* color,
                   int index) override;

 private:
  std::vector<SbVec3f> m_points;  ///< of the frame under way
  std::vector<SbColor> m_colors;
};

#endif
