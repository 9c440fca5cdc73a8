#ifndef ORMELLE_POMESHSKELETON_H
#define ORMELLE_POMESHSKELETON_H

#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/PoMesh3D.h>

class SbString;

/// Draws a lattice through a volume mesh: the outlines of its sections by planes of constant x, of constant y and of
/// constant z, so that its shape shows without covering what is inside.
///
/// `n` planes stand in the middle of `n` equal slices of the mesh's bounding box: three of a box from 0 to 3 at
/// 0.5, 1.5 and 2.5. Below 1 there are none, and no more than 1000 are drawn along an axis. With a cell filter on the
/// traversal state the outlines are those of the cells that it accepts.
///
/// It reads the mesh, the data mapping and the cell filter, each set on the kit where that is possible or found on the
/// traversal state. Any colouring but COLOR_INHERITED maps a colour to each point of a line, by values of nodes; a line
/// has no inside for bands. Values bound to cells don't colour.
///
/// @code
/// PoMeshSkeleton* skeleton = new PoMeshSkeleton;
/// skeleton->setMesh(&mesh);
/// skeleton->numZContour = 10;
/// @endcode
///
/// Catalog, behind the parts of PoBase, for each of X, Y and Z:
/// @code
/// alternateRep
///   skeletonMaterialBinding   SoMaterialBinding   of all lines
///   skeletonXContourSep       SoSeparator
///     skeletonXContourApp     SoAppearanceKit     yours to style
///     skeletonXContourGroup   SoGroup             for each plane that meets the mesh a SoGroup of material,
///                                                 coordinates and a SoIndexedLineSet
/// @endcode
class ORMELLE_API PoMeshSkeleton : public PoMesh3D {
  PO_KIT_HEADER(PoMeshSkeleton, PoMesh3D);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonMaterialBinding);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonXContourSep);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonXContourApp);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonXContourGroup);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonYContourSep);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonYContourApp);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonYContourGroup);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonZContourSep);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonZContourApp);
  PO_KIT_CATALOG_ENTRY_HEADER(skeletonZContourGroup);

 public:
  SoSFInt32 numXContour;  ///< number of planes of constant x, 3 by default
  SoSFInt32 numYContour;  ///< of constant y
  SoSFInt32 numZContour;  ///< of constant z

  PoMeshSkeleton();

  void rebuild() override;

  /// @name Called back by the mesh that is cut
  /// `values` has one value for each node, or is null; `x`, `y` and `z` have a position for each plane.
  /// @{
  void regularGrid3DSkeleton(const PbRegularCartesianGrid3D* mesh, const float* values, const float* x, const float* y,
                             const float* z);
  void paralCartGrid3DSkeleton(const PbParalCartesianGrid3D* mesh, const float* values, const float* x, const float* y,
                               const float* z);
  void cartGrid3DSkeleton(const PbCartesianGrid3D* mesh, const float* values, const float* x, const float* y,
                          const float* z);
  void indexedMeshSkeleton(const PbIndexedMesh3D* mesh, const float* values, const float* x, const float* y,
                           const float* z);
  /// @}
  /// Sets the part named `part` to the outlines by `n` planes across (a, b, c) at the positions.
  void makeSkeletonContours(int n, const float* positions, float a, float b, float c, const float* values,
                            const SbString& part);

 protected:
  ~PoMeshSkeleton() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

 private:
  void makeAllContours(const float* values, const float* x, const float* y, const float* z);
  void showBinding(const float* values);
};

#endif
