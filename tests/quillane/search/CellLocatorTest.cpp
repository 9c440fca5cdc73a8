#include "quillane/search/PiCellLocator.h"

#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "quillane/mesh/CellWalk.h"
#include "support/MeshFamily.h"

namespace {

float wave(float x, float y) { return 0.4F * std::sin(x) + 0.1F * y; }

std::vector<SbVec3f> probesRound(const PbMesh& mesh) {
  const SbBox3f box = mesh.PbMesh::getBoundingBox();
  const SbVec3f beyond = (box.getMax() - box.getMin()) * 0.1F;
  std::vector<SbVec3f> points = probes(mesh, box.getMin() - beyond, box.getMax() + beyond, 3);
  for (int c = 0; c < mesh.getNumCells(); ++c) {
    // On a facet: the mean of its nodes.
    const PbCell& cell = *mesh.getCell(c);
    PbArrayOfInt nodes;
    cell.getNodesIndexOfFacet(c % cell.getNumFacets(), nodes);
    SbVec3f sum(0, 0, 0);
    for (int n = 0; n < nodes.getNum(); ++n) sum += mesh.getNodeCoord(nodes.get(n));
    points.push_back(sum / float(nodes.getNum()));
  }
  for (const float bad : {std::nanf(""), HUGE_VALF, 1e30F, -3e38F})
    for (int axis = 0; axis < 3; ++axis) {
      points.push_back(box.getCenter());
      points.back()[axis] = bad;
    }
  return points;
}

// The locator gives what the mesh gives, and the cells it gives are those of the mesh.
void expectSameAsMesh(const PbMesh& mesh) {
  const PiCellLocator locator(mesh);
  PiPlainCell cell;
  int numFound = 0;
  for (const SbVec3f& point : probesRound(mesh)) {
    SbVec3f pcoord, expected;
    const PbCell* found = mesh.findContainingCell(point, 0, expected);
    ASSERT_EQ(locator.find(point, cell, pcoord), found != nullptr) << point[0] << ' ' << point[1] << ' ' << point[2];
    ASSERT_EQ(locator.locate(point, -1, pcoord), found ? found->getIndex() : -1);
    if (!found) continue;
    ++numFound;
    ASSERT_EQ(cell.index(), found->getIndex());
    EXPECT_EQ(pcoord, expected);
    ASSERT_EQ(cell.numNodes(), found->getNumNodes());
    float weights[8], expectedWeights[8];
    cell.weights(pcoord, weights);
    found->getWeight(pcoord, expectedWeights);
    std::vector<float> values(static_cast<std::size_t>(mesh.getNumNodes()));
    for (int n = 0; n < cell.numNodes(); ++n) {
      EXPECT_EQ(cell.node(n), found->getNodeIndex(n));
      EXPECT_EQ(cell.point(n), found->getNodeCoord(n));
      EXPECT_EQ(weights[n], expectedWeights[n]);
      values[static_cast<std::size_t>(cell.node(n))] = float(n * n);
    }
    EXPECT_FLOAT_EQ(cell.value(pcoord, values.data()), found->getValue(pcoord, values.data()));
    EXPECT_EQ(cell.longestEdge(), found->getLongestEdgeLength());
    // From any other cell, some cell that holds the point is found.
    const int start = (found->getIndex() * 7 + 1) % mesh.getNumCells();
    const int other = locator.locate(point, start, pcoord);
    ASSERT_GE(other, 0);
    ASSERT_TRUE(locator.read(other, cell));
    EXPECT_TRUE(cell.locate(point, 0, expected));
    EXPECT_EQ(pcoord, expected);
    EXPECT_EQ(locator.locate(point, other, pcoord), other) << "a point that stays in its cell";
  }
  EXPECT_GT(numFound, 100);
  for (const int outside : {-1, mesh.getNumCells()}) {
    EXPECT_FALSE(locator.read(outside, cell));
    EXPECT_EQ(cell.index(), -1);
    SbVec3f pcoord;
    EXPECT_FALSE(cell.locate(SbVec3f(0, 0, 0), 0, pcoord));
  }
}

// A mesh of the application: only what every mesh must have.
class ForeignMesh : public PbMesh3D {
 public:
  explicit ForeignMesh(const PbMesh3D& mesh) : PbMesh3D(0), m_mesh(mesh) {
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

}  // namespace

class LocatorOfSurface : public testing::TestWithParam<MeshKind2D> {};
INSTANTIATE_TEST_SUITE_P(Mesh, LocatorOfSurface, testing::ValuesIn(meshKinds2D()), MeshKindName());

TEST_P(LocatorOfSurface, AnswersWhatTheMeshAnswers) {
  RectangleSpec spec;
  spec.numX = 12, spec.numY = 9;
  expectSameAsMesh(*GetParam().make(spec, 0).mesh);
  spec.z = wave;
  expectSameAsMesh(*GetParam().make(spec, 0).mesh);
}

class LocatorOfVolume : public testing::TestWithParam<MeshKind3D> {};
INSTANTIATE_TEST_SUITE_P(Mesh, LocatorOfVolume, testing::ValuesIn(meshKinds3D()), MeshKindName());

TEST_P(LocatorOfVolume, AnswersWhatTheMeshAnswers) {
  BoxSpec spec;
  spec.numX = 6, spec.numY = 7, spec.numZ = 5;
  const auto sample = GetParam().make(spec, 0);
  expectSameAsMesh(*sample.mesh);
  expectSameAsMesh(ForeignMesh(*sample.mesh));
}

TEST_P(LocatorOfVolume, ServesManyThreads) {
  BoxSpec spec;
  spec.numX = spec.numY = spec.numZ = 9;
  const auto sample = GetParam().make(spec, 0);
  const std::vector<SbVec3f> points = probesRound(*sample.mesh);
  const PiCellLocator locator(*sample.mesh);
  std::vector<int> expected;
  SbVec3f pcoord;
  for (const SbVec3f& point : points) expected.push_back(locator.locate(point, -1, pcoord));
  std::vector<std::vector<int>> found(4);
  std::vector<std::thread> threads;
  for (std::vector<int>& mine : found)
    threads.emplace_back([&] {
      SbVec3f place;
      for (const SbVec3f& point : points) mine.push_back(locator.locate(point, -1, place));
    });
  for (std::thread& thread : threads) thread.join();
  for (const std::vector<int>& mine : found) EXPECT_EQ(mine, expected);
}

TEST(CellLocator, OutlivesTheIndexOfTheMesh) {
  const Nodes nodes = warpedNodes(6, 6, 6, 0.2F, 3);
  const PbCartesianGrid3D mesh(6, 6, 6, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
  const PiCellLocator locator(mesh);
  const int before = search(mesh, SbVec3f(2.5F, 2.5F, 2.5F), 0);
  search(mesh, SbVec3f(2.5F, 2.5F, 2.5F), 3);  // makes the mesh build another
  SbVec3f pcoord;
  EXPECT_EQ(locator.locate(SbVec3f(2.5F, 2.5F, 2.5F), -1, pcoord), before);
}

TEST(CellLocator, FindsNothingWhereThereAreNoCells) {
  const float axis[] = {0, 1, 2};
  SbVec3f pcoord;
  PiPlainCell cell;
  const PbPolarGrid2D polar(3, 3, axis, axis, 0);
  const PbRegularMesh1D line(3, 0, 1);
  const PbIndexedMesh3D empty(0);
  for (const PbMesh* mesh :
       {static_cast<const PbMesh*>(&polar), static_cast<const PbMesh*>(&line), static_cast<const PbMesh*>(&empty)}) {
    const PiCellLocator locator(*mesh);
    EXPECT_EQ(locator.locate(SbVec3f(0.5F, 0.5F, 0), 0, pcoord), -1);
    EXPECT_FALSE(locator.read(0, cell));
  }
}
