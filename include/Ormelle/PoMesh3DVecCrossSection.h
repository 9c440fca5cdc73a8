#ifndef ORMELLE_POMESH3DVECCROSSSECTION_H
#define ORMELLE_POMESH3DVECCROSSSECTION_H

#include <memory>
#include <vector>

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFPlane.h>

#include <Ormelle/PoMesh3DVec.h>

class PiMeshSection;

/// The vectors of a volume mesh where a plane cuts its cells: at each point where an edge meets the plane, interpolated
/// between the ends of the edge.
///
/// Only a set of vectors bound to nodes is drawn; SCALAR_MAPPING_COLOR takes a set of values bound to nodes,
/// interpolated alike. A cell that the filter on the state refuses, and one with a vector that isn't finite, has no
/// vectors.
///
/// @code
/// auto* arrows = new PoMesh3DVecCrossSection;
/// arrows->setMesh(&mesh);
/// arrows->vecsIndex = 0;
/// arrows->plane = SbPlane(SbVec3f(0, 0, 1), 5);
/// root->addChild(arrows);
/// @endcode
class ORMELLE_API PoMesh3DVecCrossSection : public PoMesh3DVec {
  PO_KIT_HEADER(PoMesh3DVecCrossSection, PoMesh3DVec);

 public:
  enum ProjectionType {
    NO_PROJECTION = 0,
    PROJECTION_ON_PLANE = 1,  ///< of each vector, what lies in the plane
    PROJECTION_ON_NORMAL = 2  ///< what is perpendicular to it
  };

  SoSFPlane plane;          ///< normal 1 0 0 at distance 0 by default
  SoSFEnum projectionType;  ///< a ProjectionType; `NO_PROJECTION` by default

  PoMesh3DVecCrossSection();

 protected:
  ~PoMesh3DVecCrossSection() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
  void addVectors(PbMesh3D& mesh) override;
  const float* vectorScalars(const PbMesh3D& mesh) override;

  /// Finds points of the plane in the mesh, with their vectors, and the values of a set unless `values` is null.
  virtual void sample(const PbMesh3D& mesh, const SbVec3f* vectors, const float* values);

  std::vector<SbVec3f> m_points;
  std::vector<SbVec3f> m_sampled;  ///< the vector of each point
  std::vector<float> m_values;     ///< the value of each point; empty without values

 private:
  std::unique_ptr<PiMeshSection> m_section;
};

#endif
