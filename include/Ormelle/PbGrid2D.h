#ifndef ORMELLE_PBGRID2D_H
#define ORMELLE_PBGRID2D_H

#include <Ormelle/PbMesh2D.h>

#include <vector>

/// Root of the surface grids: num_x by num_y nodes, between which the cells are implied.
///
/// Node (i, j) has index i*num_y + j, j running fastest; cell (i, j), with corners (i, j), (i+1, j), (i+1, j+1), (i,
/// j+1) in this order, has index i*(num_y-1) + j. Every array with one entry a node follows that order. A dimension of
/// 1 gives nodes without cells. Dimensions below 1, more nodes than an int can count, or null coordinates give an empty
/// mesh.
class ORMELLE_API PbGrid2D : public PbMesh2D {
 public:
  ~PbGrid2D() override;

  /// The number of nodes along i and along j.
  void getDim(int& num_x, int& num_y) const {
    num_x = m_numX;
    num_y = m_numY;
  }
  /// Replaces the nodes by a flat grid. What `x` and `y` hold is told by the class; a duplicating mesh copies them.
  ///
  /// Removes the data sets of a duplicating mesh if the number of nodes or cells changes, then announces
  /// `MESH_GEOMETRY_CHANGE`.
  void setGeometry(int num_x, int num_y, const float* x, const float* y);
  /// The same with one z for each node; null for a flat grid.
  void setGeometry(int num_x, int num_y, const float* x, const float* y, const float* z);

  int getNodeIndex(int i, int j) const { return i * m_numY + j; }
  int getCellIndex(int i, int j) const { return i * (m_numY - 1) + j; }
  /// Inverts getNodeIndex(). Zeros for an empty grid.
  void getNodeIndices(int node, int& i, int& j) const { divide(node, m_numY, i, j); }
  /// Inverts getCellIndex(). Zeros for a grid without cells.
  void getCellIndices(int cell, int& i, int& j) const { divide(cell, m_numY - 1, i, j); }
  /// The four nodes of a cell of the grid; the array belongs to the grid and the next call overwrites it.
  const int* getCellNodeIds(int cell) const;
  const int* getCellNodeIds(int i, int j) const;

  SbVec3f getNodeCoord(int node) const override;

  void getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const override;
  /// The up to eight cells round the cell.
  void getAdjacentCellsIndByNode(int cell_index, PbArrayOfInt& adjacent_cells) const override;
  /// The up to four cells that share an edge with the cell: i-1, i+1, j-1, j+1.
  void getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const override;

  void setCoordinates(const float* x, const float* y, const float* z) override;
  /// `num_z` gets 1.
  void getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                      int& num_z) const override;
  void print(FILE* file) const override;

  /// One contour: along j at i = 0, along i at the last j, back along j at the last i, back along i at j = 0. None when
  /// a dimension is below 2.
  void getLimitIndices(PbArrayOfInt& sizes, PbArrayOfInt& indices) const override;
  SbVec3f getFirstCellNormal() const override;

  virtual SbVec3f getNodeCoord(int i, int j) const = 0;

 protected:
  /// Stores coordinates for new dimensions. The dimensions are checked, and both arrays null for an empty grid.
  virtual void setXYGeometry(int num_x, int num_y, const float* x, const float* y) = 0;

 public:
  /// The coordinate arrays as they were given, or null on grids that hold none.
  virtual void getXYGeometry(const float*& x, const float*& y) const = 0;

 protected:
  explicit PbGrid2D(int isDataDuplicate);
  PbGrid2D(const PbGrid2D& other);
  PbGrid2D& operator=(const PbGrid2D& other);

  void updateCellBoundingBox() const override;

  /// Stores z and dimensions, with all that follows from a change of geometry.
  void storeGeometry(int num_x, int num_y, const float* x, const float* y, const float* z);
  /// Whether a grid of these dimensions has a node, and its nodes and cells can be counted.
  static bool isValidDim(int num_x, int num_y);
  /// Pointers to the z of the first node of each row, or null for a flat grid. Valid until z changes.
  const float* const* getZRows() const;

  int m_numX = 0;
  int m_numY = 0;

 private:
  static void divide(int index, int rowSize, int& i, int& j) {
    i = rowSize > 0 ? index / rowSize : 0;
    j = rowSize > 0 ? index % rowSize : 0;
  }

  mutable std::vector<const float*> m_zRows;
  mutable int m_cellNodeIds[4] = {0, 0, 0, 0};
};

#endif
