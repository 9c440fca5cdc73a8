#ifndef ORMELLE_TESTS_WRAPPEDMESH_H
#define ORMELLE_TESTS_WRAPPEDMESH_H

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbMesh3D.h>

/// A mesh of the application: only what every mesh must have.
class WrappedMesh : public PbMesh3D {
 public:
  explicit WrappedMesh(const PbMesh3D& mesh) : PbMesh3D(0), m_mesh(mesh) {
    setCounts(mesh.getNumNodes(), mesh.getNumCells(), 1);
  }
  SbVec3f getNodeCoord(int node) const override { return m_mesh.getNodeCoord(node); }
  void getNodeOwnerCellsInd(int, PbArrayOfInt& cells) const override { cells.empty(); }
  const PbCell* getCell(int cell) const override { return m_mesh.getCell(cell); }
  const PbCell* getTopoCell(int cell) const override { return m_mesh.getTopoCell(cell); }

 protected:
  void updateBoundingBox() const override { setBoundingBox(m_mesh.getBoundingBox()); }

 private:
  const PbMesh3D& m_mesh;
};

#endif
