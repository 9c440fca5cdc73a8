#ifndef ORMELLE_POMESHCROSSSECTION_H
#define ORMELLE_POMESHCROSSSECTION_H

#include <Inventor/fields/SoSFPlane.h>

#include <Ormelle/PoMesh3D.h>

class PbHexahedronMesh3D;
class PbTetrahedronMesh3D;
struct PiSectionState;

/// Draws the section of a volume mesh by a plane.
///
/// It reads the mesh, the data mapping, the cell filter and, for bands, the isovalues, each set on the kit where that
/// is possible or found on the traversal state, and fills the parts `groupCrossSection`, `appearance.material` and
/// `appearance.texture2`. Values of nodes are interpolated on the section; values of cells colour what is cut out of
/// each cell.
///
/// There are two methods. By `INTERSECTION` every cell that the plane meets is cut into one polygon, and a grid that
/// the plane slices across an axis gives a quad mesh. By `ISOSURFACE` the section is the level surface of the distances
/// of the nodes, which are kept while the plane only moves along its normal. Where the plane runs through nodes, the
/// level is moved off them a little; a plane exactly on the border of the mesh is shown by `INTERSECTION` only.
///
/// Cells with a coordinate that isn't finite, cells with a node of undefined value (NaN) where values are used, and
/// cells that the filter refuses are left out.
///
/// @code
/// PoMeshCrossSection* section = new PoMeshCrossSection;
/// section->setMesh(&volume);
/// section->setDataMapping(&mapping);
/// section->valuesIndex = 0;
/// section->coloringType = PoMesh::COLOR_MAPPING;
/// section->plane = SbPlane(SbVec3f(1, 1, 0), 0.5f);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupCrossSection   SoGroup   normal, hints for light, bindings, coordinates, a shape
/// @endcode
///
/// The environment variable `ZEL_QUILLANE_CROSS_SECTION_METHOD`, read at each rebuild, may ask for "ISOSURFACE" or
/// "INTERSECTION", in any case. Without it intersection is used for regular and parallel grids that no filter thins
/// out.
class ORMELLE_API PoMeshCrossSection : public PoMesh3D {
  PO_KIT_HEADER(PoMeshCrossSection, PoMesh3D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupCrossSection);

 public:
  enum CrossSectionMethod {
    AUTOMATIC = 0,    ///< as the environment asks, else as suits the mesh
    ISOSURFACE = 1,   ///< the level surface of the distances
    INTERSECTION = 2  ///< the polygon of every cell
  };

  /// The plane, (1, 0, 0) through the origin by default. The section is lit as seen from the side that its normal
  /// points to.
  SoSFPlane plane;

  PoMeshCrossSection();

  /// Which method is used, from the next rebuild on. It counts for more than the environment.
  void setCrossSectionMethod(CrossSectionMethod method);
  CrossSectionMethod getCrossSectionMethod() const { return static_cast<CrossSectionMethod>(m_crossSectionMethod); }

  void rebuild() override;
  std::size_t getMemorySize() const override;

  /// Distances of the nodes along the normal of the plane.
  const float* getIsosurfDataSet() override;
  /// The distance of the plane.
  float getIsosurfValue() override;
  /// Differs whenever distances or plane do.
  unsigned int getIsosurfDataSetId() override;
  /// The normal of the plane.
  SbVec3f getOverallNormal() override;

  /// @name Called back by the mesh that is cut
  /// @{
  void regularGrid3DCrossSection(const PbRegularCartesianGrid3D* mesh);
  void paralCartGrid3DCrossSection(const PbParalCartesianGrid3D* mesh);
  void cartGrid3DCrossSection(const PbCartesianGrid3D* mesh);
  void hexahedronMeshCrossSection(const PbHexahedronMesh3D* mesh);
  void tetrahedronMeshCrossSection(const PbTetrahedronMesh3D* mesh);
  void indexedMeshCrossSection(const PbIndexedMesh3D* mesh);
  /// @}

 protected:
  ~PoMeshCrossSection() override;

  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  friend struct PiSectionState;

  bool isIntersected(const PbMesh3D& mesh) const;
  void prepareSurface();
  void showIntersection(const PbMesh3D& mesh);
  template <class Mesh>
  void intersect(const Mesh& mesh);

  int m_crossSectionMethod = AUTOMATIC;
  std::unique_ptr<PiSectionState> m_section;
};

#endif
