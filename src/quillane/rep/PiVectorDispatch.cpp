// How meshes hand their vectors to the kits that draw them.

#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoMesh2DVec.h>
#include <Ormelle/PoMesh3DVec.h>

namespace {

/// The mean of the nodes of a cell.
SbVec3f middleOf(const PbMesh& mesh, const PbCell& cell) {
  SbVec3f sum(0, 0, 0);
  const int num = cell.getNumNodes();
  for (int i = 0; i < num; ++i) sum += mesh.getNodeCoord(cell.getNodeIndex(i));
  return num > 0 ? sum / static_cast<float>(num) : sum;
}

template <class Kit>
void addVectors(const PbMesh& mesh, Kit& kit) {
  const int set = kit.vecsIndex.getValue();
  const SbVec3f* vectors = mesh.getVecsSet(set);
  if (!vectors) return;
  if (mesh.getVecsBinding(set) == PbMesh::PER_CELL) {
    for (int i = 0; i < mesh.getNumCells(); ++i)
      if (const PbCell* cell = mesh.getCell(i)) kit.addVector(middleOf(mesh, *cell), vectors[i]);
    return;
  }
  for (int i = 0; i < mesh.getNumNodes(); ++i) kit.addVector(mesh.getNodeCoord(i), vectors[i]);
}

}  // namespace

void PbMesh2D::mesh2DVec(PoMesh2DVec* rep) const { addVectors(*this, *rep); }

void PbMesh3D::mesh3DVec(PoMesh3DVec* rep) const { addVectors(*this, *rep); }
