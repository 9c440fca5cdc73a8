#ifndef ORMELLE_PBINDEXEDMESH2D_H
#define ORMELLE_PBINDEXEDMESH2D_H

#include <Ormelle/PbMesh2D.h>

#include <vector>

class PiConnectivity;
class PiOwnerCells;
struct PiSurfaceCells;

/// Surface mesh whose cells list their nodes: triangles and quadrangles in any mixture.
///
///     // A square and a triangle beside it.
///     const float x[] = {0, 1, 1, 0, 2}, y[] = {0, 0, 1, 1, 0};
///     const int nodes[] = {0, 1, 2, 3, 1, 4, 2}, counts[] = {4, 3};
///     PbIndexedMesh2D mesh(5, x, y, 2, nodes, counts, 1);
///
/// Cells of another number of nodes than 3 or 4, and cells with an index that is no node of the mesh, keep their place
/// in the numbering but have no cell object: `getCell` answers null, they measure nothing and nothing draws them. A
/// cell that announces less than 0 or more than 1000 nodes, and one with which the indices exceed what an int can
/// count, ends the mesh: it and all cells behind it have no nodes. Null coordinates give an empty mesh, null indices or
/// counts a mesh without cells.
class ORMELLE_API PbIndexedMesh2D : public PbMesh2D {
 public:
  /// Whether the way round of every cell is to be known.
  enum ElemOrientation { ORIENTATION_NONE = 0, ORIENTATION_COUNTERCLOCKWISE = 1 };

  /// An empty mesh. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbIndexedMesh2D(int isDataDuplicate);
  /// `x` and `y` (and `z`, null for a flat mesh) hold one float for each node. `cell_type` holds the number of nodes of
  /// each cell, `cell_index` the nodes of all cells, cell after cell, each in the order of its perimeter.
  PbIndexedMesh2D(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                  const int* cell_type, int isDataDuplicate);
  PbIndexedMesh2D(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                  const int* cell_type, int isDataDuplicate);
  PbIndexedMesh2D(const PbIndexedMesh2D& other);
  PbIndexedMesh2D& operator=(const PbIndexedMesh2D& other);
  ~PbIndexedMesh2D() override;

  /// Replaces nodes and cells; the arrays are those of the constructors.
  ///
  /// Removes the data sets of a duplicating mesh if the number of nodes or cells changes, then announces
  /// `MESH_GEOMETRY_CHANGE`. A mesh of one kind of cells takes no cells of another kind: it then has none.
  void setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                   const int* cell_type);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                   const int* cell_type);
  /// The arrays and counts. `cell_type` is null in a mesh of one kind of cells, `z` in a flat mesh. Valid until the
  /// geometry changes.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells, const int*& cell_index,
                   const int*& cell_type) const;
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int*& cell_index, const int*& cell_type) const;
  /// The nodes of a cell as they were given, and how many: null and 0 for an index outside the cells. Also cells
  /// without a cell object have nodes, which may then lie outside the mesh.
  const int* getNodes(int cell_index, int& num_nodes) const;
  /// Replaces the coordinates of all nodes and keeps cells and data sets. A null `z` makes the mesh flat; a null `x` or
  /// `y` changes nothing.
  void setVertices(const float* x, const float* y, const float* z = nullptr);

  /// One flag for each cell when an orientation is asked, else null: 1 if the cell turns counter-clockwise at its
  /// second node, seen from positive z, and 0 if it turns clockwise, runs straight on or has no cell object. The
  /// representations then emit all cells counter-clockwise.
  const int* getOrientFlags() const;

  SbVec3f getNodeCoord(int node) const override;
  /// All cells that list the node, by rising index, also those without a cell object.
  void getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const override;
  void getNodesOwnerCellsInd(const PbArrayOfInt& nod_indices, PbArrayOfInt& owner_cells) const override;
  /// The other cells that share an edge with the cell, each once.
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
  /// True when there is no node or no array of cells.
  int isEmpty() const override;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;
  void getNodesCoord(const float* z, SoMFVec3f& coords) const override;
  /// The edges that only one cell has, joined to closed contours that pass no node twice. A contour starts at its node
  /// of lowest index and contours come by rising first node. They run as those of grids do: against the cells, so that
  /// round counter-clockwise cells an outer contour runs clockwise and a hole counter-clockwise.
  ///
  /// Where edges of three cells leave a chain that doesn't close, its ends count as joined. Cells without a cell object
  /// have no edges. Takes time in proportion to the cells.
  void getLimitIndices(PbArrayOfInt& sizes, PbArrayOfInt& indices) const override;
  /// Zero if cell 0 has no cell object.
  SbVec3f getFirstCellNormal() const override;

  /// Makes the list of the cells round each node, unless there is one. The searches for owner cells do it by
  /// themselves; the list lives until the cells change.
  virtual void updateOwnerCellsList() const;
  virtual void deleteOwnerCellsList() const;
  virtual ElemOrientation getElemOrientation() const;
  /// Asks for the orientation of the cells, or no longer asks for it. Announces `MESH_GEOMETRY_CHANGE` if that is new.
  virtual void setElemOrientation(ElemOrientation orientation);

  /// The nodes of the cells, for the library's own algorithms.
  const PiConnectivity& getConnectivity() const { return *m_cells; }

 protected:
  /// A mesh of which every cell has `cellSize` nodes; 0 if each cell has its own number.
  PbIndexedMesh2D(int cellSize, int isDataDuplicate);

  /// Stores what setGeometry() is given, with all that follows from it. A mesh of one kind of cells may leave
  /// `cell_type` null. The cells, not the coordinates, are copied if `copiesCells`.
  void storeGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells,
                     const int* cell_index, const int* cell_type, int copiesCells);
  /// One pointer to the nodes of each cell, in a mesh of one kind of cells. Null without cells.
  const int* const* getCellRows() const;

  void updateBoundingBox() const override;
  const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                            PbArrayOfInt& excluded) const override;

 private:
  void storeCoordinates(int num_nodes, const float* x, const float* y, const float* z);
  void updateOrientFlags();
  const PiOwnerCells& ownerCells() const;

  PbMeshArray<float> m_x;
  PbMeshArray<float> m_y;
  std::unique_ptr<PiConnectivity> m_cells;
  ElemOrientation m_orientation = ORIENTATION_NONE;
  std::vector<int> m_orientFlags;
  std::unique_ptr<PiSurfaceCells> m_cellObjects;
  mutable std::unique_ptr<PiOwnerCells> m_ownerCells;
  mutable std::vector<const int*> m_cellRows;
};

#endif
