#ifndef ORMELLE_PBMESH2D_H
#define ORMELLE_PBMESH2D_H

#include <Inventor/SbBox2f.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PbMeshArray.h>

class PiContouring;
class PoMesh2DVec;
class PoMeshFilled;
class PoMeshLines;
class SbVec2f;
class SoMFVec3f;

/// Root of surface meshes. A surface is flat, z being 0, or has one z for each node.
class ORMELLE_API PbMesh2D : public PbMesh {
 public:
  ~PbMesh2D() override;

  /// Extent of the 3D box in x and y.
  virtual SbBox2f getBoundingBox() const;
  /// One z for each node, or null for a flat mesh.
  virtual const float* getZcoord() const;

  /// @name Double dispatch
  /// A representation calls these on its mesh, and the concrete mesh calls the representation back with its own type.
  /// Here they do nothing.
  /// @{
  virtual void meshLines(PoMeshLines* rep) const;
  virtual void meshFilled(PoMeshFilled* rep) const;
  virtual void meshContouring(PiContouring* contouring, const float* z) const;
  virtual void mesh2DVec(PoMesh2DVec* rep) const;
  /// @}

  /// Fills `coords` with all nodes in node order, with z from the argument (one for each node), or 0 when it is null.
  virtual void getNodesCoord(const float* z, SoMFVec3f& coords) const = 0;
  /// The boundary as closed contours: `sizes` gets the number of nodes of each contour, `indices` the nodes, contour
  /// after contour; a contour doesn't repeat its first node. Both are emptied first.
  virtual void getLimitIndices(PbArrayOfInt& sizes, PbArrayOfInt& indices) const = 0;
  /// 1 if getSidesNormals() knows the normals.
  virtual int hasSidesNormals() const;
  /// Gives one outward unit normal, in the plane of x and y, for each segment of the boundary, in the order of
  /// getLimitIndices(), of which `sizes` comes. The array is made by `new[]` and belongs to the caller. Null if the
  /// mesh knows no such normals.
  virtual void getSidesNormals(SbVec3f*& normals, const PbArrayOfInt& sizes) const;
  /// Normal of cell 0 by its first edges, not normalised; it points to positive z when the cell's corners run
  /// counter-clockwise seen from there. Zero without a cell.
  virtual SbVec3f getFirstCellNormal() const = 0;

  using PbMesh::addVecsSet;
  /// Stores plane vectors, one for each node, with z 0. They are copied even in a mesh that borrows.
  void addVecsSet(int set_index, const SbVec2f* val, const SbString& set_name);

  /// Saves z and, for an index of 0 or more, draws z from that set of values: null when there is none, which makes the
  /// mesh flat. One level deep: call popZCoord() before the next push.
  void pushZCoord(int set_index);
  /// Restores the z that pushZCoord() saved.
  void popZCoord();

  /// 0.
  float getVolume() const override;
  /// Sum of the areas of all cells that have finite coordinates. Meshes without cell objects have none.
  float getArea() const override;

 protected:
  explicit PbMesh2D(int isDataDuplicate);
  PbMesh2D(const PbMesh2D& other);
  PbMesh2D& operator=(const PbMesh2D& other);

  /// Replaces z by `num` values, copied or borrowed as the mesh does; null makes the mesh flat.
  void setZCoord(int num, const float* z);
  /// z of a node, 0 in a flat mesh.
  float getNodeZ(int node) const { return m_zCoord ? m_zCoord[node] : 0.0F; }

  /// Finds nothing.
  const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                            PbArrayOfInt& excluded) const override;
  /// The cell of lowest index that holds the point, as a walk over all cells would find it, by an index over the boxes
  /// of the cells that is built on first use and whenever the geometry changed. For meshes with cell objects.
  const PbCell* findFirstContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const;

 private:
  const float* m_zCoord = nullptr;
  const float* m_savedZCoord = nullptr;
  PbMeshArray<float> m_ownZCoord;
};

#endif
