#ifndef ORMELLE_POSTREAMTADPOLEMOTION_H
#define ORMELLE_POSTREAMTADPOLEMOTION_H

#include <vector>

#include <Inventor/SbColor.h>
#include <Inventor/fields/SoSFColor.h>

#include <Ormelle/PoStreamParticleMotion.h>

/// Particles that move along the paths of a field of vectors, as short lines along the velocity with a bright spot: the
/// longer, the faster.
///
/// A tadpole reaches from three quarters of its velocity times `lengthFactor` behind its particle to a quarter in front
/// of it. Its ends have `backColor`, and the particle its own colour, or `particleColor`. With `BACKWARD` integration
/// they look the way of the vectors all the same.
///
/// @code
/// mesh.addVecsSet(0, velocities, "velocity");
/// auto* tadpoles = new PoStreamTadpoleMotion;
/// tadpoles->setMesh(&mesh);
/// tadpoles->vecsIndex = 0;
/// tadpoles->startPoints.setValues(0, numStarts, starts);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupStreamTadpoleMotion  SoGroup  of a SoDrawStyle and a SoBlinker, with one SoLineSet a frame
/// @endcode
class ORMELLE_API PoStreamTadpoleMotion : public PoStreamParticleMotion {
  PO_KIT_HEADER(PoStreamTadpoleMotion, PoStreamParticleMotion);
  PO_KIT_CATALOG_ENTRY_HEADER(groupStreamTadpoleMotion);

 public:
  /// In pixels; 2 by default.
  SoSFFloat width;
  /// Of the ends; (0, 0, 0) by default.
  SoSFColor backColor;
  /// Of particles that have no colour from a data mapping or from `colors`; (0.9, 0, 0) by default.
  SoSFColor particleColor;
  /// The length over the speed; 1 by default.
  SoSFFloat lengthFactor;

  PoStreamTadpoleMotion();

  void rebuild() override;

 protected:
  ~PoStreamTadpoleMotion() override;

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
