#ifndef ORMELLE_PBINDEXEDMESH3D_H
#define ORMELLE_PBINDEXEDMESH3D_H

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PbMeshArray.h>

#include <vector>

class PiConnectivity;
class PiOwnerCells;
struct PiSolidCells;

/// Volume mesh whose cells list their nodes: tetrahedra (4 nodes), pyramids (5), wedges (6) and hexahedra (8) in any
/// mixture. The order of the nodes of a cell is that of its cell class, as in PbHexahedronCell.
///
/// Cells of another number of nodes, and cells with an index that is no node of the mesh, keep their place in the
/// numbering but have no cell object: `getCell` answers null, they measure nothing and nothing draws them. A cell that
/// announces less than 0 or more than 1000 nodes, and one with which the indices exceed what an int can count, ends the
/// mesh: it and all cells behind it have no nodes. Null coordinates give an empty mesh, null indices or counts a mesh
/// without cells.
class ORMELLE_API PbIndexedMesh3D : public PbMesh3D {
 public:
  /// An empty mesh. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbIndexedMesh3D(int isDataDuplicate);
  /// `x`, `y` and `z` hold one float for each node. `cell_type` holds the number of nodes of each cell, `cell_index`
  /// the nodes of all cells, cell after cell.
  PbIndexedMesh3D(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                  const int* cell_type, int isDataDuplicate);
  PbIndexedMesh3D(const PbIndexedMesh3D& other);
  PbIndexedMesh3D& operator=(const PbIndexedMesh3D& other);
  ~PbIndexedMesh3D() override;

  /// Replaces nodes and cells; the arrays are those of the constructor.
  ///
  /// Removes the data sets of a duplicating mesh if the number of nodes or cells changes, then announces
  /// `MESH_GEOMETRY_CHANGE`. A mesh of one kind of cells takes no cells of another kind: it then has none.
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                   const int* cell_type);
  /// The arrays and counts. `cell_type` is null in a mesh of one kind of cells. Valid until the geometry changes.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int*& cell_index, const int*& cell_type) const;
  /// The nodes of a cell as they were given, and how many: null and 0 for an index outside the cells. Also cells
  /// without a cell object have nodes, which may then lie outside the mesh.
  const int* getNodes(int cell_index, int& num_nodes) const;
  /// Replaces the coordinates of all nodes and keeps cells and data sets. A null array changes nothing.
  void setVertices(const float* x, const float* y, const float* z);

  SbVec3f getNodeCoord(int node) const override;
  /// All cells that list the node, by rising index, also those without a cell object.
  void getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const override;
  void getNodesOwnerCellsInd(const PbArrayOfInt& nod_indices, PbArrayOfInt& owner_cells) const override;
  void getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const override;
  const PbCell* getCell(int cell_index) const override;
  const PbCell* getTopoCell(int cell_index) const override;
  float getLongestEdgeLength() const override;
  /// setVertices().
  void setCoordinates(const float* x, const float* y, const float* z) override;
  /// `num_x` gets the number of nodes, `num_y` and `num_z` 1.
  void getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                      int& num_z) const override;
  void print(FILE* file) const override;

  void meshSkin(PoMeshSkin* rep) const override;
  /// meshSkin() with another filter than that of the traversal state; null accepts all cells.
  void meshSkinFilter(PoMeshSkin* rep, const PoCellFilter* filter) const;
  void meshLevelSurfShapeIndices(PoMesh3D* rep, int set_index, const float* values) const override;
  void meshCrossSection(PoMeshCrossSection* rep) const override;
  void meshCrossContour(PoMeshCrossContour* rep) const override;
  void meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y, float* z) const override;
  /// True when there is no node or no array of cells.
  int isEmpty() const override;

  /// Makes the list of the cells round each node, unless there is one. The searches for owner cells do it by
  /// themselves; the list lives until the cells change.
  virtual void updateOwnerCellsList() const;
  virtual void deleteOwnerCellsList() const;

  /// The nodes of the cells, for the library's own algorithms.
  const PiConnectivity& getConnectivity() const { return *m_cells; }

 protected:
  /// A mesh of which every cell has `cellSize` nodes; 0 if each cell has its own number.
  PbIndexedMesh3D(int cellSize, int isDataDuplicate);

  /// Stores what setGeometry() is given, with all that follows from it. A mesh of one kind of cells may leave
  /// `cell_type` null.
  void storeGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                     const int* cell_index, const int* cell_type);
  /// One pointer to the nodes of each cell, in a mesh of one kind of cells. Null without cells.
  const int* const* getCellRows() const;

  void updateBoundingBox() const override;

 private:
  void storeCoordinates(int num_nodes, const float* x, const float* y, const float* z);
  const PiOwnerCells& ownerCells() const;

  PbMeshArray<float> m_x;
  PbMeshArray<float> m_y;
  PbMeshArray<float> m_z;
  std::unique_ptr<PiConnectivity> m_cells;
  std::unique_ptr<PiSolidCells> m_cellObjects;
  mutable std::unique_ptr<PiOwnerCells> m_ownerCells;
  mutable std::vector<const int*> m_cellRows;
};

#endif
