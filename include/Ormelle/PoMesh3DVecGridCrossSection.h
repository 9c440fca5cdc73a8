#ifndef ORMELLE_POMESH3DVECGRIDCROSSSECTION_H
#define ORMELLE_POMESH3DVECGRIDCROSSSECTION_H

#include <Inventor/fields/SoSFVec2f.h>

#include <Ormelle/PoMesh3DVecCrossSection.h>

/// The vectors of a volume mesh on an even grid in a plane, interpolated in the cells that hold its points. Points
/// outside the mesh, or in cells that the filter on the state refuses, have none.
///
/// The grid runs along the direction in the plane that is level with z = 0 (x, in a plane z = constant) and the one
/// across it, through the point of the plane nearest to the origin.
class ORMELLE_API PoMesh3DVecGridCrossSection : public PoMesh3DVecCrossSection {
  PO_KIT_HEADER(PoMesh3DVecGridCrossSection, PoMesh3DVecCrossSection);

 public:
  /// How far points lie apart along the two directions; a number that is 0, by default, or below is automatic: twice
  /// the spacing of the mesh. A grid of more than four million points is drawn with as many.
  SoSFVec2f gridSpacing;

  PoMesh3DVecGridCrossSection();

 protected:
  ~PoMesh3DVecGridCrossSection() override;

  void sample(const PbMesh3D& mesh, const SbVec3f* vectors, const float* values) override;
  float vectorSpacing(const PbMesh3D& mesh) const override;

 private:
  SbVec2f spacing(const PbMesh3D& mesh) const;
};

#endif
