#ifndef ORMELLE_PBTRIANGLEMESH2D_H
#define ORMELLE_PBTRIANGLEMESH2D_H

#include <Ormelle/PbIndexedMesh2D.h>

/// Surface mesh of triangles, given by their nodes or computed from nodes alone.
///
///     // Measuring points anywhere in the plane.
///     PbTriangleMesh2D mesh(1);
///     mesh.setGeometry(num, x, y);  // triangles between the points
///     mesh.addValuesSet(0, rainfall, "Rainfall");
class ORMELLE_API PbTriangleMesh2D : public PbIndexedMesh2D {
 public:
  /// An empty mesh. The last argument of every constructor: 1 copies the arrays given, 0 borrows them.
  explicit PbTriangleMesh2D(int isDataDuplicate);
  /// `x` and `y` (and `z`, null for a flat mesh) hold one float for each node, `cell_index` three nodes for each cell.
  PbTriangleMesh2D(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index,
                   int isDataDuplicate);
  PbTriangleMesh2D(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index,
                   int isDataDuplicate);
  PbTriangleMesh2D(const PbTriangleMesh2D& other);
  PbTriangleMesh2D& operator=(const PbTriangleMesh2D& other);
  ~PbTriangleMesh2D() override;

  using PbIndexedMesh2D::getGeometry;
  using PbIndexedMesh2D::setGeometry;

  void setGeometry(int num_nodes, const float* x, const float* y, int num_cells, const int* cell_index);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z, int num_cells, const int* cell_index);
  /// Replaces the nodes and computes the cells: the Delaunay triangles of the nodes' x and y, counter-clockwise, which
  /// fill the convex hull. The mesh owns the cells, whatever it does with arrays.
  ///
  /// A node with a non-finite coordinate keeps its index and has no triangle; of nodes in one place one has the
  /// triangles of all. There are no cells if fewer than three distinct nodes are left or all are on one line, and none
  /// if there are more than 20 million nodes or memory runs out. The work is done by Triangle (J. R. Shewchuk,
  /// "Triangle: Engineering a 2D Quality Mesh Generator and Delaunay Triangulator", 1996), in time n log n; a library
  /// that was built without it posts an error and makes no cells.
  void setGeometry(int num_nodes, const float* x, const float* y);
  void setGeometry(int num_nodes, const float* x, const float* y, const float* z);
  /// Whether the library was built with what setGeometry() needs to compute cells.
  static int canTriangulate();

  /// The arrays and counts. Valid until the geometry changes.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells, const int*& cell_index) const;
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int*& cell_index) const;
  /// The same with a table of `num_cells` pointers to the three nodes of each cell, made on the first call.
  void getGeometry(int& num_nodes, const float*& x, const float*& y, int& num_cells,
                   const int* const*& cell_nodes) const;
  void getGeometry(int& num_nodes, const float*& x, const float*& y, const float*& z, int& num_cells,
                   const int* const*& cell_nodes) const;

  void meshLines(PoMeshLines* rep) const override;
  void meshFilled(PoMeshFilled* rep) const override;
  void meshContouring(PiContouring* contouring, const float* z) const override;
};

#endif
