#ifndef ORMELLE_PBGRID3D_H
#define ORMELLE_PBGRID3D_H

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PbMeshArray.h>

/// Root of the volume grids: num_x by num_y by num_z nodes, between which the cells are implied.
///
/// Node (i, j, k) has index (i*num_y + j)*num_z + k, k running fastest; cell (i, j, k) has index
/// (i*(num_y-1) + j)*(num_z-1) + k. Its corners are (i, j), (i+1, j), (i+1, j+1), (i, j+1) at k, then the same at k+1.
/// Every array with one entry a node follows that order. A dimension of 1 gives nodes without cells. Dimensions below
/// 1, more nodes than an int can count, or null coordinates give an empty mesh.
class ORMELLE_API PbGrid3D : public PbMesh3D {
 public:
  ~PbGrid3D() override;

  /// The number of nodes along i, j and k.
  void getDim(int& num_x, int& num_y, int& num_z) const {
    num_x = m_numX;
    num_y = m_numY;
    num_z = m_numZ;
  }
  /// Replaces the nodes. What the arrays hold is told by the class; a duplicating mesh copies them.
  ///
  /// Removes the data sets of a duplicating mesh if the number of nodes or cells changes, then announces
  /// `MESH_GEOMETRY_CHANGE`.
  void setGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z);

  int getNodeIndex(int i, int j, int k) const { return (i * m_numY + j) * m_numZ + k; }
  int getCellIndex(int i, int j, int k) const { return (i * (m_numY - 1) + j) * (m_numZ - 1) + k; }
  /// Inverts getNodeIndex(). Zeros for an empty grid.
  void getNodeIndices(int node, int& i, int& j, int& k) const;
  /// Inverts getCellIndex(). Zeros for a grid without cells.
  void getCellIndices(int cell, int& i, int& j, int& k) const;
  /// The eight nodes of a cell of the grid; the array belongs to the grid and the next call overwrites it.
  const int* getCellNodeIds(int cell) const;
  const int* getCellNodeIds(int i, int j, int k) const;

  SbVec3f getNodeCoord(int node) const override;

  void getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const override;
  /// The up to 26 cells round the cell.
  void getAdjacentCellsIndByNode(int cell_index, PbArrayOfInt& adjacent_cells) const override;
  /// The up to six cells that share a facet with the cell: i-1, i+1, j-1, j+1, k-1, k+1.
  void getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const override;

  void setCoordinates(const float* x, const float* y, const float* z) override;
  void getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                      int& num_z) const override;
  void print(FILE* file) const override;

  /// The number of facets on the six sides.
  int evaluateSkinFacesNum() const override;

  virtual SbVec3f getNodeCoord(int i, int j, int k) const = 0;
  /// Calls grid3DSkin(), or where the representation has a cell filter PoMeshSkin::grid3DSkinFilter().
  void meshSkin(PoMeshSkin* rep) const override;
  /// The part of meshSkin() for an unfiltered grid. Does nothing here.
  virtual void grid3DSkin(PoMeshSkin* rep) const;

 protected:
  /// Stores coordinates for new dimensions. The dimensions are checked, and the arrays null for an empty grid.
  virtual void setXYZGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z) = 0;

 public:
  /// The coordinate arrays as they were given, or null on grids that hold none.
  virtual void getXYZGeometry(const float*& x, const float*& y, const float*& z) const = 0;

 protected:
  explicit PbGrid3D(int isDataDuplicate);
  PbGrid3D(const PbGrid3D& other);
  PbGrid3D& operator=(const PbGrid3D& other);

  /// Stores dimensions, with all that follows from a change of geometry.
  void storeGeometry(int num_x, int num_y, int num_z, const float* x, const float* y, const float* z);
  /// Whether a grid of these dimensions has a node, and its nodes and cells can be counted.
  static bool isValidDim(int num_x, int num_y, int num_z);

  int m_numX = 0;
  int m_numY = 0;
  int m_numZ = 0;

 private:
  mutable int m_cellNodeIds[8] = {0, 0, 0, 0, 0, 0, 0, 0};
};

#endif
