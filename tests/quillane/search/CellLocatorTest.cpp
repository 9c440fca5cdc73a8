#include "quillane/search/PiCellLocator.h"

#include <Inventor/SbVec3d.h>
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
#include "quillane/mesh/WrappedMesh.h"
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
  expectSameAsMesh(WrappedMesh(*sample.mesh));
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

// The mesh is a pyramid of six pyramids round the middle of a cube, or a ring of hexahedra whose inner edges fall
// together: no point near the place where the inversion is singular may be lost.
TEST(CellLocator, FindsPointsWhereTheInversionIsSingular) {
  const float x[] = {0, 1, 1, 0, 0, 1, 1, 0, 0.4F}, y[] = {0, 0, 1, 1, 0, 0, 1, 1, 0.6F};
  const float z[] = {0, 0, 0, 0, 1, 1, 1, 1, 0.5F};
  const int pyramids[] = {0, 3, 2, 1, 8, 4, 5, 6, 7, 8, 0, 1, 5, 4, 8, 1, 2, 6, 5, 8, 2, 3, 7, 6, 8, 3, 0, 4, 7, 8};
  const int fives[] = {5, 5, 5, 5, 5, 5};
  const PbIndexedMesh3D cube(9, x, y, z, 6, pyramids, fives, 0);

  std::vector<float> ring[3];
  std::vector<int> wedges;
  const int num = 7;
  for (int n = 0; n <= num; ++n)
    for (int up = 0; up < 2; ++up) {  // node 0 and 1 are the axis
      const float angle = 6.2831853F * float(n) / float(num);
      ring[0].push_back(n == 0 ? 0.3F : 0.3F + std::cos(angle));
      ring[1].push_back(n == 0 ? 0.1F : 0.1F + std::sin(angle));
      ring[2].push_back(float(up));
    }
  for (int n = 0; n < num; ++n) {
    const int a = 2 + 2 * n, b = 2 + 2 * ((n + 1) % num);
    for (const int node : {0, a, b, 0, 1, a + 1, b + 1, 1}) wedges.push_back(node);
  }
  const std::vector<int> eights(num, 8);
  const PbIndexedMesh3D wheel(2 * num + 2, ring[0].data(), ring[1].data(), ring[2].data(), num, wedges.data(),
                              eights.data(), 0);

  std::mt19937 random(5);
  std::uniform_real_distribution<float> share(-1, 1);
  SbVec3f pcoord;
  for (const auto& [mesh, start] :
       {std::pair(&cube, SbVec3f(0.4F, 0.6F, 0.5F)), std::pair(&wheel, SbVec3f(0.3F, 0.1F, 0.5F))}) {
    const PiCellLocator locator(*mesh);
    std::vector<SbVec3f> nodes;
    for (int n = 0; n < mesh->getNumNodes(); ++n) nodes.push_back(mesh->getNodeCoord(n));
    for (int n = 0; n < 3000; ++n) {
      const float distance = n == 0 ? 0 : 0.2F * std::pow(10.0F, -7.0F * float(n) / 3000);
      const SbVec3f point = start + SbVec3f(share(random), share(random), share(random)) * distance;
      PiPlainCell cell;
      ASSERT_TRUE(locator.find(point, cell, pcoord)) << distance;
      EXPECT_LT((cell.value(pcoord, nodes.data()) - point).length(), 2e-6F) << distance;
      EXPECT_TRUE(mesh->findContainingCell(point, 0, pcoord, mesh->getCell(n % mesh->getNumCells()))) << distance;
    }
  }
}

// Points on facets, edges and nodes, seen from every start cell: whatever way a path comes, it finds a cell.
TEST(CellLocator, LosesNoPointOnABorder) {
  for (const float dent : {0.0F, 0.1F, 0.25F}) {
    const Nodes nodes = warpedNodes(9, 9, 9, dent, 3);
    const PbCartesianGrid3D mesh(9, 9, 9, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
    const PiCellLocator locator(mesh);
    std::mt19937 random(8);
    std::uniform_real_distribution<float> share(0, 1);
    SbVec3f pcoord;
    for (int c = 0; c < mesh.getNumCells(); ++c)
      for (int n = 0; n < 12; ++n) {
        SbVec3f place(share(random), share(random), share(random));
        place[n % 3] = float(n % 2);
        if (n > 5) place[(n + 1) % 3] = float(n / 2 % 2);
        float weights[8];
        const PbCell* cell = mesh.getCell(c);
        cell->getWeight(place, weights);
        SbVec3d sum(0, 0, 0);  // so that points on the skin are rounded once only
        for (int node = 0; node < 8; ++node) sum += SbVec3d(cell->getNodeCoord(node)) * double(weights[node]);
        const SbVec3f point(sum);
        ASSERT_TRUE(mesh.findContainingCell(point, 0, pcoord)) << c << ' ' << n;
        ASSERT_TRUE(mesh.findContainingCell(point, 0, pcoord, mesh.getCell((c + n) % mesh.getNumCells()))) << c;
        ASSERT_GE(locator.locate(point, c, pcoord), 0) << c << ' ' << n;
      }
  }
}

// Many small cells in one corner and a few that are large: the crowded part has a finer index.
TEST(CellLocator, FindsInGradedMeshesWhatAWalkFinds) {
  Nodes nodes = warpedNodes(26, 26, 26, 0.2F, 3);
  for (auto* axis : {&nodes.x, &nodes.y, &nodes.z})
    for (float& c : *axis) c = std::exp(0.4F * c);
  const PbCartesianGrid3D mesh(26, 26, 26, nodes.x.data(), nodes.y.data(), nodes.z.data(), 0);
  std::mt19937 random(8);
  std::uniform_int_distribution<int> node(0, mesh.getNumNodes() - 1);
  for (int n = 0; n < 60; ++n) {
    const SbVec3f point = mesh.getNodeCoord(node(random)) * 0.7F + mesh.getNodeCoord(node(random)) * 0.3F;
    ASSERT_EQ(search(mesh, point, 0), walk(mesh, point, 0));
  }
}
