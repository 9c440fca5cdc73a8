#ifndef ORMELLE_POMESHLIMIT_H
#define ORMELLE_POMESHLIMIT_H

#include <Ormelle/PoMesh2D.h>

/// Draws the boundary of a two-dimensional mesh as closed lines, at the heights of its nodes and without colouring.
///
/// It reads the mesh, set on the kit or found on the traversal state, and fills the part `groupLimit`. A boundary
/// segment with an end that isn't finite is left out.
///
/// @code
/// PoMeshLimit* limit = new PoMeshLimit;
/// limit->setMesh(&grid);
/// limit->zValuesIndex = 0;
/// root->addChild(limit);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupLimit   SoGroup   coordinates, a SoLineSet
/// @endcode
class ORMELLE_API PoMeshLimit : public PoMesh2D {
  PO_KIT_HEADER(PoMeshLimit, PoMesh2D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupLimit);

 public:
  PoMeshLimit();

  void rebuild() override;

 protected:
  ~PoMeshLimit() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

 private:
  void drawBoundary(PbMesh2D& mesh);
};

#endif
