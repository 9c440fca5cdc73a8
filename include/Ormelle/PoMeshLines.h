#ifndef ORMELLE_POMESHLINES_H
#define ORMELLE_POMESHLINES_H

#include <Ormelle/PoMesh2D.h>

class PbCartesianGrid2D;
class PbIndexedMesh2D;
class PbParalCartesianGrid2D;
class PbPolarGrid2D;
class PbQuadrangleMesh2D;
class PbRegularCartesianGrid2D;
class PbTriangleMesh2D;

/// Draws the edges of the cells of a two-dimensional mesh, in one colour or by a set of values of its nodes.
///
/// It reads the mesh and the data mapping, each set on the kit or found on the traversal state, and fills the parts
/// `groupLines` and `appearance.material`. Every colouring by values gives a colour to each node; texture contouring
/// draws nothing. Values bound to cells are not used.
///
/// An edge is drawn if at least one of its cells is: see PoMeshFilled for the cells that are left out. Edges whose ends
/// the mapping gives no colour, or too high a transparency, are left out as well.
///
/// @code
/// PoMeshLines* lines = new PoMeshLines;
/// lines->setMesh(&grid);
/// lines->set("appearance.drawStyle", "lineWidth 2");
/// root->addChild(lines);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupLines   SoGroup   binding, coordinates, a SoIndexedLineSet
/// @endcode
class ORMELLE_API PoMeshLines : public PoMesh2D {
  PO_KIT_HEADER(PoMeshLines, PoMesh2D);
  PO_KIT_CATALOG_ENTRY_HEADER(groupLines);

 public:
  PoMeshLines();

  void rebuild() override;

  /// @name Called back by the mesh that is drawn
  /// @{
  void regularCartGridLines(const PbRegularCartesianGrid2D* mesh);
  void cartGridLines(const PbCartesianGrid2D* mesh);
  void paralCartGridLines(const PbParalCartesianGrid2D* mesh);
  void polarGridLines(const PbPolarGrid2D* mesh);
  void indexedLines(const PbIndexedMesh2D* mesh);
  void triangleLines(const PbTriangleMesh2D* mesh);
  void quadrangleLines(const PbQuadrangleMesh2D* mesh);
  /// @}

 protected:
  ~PoMeshLines() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

 private:
  template <class Mesh>
  void drawLines(const Mesh& mesh);
};

#endif
