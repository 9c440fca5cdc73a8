#ifndef ORMELLE_POSTREAMSURFACE_H
#define ORMELLE_POSTREAMSURFACE_H

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFVec3f.h>

#include <Ormelle/PoBaseStreamLine.h>

/// Draws ribbons of surface that the flow would carry along from rakes: each start point is the middle of a rake, from
/// which several paths start at equal distances, and neighbouring paths are joined by triangles.
///
/// Triangles go along two paths by the shorter of the two possible diagonals, which keeps them well shaped where one
/// path is faster or longer. Between two paths the surface ends where one of them ends, where they are further apart
/// than four times the larger of their distance at the rake and their steps there, and where they run against each
/// other.
///
/// With a data mapping the surface has the colour of the value at each point of the paths, and a hole where the mapping
/// has no colour; else each rake has its entry of `colors`, or without those the material of the traversal state. It is
/// lit smoothly, and from both sides.
///
/// @code
/// auto* surface = new PoStreamSurface;
/// surface->setMesh(&mesh);
/// surface->vecsIndex = 0;
/// surface->startPoints.setValue(0, 0, 1);
/// surface->rakeOrientation.setValue(0, 1, 0);
/// surface->numLinesPerRake = 20;
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupStreamSurface   SoGroup   hints for light, coordinates, normals, material and bindings, one SoIndexedFaceSet
/// @endcode
class ORMELLE_API PoStreamSurface : public PoBaseStreamLine {
  PO_KIT_HEADER(PoStreamSurface, PoBaseStreamLine);
  PO_KIT_CATALOG_ENTRY_HEADER(groupStreamSurface);

 public:
  /// The direction of rakes, of any length; (1, 0, 0) by default. There is no surface if it has none.
  SoSFVec3f rakeOrientation;
  /// How many paths start from a rake, 3 by default. With fewer than 2 there is no surface; all rakes together have no
  /// more than a million, but each may have 2.
  SoSFInt32 numLinesPerRake;
  /// The distance of the first path of a rake from its last, in coordinates of the mesh; 1 by default.
  SoSFFloat rakeLength;

  PoStreamSurface();

  void rebuild() override;

 protected:
  ~PoStreamSurface() override;
};

#endif
