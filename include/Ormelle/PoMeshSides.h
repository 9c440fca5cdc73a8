#ifndef ORMELLE_POMESHSIDES_H
#define ORMELLE_POMESHSIDES_H

#include <Ormelle/PoMesh2D.h>

/// Draws a vertical wall between the boundary of a two-dimensional mesh, at the heights of its nodes, and one level.
/// Together with PoMeshFilled it makes a block of a raised mesh.
///
/// It reads the mesh, set on the kit or found on the traversal state, and fills the part `groupSides`. A piece of wall
/// below a boundary segment with an end that isn't finite is left out.
///
/// @code
/// PoMeshSides* sides = new PoMeshSides;
/// sides->setMesh(&grid);
/// sides->zValuesIndex = 0;
/// sides->thresholdType = PoMeshSides::THRESHOLD_ZMIN;
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupSides   SoGroup   hints for light, normals where the mesh has them, coordinates and a SoQuadMesh a contour
/// @endcode
class ORMELLE_API PoMeshSides : public PoMesh2D {
  PO_KIT_HEADER(PoMeshSides, PoMesh2D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupSides);

 public:
  /// The level that the wall reaches to.
  enum ThresholdType {
    THRESHOLD_ZMIN = 0,  ///< the least value of the set `zValuesIndex`, without such a set `thresholdValue`
    THRESHOLD_ZMAX = 1,  ///< the greatest value of that set, without it `thresholdValue`
    THRESHOLD_VALUE = 2  ///< `thresholdValue`
  };

  SoSFEnum thresholdType;
  SoSFFloat thresholdValue;

  PoMeshSides();

  void rebuild() override;

 protected:
  ~PoMeshSides() override;

 private:
  void drawWalls(PbMesh2D& mesh);
  float wallLevel(const PbMesh2D& mesh) const;
};

#endif
