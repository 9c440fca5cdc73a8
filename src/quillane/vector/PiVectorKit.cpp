#include "quillane/vector/PiVectorKit.h"

int PiVectorKit::numVectors(const PbMesh& mesh, int vecsIndex) {
  return mesh.getVecsBinding(vecsIndex) == PbMesh::PER_CELL ? mesh.getNumCells() : mesh.getNumNodes();
}

const float* PiVectorKit::scalarsOf(const PbMesh& mesh, int vecsIndex, int valuesIndex) {
  if (mesh.getValuesBinding(valuesIndex) != mesh.getVecsBinding(vecsIndex)) return nullptr;
  return mesh.getValuesSet(valuesIndex);
}
