#ifndef ORMELLE_POMESHFILLED_H
#define ORMELLE_POMESHFILLED_H

#include <memory>

#include <Ormelle/PoMesh2D.h>

class PbCartesianGrid2D;
class PbIndexedMesh2D;
class PbParalCartesianGrid2D;
class PbPolarGrid2D;
class PbQuadrangleMesh2D;
class PbRegularCartesianGrid2D;
class PbTriangleMesh2D;
class PiContouringFilled;

/// Paints the cells of a two-dimensional mesh, in one colour or by a set of values of its nodes.
///
/// It reads the mesh, the data mapping and, for contours, the isovalues, each set on the kit or found on the traversal
/// state, and fills the parts `groupFilled`, `appearance.material` and `appearance.texture2`. Values bound to cells
/// are not painted.
///
/// A cell is left out if a coordinate of one of its nodes isn't finite, if the values are used and one of its nodes
/// has none (NaN), or if the mapping gives its value no colour or a transparency that reaches
/// PbDataMapping::getTransparencyValueDeletedParts().
///
/// Under `COLOR_CONTOURING` cells are cut into polygons between neighbouring isovalues, each in the colour of the lower
/// one. An isovalue that is equal to values of nodes is cut a little beside them. Where the mapping has a threshold
/// behind which parts are left out, a cell is first cut back to its nodes before the threshold, so that bands don't
/// rise like walls towards what isn't shown.
///
/// @code
/// PoMeshFilled* filled = new PoMeshFilled;
/// filled->setMesh(&grid);
/// filled->setDataMapping(&mapping);
/// filled->valuesIndex = 0;
/// filled->coloringType = PoMesh::COLOR_MAPPING;
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupFilled   SoGroup   normals and hints for light, bindings, coordinates, a SoQuadMesh or SoIndexedFaceSet
/// @endcode
class ORMELLE_API PoMeshFilled : public PoMesh2D {
  PO_KIT_HEADER(PoMeshFilled, PoMesh2D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupFilled);

 public:
  /// Lights a flat mesh by the one normal of its first cell, as a node of its own in the group. No effect on a mesh
  /// with heights.
  SoSFBool useOverallNormal;

  PoMeshFilled();

  void rebuild() override;

  std::size_t getMemorySize() const override;

  /// @name Called back by the mesh that is drawn
  /// @{
  void regularCartGridFilled(const PbRegularCartesianGrid2D* mesh);
  void cartGridFilled(const PbCartesianGrid2D* mesh);
  void paralCartGridFilled(const PbParalCartesianGrid2D* mesh);
  void polarGridFilled(const PbPolarGrid2D* mesh);
  void indexedMeshFilled(const PbIndexedMesh2D* mesh);
  void triangleMeshFilled(const PbTriangleMesh2D* mesh);
  void quadrangleMeshFilled(const PbQuadrangleMesh2D* mesh);
  /// @}

 protected:
  ~PoMeshFilled() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
  /// Hints that suit the overall normal, if there is one.
  void insertDefaultShapeHints() override;

 private:
  template <class Mesh>
  void fill(const Mesh& mesh);
  template <class Mesh>
  void fillBands(const Mesh& mesh, const float* values);
  void insertOverallNormal(const PbMesh2D& mesh);

  std::unique_ptr<PiContouringFilled> m_contouring;  // made on first need
};

#endif
