#ifndef ORMELLE_PBMESH3D_H
#define ORMELLE_PBMESH3D_H

#include <Ormelle/PbMesh.h>

class PiCellOctree;
class PoMesh3D;
class PoMesh3DVec;
class PoMeshCrossContour;
class PoMeshCrossSection;
class PoMeshSkeleton;
class PoMeshSkin;

/// Root of volume meshes.
class ORMELLE_API PbMesh3D : public PbMesh {
 public:
  ~PbMesh3D() override;

  /// @name Double dispatch
  /// A representation calls these on its mesh, and the concrete mesh calls the representation back with its own type.
  /// Here they do nothing.
  /// @{
  virtual void meshSkin(PoMeshSkin* rep) const;
  virtual void meshLevelSurfShapeIndices(PoMesh3D* rep, int set_index, const float* values) const;
  virtual void meshCrossSection(PoMeshCrossSection* rep) const;
  virtual void meshCrossContour(PoMeshCrossContour* rep) const;
  virtual void meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y, float* z) const;
  virtual void mesh3DVec(PoMesh3DVec* rep) const;
  /// @}

  /// 1 if the mesh cuts faster along its axes than across them.
  virtual int isCrossSectionOptimal() const;
  /// Number of facets that the skin may have at most, to reserve memory; 0 if unknown.
  virtual int evaluateSkinFacesNum() const;

  /// Sum of the volumes of all cells that have finite coordinates.
  float getVolume() const override;
  /// 0.
  float getArea() const override;

 protected:
  explicit PbMesh3D(int isDataDuplicate);
  PbMesh3D(const PbMesh3D& other);
  PbMesh3D& operator=(const PbMesh3D& other);

  /// Searches by an octree over the boxes of the cells, which is built on first use and whenever the geometry changed.
  /// Of several cells that hold the point the lowest index is found. Null outside the octree's box, which is that of
  /// the mesh, one percent larger.
  const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                            PbArrayOfInt& excluded) const override;

 private:
  mutable std::unique_ptr<PiCellOctree> m_octree;
};

#endif
