#ifndef ORMELLE_PBMESH1D_H
#define ORMELLE_PBMESH1D_H

#include <Ormelle/PbMesh.h>

class PoChart;
class SoMaterial;
class SoState;

/// Root of the one-dimensional meshes, the data behind charts: places x of nodes, and any number of sets of y values.
///
/// There are no cells: `getCell` and `findContainingCell` give null, areas and volumes are 0, and nodes have no
/// neighbours. Node i is at (getXCoord(i), 0, 0). A mesh copies all arrays it is given.
///
/// Every chart draws the polyline that the mesh makes here of x and of the set of values that the chart names. How the
/// nodes are joined, at which points something is put, and the data mapping come from the traversal state
/// (PoMesh1DHints, PoMesh1DFilter, PoDataMapping); the y values and the kind of colouring come from the chart.
/// @code
/// int num, *index;
/// float *x, *y;
/// SoMaterial* material;
/// mesh->getXYGeometry(this, getState(), num, x, y, material, 0, index);
/// ...
/// delete[] x;
/// delete[] y;
/// @endcode
///
/// @par What the operations give
/// `x`, `y` and the index arrays are new arrays that the caller frees with `delete[]`. `material` is a new node without
/// a reference: add it to a group, or `ref()` and `unref()` it. What doesn't apply is null. With an empty mesh, a null
/// chart, or without the set of y values for each node, `num` is 0 and all the rest is null. A null state stands for
/// one without attribute nodes.
///
/// @par Materials
/// Null if the chart inherits its colours or names no source of them, see PoChart. Each list of the material has either
/// one element for the whole curve, or one for each point given. With a data mapping, the diffuse colour of a node is
/// that of its value; there are transparencies if the mapping has them enabled, or if a value has no colour, which then
/// counts as fully transparent. With the chart's own material, a list of several elements is used over and over along
/// the nodes. Points between two nodes get the mix at their share of the way along the curve. With `PER_PART`, however,
/// they get what the node before them has: the entry of a point is that of the segment that starts there.
///
/// @par Values that are no numbers
/// A node with a non-finite coordinate stays in the curve and takes the points next to it along, so that a chart can
/// leave a gap there. Places on an axis and thresholds are looked for only between finite points.
class ORMELLE_API PbMesh1D : public PbMesh {
 public:
  ~PbMesh1D() override;

  /// The curve as it is drawn. In every interpretation but `AS_IS` and `SMOOTH`, points equal to the one before them
  /// are left out.
  ///
  /// If `want_index` isn't 0, `index` gets for each node its point of the curve. The inner nodes of `HISTO_X` and
  /// `HISTO_Y` have none of their own: theirs is the point where the way from the node before ends.
  virtual void getXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                             SoMaterial*& material, int want_index, int*& index) const;

  /// The points of the curve that the filter on the state picks; all nodes if there is none.
  ///
  /// A filter of indices gives nodes of the mesh. A filter of places gives, for each place in the order of the filter,
  /// the points of the drawn curve that are there, which may be several when the curve folds back. A segment has its
  /// first end and not its last, so that a bend is found once; the last point of the curve thus isn't found. Should
  /// there be more than 16777216 points, those further along the curve are left out.
  ///
  /// A parameter array is made only of a pointer that isn't null on entry, whatever it points to, and only with a
  /// filter of places: `param_a` gets `num` positions on the segment, from 0 at its start to 1; `param_b` gets
  /// `num` pairs (dx, dy), the unit vector along the segment.
  /// @{
  virtual void getFilteredXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                                     SoMaterial*& material, float*& param_a, float*& param_b) const;
  virtual void getFilteredXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                                     SoMaterial*& material, float*& param_a) const;
  virtual void getFilteredXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                                     SoMaterial*& material) const;
  /// @}

  /// Place of a node; 0 for an index outside the mesh.
  virtual float getXCoord(int node) const = 0;

  /// The curve as it is drawn, with a point added wherever it goes from one side of `threshold` to the other, on axis x
  /// (`axis` 0) or y (any other). A point of the curve exactly on the threshold isn't a crossing.
  ///
  /// `inter_index` gets the indices of the `num_inter` points added; null if there are none.
  void getGeometryInterThreshold(const PoChart* chart, const SoState* state, int axis, float threshold, int& num,
                                 float*& x, float*& y, SoMaterial*& material, int want_index, int*& index,
                                 int& num_inter, int*& inter_index) const;

  SbVec3f getNodeCoord(int node) const override;
  void getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const override;
  const PbCell* getCell(int cell_index) const override;
  float getVolume() const override;
  float getArea() const override;
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
  const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                   const PbCell* adjacent_cell) const override;
  void print(FILE* file) const override;

 protected:
  PbMesh1D();
  PbMesh1D(const PbMesh1D& other);
  PbMesh1D& operator=(const PbMesh1D& other);

  void updateBoundingBox() const override;
  const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                            PbArrayOfInt& excluded) const override;
  /// Stores the number of nodes, and announces the new geometry.
  void storeSize(int size);
};

#endif
