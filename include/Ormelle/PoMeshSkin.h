#ifndef ORMELLE_POMESHSKIN_H
#define ORMELLE_POMESHSKIN_H

#include <Ormelle/PoMesh3D.h>

class PbGrid3D;
class PoCellFilter;
class PiSkinDrawing;
struct PiSkinForm;

/// Draws the outer surface of a volume mesh, or of those of its cells that the cell filter on the traversal state
/// accepts: the facets with an accepted cell on one side only. They face outwards, whichever way the cells run.
///
/// It reads the mesh, the data mapping and, for contours, the isovalues, each set on the kit or found on the traversal
/// state, and the cell filter there. The filter is given the values of the set `valuesIndexForCellFilter`. Values of
/// nodes colour the points of the surface, for COLOR_AVERAGE too; a value of a cell colours the cell's facets.
///
/// A grid without a filter is drawn as its six sides, with points of their own, so that colours and light don't run
/// over the edges: a SoQuadMesh for each side, or with values one SoIndexedFaceSet. Its light is smooth. Other meshes,
/// grids with a filter and grids with nodes that can't be drawn are one SoIndexedFaceSet, whose points are all nodes of
/// the mesh and whose light follows `creaseAngle`.
///
/// A facet is left out if its cell has a node whose coordinates aren't finite or, where values of nodes are used, one
/// without a value (NaN); and if the mapping gives it no colour, or a transparency that reaches
/// PbDataMapping::getTransparencyValueDeletedParts().
///
/// Kits that draw one mesh with one filter share the search for the facets: see PbMesh3D::getSkinTopology().
///
/// @code
/// PoMeshSkin* skin = new PoMeshSkin;
/// skin->setMesh(&mesh);
/// skin->setDataMapping(&mapping);
/// skin->valuesIndex = 0;
/// skin->coloringType = PoMesh::COLOR_MAPPING;
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupSkin   SoGroup   hints for light, bindings, normals, coordinates, the shapes
/// @endcode
class ORMELLE_API PoMeshSkin : public PoMesh3D {
  PO_KIT_HEADER(PoMeshSkin, PoMesh3D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupSkin);

 public:
  PoMeshSkin();

  void rebuild() override;
  std::size_t getMemorySize() const override;

  /// @name Called back by the mesh that is drawn
  /// @{
  void regularGrid3DSkin(const PbRegularCartesianGrid3D* mesh);
  void paralCartGrid3DSkin(const PbParalCartesianGrid3D* mesh);
  void cartGrid3DSkin(const PbCartesianGrid3D* mesh);
  /// The cells of a grid that `filter` accepts.
  void grid3DSkinFilter(const PbGrid3D* mesh, const PoCellFilter* filter);
  /// The cells that the filter of the traversal state accepts.
  void indexedMeshSkin(const PbIndexedMesh3D* mesh);
  void indexedMeshSkinFilter(const PbIndexedMesh3D* mesh, const PoCellFilter* filter);
  /// @}

 protected:
  ~PoMeshSkin() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

 private:
  friend class PiSkinDrawing;

  template <class View>
  void drawSides(const PbMesh3D& mesh, const View& view);
  template <class View>
  void drawFacets(const PbMesh3D& mesh, const View& view, const PoCellFilter* filter);
  void draw(const PbMesh3D& mesh, PiSkinForm& form);
  const float* valuesToColor(const PbMesh3D& mesh, bool& arePerCell) const;

  std::unique_ptr<PiSkinDrawing> m_drawing;
};

#endif
