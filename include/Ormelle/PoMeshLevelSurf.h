#ifndef ORMELLE_POMESHLEVELSURF_H
#define ORMELLE_POMESHLEVELSURF_H

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/PoMesh3D.h>

/// Draws the surface in a volume mesh where a set of values of its nodes has a given value.
///
/// It reads the mesh, the data mapping, the cell filter and, for bands, the isovalues, each set on the kit where that
/// is possible or found on the traversal state, and fills the parts `groupLevelSurf`, `appearance.material` and
/// `appearance.texture2`.
///
/// The set `valuesIndex` colours the surface; that of the level itself gives it one colour. A level that is the value
/// of some node is moved off it a little, so that the surface runs through no node. Cells with a node whose value is
/// NaN or that isn't at a finite place, and cells that the filter refuses, have no part in the surface. It is closed
/// but for the borders of the mesh and of those cells, also where cells of several kinds meet or run the other way
/// round, and all of it faces one way. Values bound to cells make no surface.
///
/// @code
/// PoMeshLevelSurf* surface = new PoMeshLevelSurf;
/// surface->setMesh(&grid);
/// surface->valuesIndexForLevel = 0;
/// surface->levelValue = 0.5f;
/// surface->creaseAngle = 1.57f;  // smooth
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupLevelSurf   SoGroup   hints for light, bindings, normals, coordinates, a SoIndexedTriangleStripSet
/// @endcode
class ORMELLE_API PoMeshLevelSurf : public PoMesh3D {
  PO_KIT_HEADER(PoMeshLevelSurf, PoMesh3D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupLevelSurf);

 public:
  enum SurfOrientation {
    ORIENTED_TO_MIN = 0,  ///< the front faces the smaller values
    ORIENTED_TO_MAX = 1   ///< the front faces the greater values
  };

  /// The level.
  SoSFFloat levelValue;
  /// A SurfOrientation.
  SoSFEnum surfOrientation;
  /// Index of the set of values that has the level; -1 stands for `valuesIndex`.
  SoSFInt32 valuesIndexForLevel;

  PoMeshLevelSurf();

  void rebuild() override;

  const float* getIsosurfDataSet() override;
  float getIsosurfValue() override;
  int getSurfOrientation() override;
  unsigned int getIsosurfDataSetId() override;
  int getIsosurfDataSetIndex() override;

 protected:
  ~PoMeshLevelSurf() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
};

#endif
