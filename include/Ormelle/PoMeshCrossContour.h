#ifndef ORMELLE_POMESHCROSSCONTOUR_H
#define ORMELLE_POMESHCROSSCONTOUR_H

#include <Inventor/fields/SoSFPlane.h>

#include <Ormelle/PoMesh3D.h>

struct PiSectionNodes;

/// Draws the outline of the section of a volume mesh by a plane: the lines where the plane meets the outside of the
/// mesh.
///
/// It reads the mesh, the data mapping and the cell filter, each set on the kit where that is possible or found on the
/// traversal state, and fills the parts `groupCrossContour` and `appearance.material`. With a filter the outside is
/// that of the cells which it accepts. Any colouring but COLOR_INHERITED maps a colour to each point of the line or, by
/// values of cells, to each segment; a line has no inside for bands.
///
/// @code
/// PoMeshCrossContour* outline = new PoMeshCrossContour;
/// outline->setMesh(&volume);
/// outline->plane.connectFrom(&section->plane);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupCrossContour   SoGroup   material binding, coordinates, a SoIndexedLineSet
/// @endcode
class ORMELLE_API PoMeshCrossContour : public PoMesh3D {
  PO_KIT_HEADER(PoMeshCrossContour, PoMesh3D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupCrossContour);

 public:
  /// The plane, (1, 0, 0) through the origin by default.
  SoSFPlane plane;

  PoMeshCrossContour();

  void rebuild() override;

  /// @name Called back by the mesh that is cut
  /// @{
  void regularGrid3DCrossContour(const PbRegularCartesianGrid3D* mesh);
  void paralCartGrid3DCrossContour(const PbParalCartesianGrid3D* mesh);
  void cartGrid3DCrossContour(const PbCartesianGrid3D* mesh);
  void indexedMeshCrossContour(const PbIndexedMesh3D* mesh);
  /// @}

 protected:
  ~PoMeshCrossContour() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

 private:
  void cutOutside(const PbMesh3D& mesh);

  std::unique_ptr<PiSectionNodes> m_nodes;
};

#endif
