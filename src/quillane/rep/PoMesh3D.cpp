#include <Ormelle/PoMesh3D.h>

#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoMeshElement.h>

#include <cmath>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshBuffers.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiMeshScratch.h"
#include "quillane/rep/PiSurfaceStore.h"

PO_KIT_ABSTRACT_SOURCE(PoMesh3D)

// --- life -----------------------------------------------------------------------------------------------------------

PoMesh3D::PoMesh3D() : m_surface(std::make_unique<PiSurfaceStore>()) {
  PO_KIT_CONSTRUCTOR(PoMesh3D);
  PO_KIT_CONSTRUCTED(PoMesh3D);
}

PoMesh3D::~PoMesh3D() = default;

void PoMesh3D::setMesh(PbMesh3D* mesh) {
  inputs().mesh3D.give(mesh);
  inherited::setMesh(mesh);
}

PbMesh3D* PoMesh3D::getMesh() const {
  if (PbMesh3D* given = givenMesh()) return given;
  return isStateValid() ? PoMeshElement::getMesh3D(getState()) : nullptr;
}

PbMesh3D* PoMesh3D::givenMesh() const {
  if (PbMesh3D* given = inputs().mesh3D.given()) return given;
  // One that was given through the base class.
  return dynamic_cast<PbMesh3D*>(inputs().mesh.given());
}

void PoMesh3D::basicObjectChange(PbBase* object) {
  if (object == m_currentMesh3D && object->getChangeType() == PbBase::OBJECT_DELETED) m_currentMesh3D = nullptr;
  inherited::basicObjectChange(object);
}

void PoMesh3D::preRebuild() {
  inherited::preRebuild();
  const bool isTraversed = isStateValid() != 0;
  m_currentMesh3D = inputs().mesh3D.resolve(isTraversed, isTraversed ? PoMeshElement::getMesh3D(getState()) : nullptr);
  if (PbMesh3D* given = givenMesh()) m_currentMesh3D = given;
  m_currentMesh = m_currentMesh3D;
  if (m_currentMesh3D && !hasValuesToColor(m_currentMesh3D)) m_currentColoring = COLOR_INHERITED;
}

PbMesh3D* PoMesh3D::drawnMesh() const {
  return m_currentMesh3D && !m_currentMesh3D->isEmpty() ? m_currentMesh3D : nullptr;
}

std::size_t PoMesh3D::getMemorySize() const {
  return inherited::getMemorySize() + m_surface->memorySize() + getHashTableMemorySize();
}

std::size_t PoMesh3D::getHashTableMemorySize() const { return m_surface->points.tableMemorySize(); }

// --- what surface is made -------------------------------------------------------------------------------------------

const float* PoMesh3D::getIsosurfDataSet() { return nullptr; }
float PoMesh3D::getIsosurfValue() { return 0; }
int PoMesh3D::getSurfOrientation() { return 1; }
unsigned int PoMesh3D::getIsosurfDataSetId() { return 0; }
int PoMesh3D::getIsosurfDataSetIndex() { return -1; }
SbVec3f PoMesh3D::getOverallNormal() { return SbVec3f(0, 0, 0); }

void PoMesh3D::initOptQuadrangleList() { m_surface->quadrangles.clear(); }

void PoMesh3D::addOptQuadrangle(int p0, int p1, int p2, int p3, int cell) {
  m_surface->quadrangles.add({p0, p1, p2, p3}, cell);
}

void PoMesh3D::addLevelSurfOptQuadrangle() {
  m_surface->quadrangles.forEachShared([this](const PiQuadMerge::Quadrangle& quadrangle) {
    const auto& [a, b, c, d] = quadrangle.corners;
    const bool areStrips = m_surface->areStrips && !m_surface->areJoined;
    for (const int corner : {a, b, areStrips ? d : c, areStrips ? c : d, -1}) push_back_coord_index(corner);
    push_back_cell_index(quadrangle.cell);
  });
}

// --- points on edges ------------------------------------------------------------------------------------------------

void PoMesh3D::initSurfPointList() {
  m_surface->points.clear();
  buffers().coordIndices.clear();
  buffers().cellIndices.clear();
}

int PoMesh3D::addSurfPoint(int a, int b, int& index) { return m_surface->points.add(a, b, index); }

void PoMesh3D::computeCrossPointCoord(int isNew, const float* x, const float* y, const float* z, const float* values,
                                      int n1, int n2, float s1, float s2) {
  if (!isNew) return;
  const float t = n1 == n2 ? 0 : s1 / (s1 - s2);
  const auto between = [=](const float* c) { return n1 == n2 ? c[n1] : c[n1] + t * (c[n2] - c[n1]); };
  if (values) push_back_value(between(values));
  push_back_point(SbVec3f(between(x), between(y), between(z)));
}

void PoMesh3D::crossPlaneAndQuadrangle(const float* x, const float* y, const float* z, const float* values,
                                       const int* nodeIndices, const int (*edgeTable)[2], float a, float b, float c,
                                       float d, int& ok, int* points) {
  static constexpr int kPerimeter[4][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
  if (!edgeTable) edgeTable = kPerimeter;
  ok = 0;
  float s[4];
  for (int corner = 0; corner < 4; ++corner) {
    const int node = nodeIndices[corner];
    s[corner] = a * x[node] + b * y[node] + c * z[node] - d;
  }
  // Which points there are is settled before any is made: one that is rejected leaves nothing behind.
  int cuts[2][2];
  int numCuts = 0;
  const auto addCut = [&](int first, int second) {
    if (numCuts < 2) {
      cuts[numCuts][0] = first;
      cuts[numCuts][1] = second;
    }
    ++numCuts;
  };
  for (int corner = 0; corner < 4; ++corner)
    if (s[corner] == 0) addCut(corner, corner);
  for (int edge = 0; edge < 4; ++edge) {
    const auto& [first, second] = edgeTable[edge];
    // Not the sign of the product, which may underflow to 0.
    if ((s[first] < 0 && s[second] > 0) || (s[first] > 0 && s[second] < 0)) addCut(first, second);
  }
  if (numCuts != 2) return;
  for (int cut = 0; cut < 2; ++cut) {
    const auto& [first, second] = cuts[cut];
    const int n1 = nodeIndices[first], n2 = nodeIndices[second];
    const int isNew = addSurfPoint(n1, n2, points[cut]);
    computeCrossPointCoord(isNew, x, y, z, values, n1, n2, s[first], s[second]);
  }
  ok = 1;
}
