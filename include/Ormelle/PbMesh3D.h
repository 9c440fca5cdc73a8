#ifndef ORMELLE_PBMESH3D_H
#define ORMELLE_PBMESH3D_H

#include <Ormelle/PbMesh.h>

class PiMeshSkin;
class PiSkinCache;
class PoCellFilter;
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

  /// The facets that one cell only has, of the cells that `filter` accepts when it is given the set of values
  /// `value_set_index`, or of all cells if it is null. For the library's own algorithms.
  ///
  /// The mesh keeps the skin for each filter, and all who ask share it. It is made anew when the cells of the mesh, the
  /// filter (its node id) or the values given to it have changed, and then has a new `skin_id`. It belongs to the mesh;
  /// the next request for the same filter may change it.
  PiMeshSkin* getSkinTopology(const PoCellFilter* filter, int value_set_index, unsigned int& skin_id) const;

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
  mutable std::shared_ptr<PiSkinCache> m_skins;  // shared, so that its type needn't be known where meshes end
};

#endif
