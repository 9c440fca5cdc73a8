#ifndef ORMELLE_POSTREAMSPHEREMOTION_H
#define ORMELLE_POSTREAMSPHEREMOTION_H

#include <memory>

#include <Ormelle/PoStreamParticleMotion.h>

struct PiSphereFrames;

/// Particles that move along the paths of a field of vectors, as spheres.
///
/// Spheres without a colour of their own have that of the traversal state. All spheres of a frame are one
/// SoIndexedFaceSet; the more there are, the fewer faces each has.
///
/// @code
/// mesh.addVecsSet(0, velocities, "velocity");
/// auto* particles = new PoStreamSphereMotion;
/// particles->setMesh(&mesh);
/// particles->vecsIndex = 0;
/// particles->sphereRadius = 0.1f;
/// particles->startPoints.setValues(0, numStarts, starts);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupStreamSphereMotion  SoGroup  of a SoShapeHints and a SoBlinker
/// @endcode
class ORMELLE_API PoStreamSphereMotion : public PoStreamParticleMotion {
  PO_KIT_HEADER(PoStreamSphereMotion, PoStreamParticleMotion);
  PO_KIT_CATALOG_ENTRY_HEADER(groupStreamSphereMotion);

 public:
  /// In coordinates of the mesh; 1 by default. 0 and below: nothing is drawn.
  SoSFFloat sphereRadius;

  PoStreamSphereMotion();

  void rebuild() override;

 protected:
  ~PoStreamSphereMotion() override;

  void newAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points) override;
  void endAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points) override;
  void newFrame(SoGroup* group, int frame) override;
  void newParticle(const SbVec3f& point, const SbVec3f& velocity, const SbVec3f& next, const SbColor* color,
                   int index) override;

 private:
  std::unique_ptr<PiSphereFrames> m_frames;  ///< during a rebuild
};

#endif
