#include <Ormelle/PbCell.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "quillane/mesh/CellWalk.h"

namespace {

// A square, a triangle beside it and a triangle above, with a node that no cell has.
const float kX[] = {0, 1, 1, 0, 2, 0.5F, 9}, kY[] = {0, 0, 1, 1, 0, 2, 9};
const int kNodes[] = {0, 1, 2, 3, 1, 4, 2, 3, 2, 5}, kSizes[] = {4, 3, 3};

PbIndexedMesh2D mixedSurface(int isDataDuplicate = 1) {
  return PbIndexedMesh2D(7, kX, kY, 3, kNodes, kSizes, isDataDuplicate);
}

struct Cells {
  std::vector<int> sizes, nodes;
  void add(std::initializer_list<int> cell) {
    sizes.push_back(int(cell.size()));
    nodes.insert(nodes.end(), cell);
  }
  int num() const { return int(sizes.size()); }
};

// A block of unit cells, of which one in three is whole, one cut into two wedges and one into six pyramids.
struct MixedBlock {
  Nodes nodes;
  Cells cells;

  MixedBlock(int num, float dent) : nodes(warpedNodes(num, num, num, dent, 4)) {
    for (int i = 0; i + 1 < num; ++i)
      for (int j = 0; j + 1 < num; ++j)
        for (int k = 0; k + 1 < num; ++k) addCell((i * num + j) * num + k, num, (i + j + k) % 3);
  }
  std::unique_ptr<PbIndexedMesh3D> make() const {
    return std::make_unique<PbIndexedMesh3D>(int(nodes.x.size()), nodes.x.data(), nodes.y.data(), nodes.z.data(),
                                             cells.num(), cells.nodes.data(), cells.sizes.data(), 0);
  }

 private:
  void addCell(int first, int num, int kind) {
    const int i = num * num, j = num;
    const int n[] = {first,     first + i,     first + i + j,     first + j,
                     first + 1, first + i + 1, first + i + j + 1, first + j + 1};
    if (kind == 0) {
      cells.add({n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7]});
    } else if (kind == 1) {
      cells.add({n[0], n[1], n[2], n[4], n[5], n[6]});
      cells.add({n[0], n[2], n[3], n[4], n[6], n[7]});
    } else {
      const int middle = int(nodes.x.size());
      for (std::vector<float>* c : {&nodes.x, &nodes.y, &nodes.z}) {
        float sum = 0;
        for (const int corner : n) sum += (*c)[std::size_t(corner)];
        c->push_back(sum / 8);
      }
      const int facets[6][4] = {{0, 1, 2, 3}, {4, 7, 6, 5}, {0, 4, 5, 1}, {1, 5, 6, 2}, {2, 6, 7, 3}, {3, 7, 4, 0}};
      for (const auto& f : facets) cells.add({n[f[0]], n[f[1]], n[f[2]], n[f[3]], middle});
    }
  }
};

std::vector<int> owners(const PbMesh& mesh, int node) {
  PbArrayOfInt cells;
  mesh.getNodeOwnerCellsInd(node, cells);
  return {cells.get(), cells.get() + cells.getNum()};
}

std::vector<int> owners(const PbMesh& mesh, std::initializer_list<int> nodes) {
  PbArrayOfInt asked, cells;
  for (const int node : nodes) asked.add(node);
  mesh.getNodesOwnerCellsInd(asked, cells);
  return {cells.get(), cells.get() + cells.getNum()};
}

// Asks a mesh everything; the sanitizers see what it reads.
void askEverything(const PbMesh& mesh) {
  PbArrayOfInt found, other;
  SbVec3f pcoord;
  for (int c = -1; c <= std::min(mesh.getNumCells(), 50); ++c) {
    if (const PbCell* cell = mesh.getCell(c)) {
      for (int n = 0; n < cell->getNumNodes(); ++n) {
        EXPECT_GE(cell->getNodeIndex(n), 0);
        EXPECT_LT(cell->getNodeIndex(n), mesh.getNumNodes());
      }
    }
    EXPECT_EQ(mesh.getTopoCell(c) != nullptr, mesh.getCell(c) != nullptr);
    mesh.getAdjacentCellsIndByNode(c, found);
    mesh.getAdjacentCellsIndByFacet(c, found);
  }
  for (const int node : {INT_MIN, -1, 0, 1, mesh.getNumNodes(), INT_MAX}) {
    mesh.getNodeOwnerCellsInd(node, found);
    owners(mesh, {0, node});
  }
  EXPECT_TRUE(std::isfinite(mesh.getArea()));
  EXPECT_TRUE(std::isfinite(mesh.getVolume()));
  EXPECT_TRUE(std::isfinite(mesh.getLongestEdgeLength()));
  EXPECT_EQ(search(mesh, SbVec3f(0.4F, 0.3F, 0.2F), 0), walk(mesh, SbVec3f(0.4F, 0.3F, 0.2F), 0));
  int index;
  mesh.getSmallestCellBox(index);
  if (FILE* sink = std::tmpfile()) {
    mesh.print(sink);
    std::fclose(sink);
  }
  if (const auto* surface = dynamic_cast<const PbIndexedMesh2D*>(&mesh)) {
    surface->getLimitIndices(found, other);
    for (int n = 0; n < other.getNum(); ++n) EXPECT_LT(unsigned(other.get(n)), unsigned(mesh.getNumNodes()));
    EXPECT_TRUE(std::isfinite(surface->getFirstCellNormal()[2]));
  }
}

}  // namespace

TEST(IndexedMesh, WalksTheNodesByEachCellsOwnCount) {
  for (const int isDataDuplicate : {0, 1}) {
    const PbIndexedMesh2D mesh = mixedSurface(isDataDuplicate);
    EXPECT_EQ(mesh.getCell(0)->getNumNodes(), 4);
    EXPECT_EQ(mesh.getCell(2)->getNumNodes(), 3);
    EXPECT_EQ(mesh.getCell(1)->getNodeIndex(1), 4);
    EXPECT_EQ(mesh.getTopoCell(2)->getNodeIndex(2), 5);
    EXPECT_FLOAT_EQ(mesh.getArea(), 2);
    EXPECT_FLOAT_EQ(mesh.getLongestEdgeLength(), std::sqrt(2.0F));
    EXPECT_EQ(owners(mesh, 2), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(owners(mesh, 6), std::vector<int>());
    EXPECT_EQ(owners(mesh, {2, 1}), (std::vector<int>{0, 1}));
    EXPECT_EQ(owners(mesh, {1, 2, 5}), std::vector<int>());
    EXPECT_EQ(owners(mesh, {}), std::vector<int>());

    int numNodes, numCells, size;
    const float *x, *y, *z;
    const int *nodes, *sizes;
    mesh.getGeometry(numNodes, x, y, z, numCells, nodes, sizes);
    EXPECT_EQ(numNodes, 7);
    EXPECT_EQ(numCells, 3);
    EXPECT_EQ(x == kX && y == kY && nodes == kNodes && sizes == kSizes, !isDataDuplicate);
    EXPECT_EQ(z, nullptr);
    EXPECT_EQ(mesh.getNodes(1, size), nodes + 4);
    EXPECT_EQ(size, 3);
    EXPECT_EQ(mesh.getNodes(3, size), nullptr);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(mesh.getOrientFlags(), nullptr);
  }
}

TEST(IndexedMesh, MeshesOfOneKindGiveRowsAndTakeNoOtherKind) {
  const int triangles[] = {0, 1, 2, 0, 2, 3}, sizes[] = {3, 3}, quadrangles[] = {0, 1, 2, 3}, four = 4;
  const float z[] = {0, 1, 2, 3, 4, 5, 6};
  PbTriangleMesh2D mesh(7, kX, kY, z, 2, triangles, 1);
  int numNodes, numCells;
  const float *x, *y, *ownZ;
  const int *nodes, *noSizes;
  const int* const* rows;
  mesh.getGeometry(numNodes, x, y, ownZ, numCells, rows);
  ASSERT_NE(rows, nullptr);
  EXPECT_EQ(rows[1][2], 3);
  EXPECT_EQ(ownZ[6], 6);
  mesh.getGeometry(numNodes, x, y, numCells, nodes, noSizes);
  EXPECT_EQ(rows[0], nodes);
  EXPECT_EQ(noSizes, nullptr);

  PbIndexedMesh2D& base = mesh;
  base.setGeometry(7, kX, kY, 1, quadrangles, &four);
  EXPECT_EQ(mesh.getNumCells(), 0) << "a quadrangle is no triangle";
  EXPECT_TRUE(mesh.isEmpty());
  mesh.getGeometry(numNodes, x, y, numCells, rows);
  EXPECT_EQ(rows, nullptr);
  base.setGeometry(7, kX, kY, 2, triangles, sizes);
  EXPECT_EQ(mesh.getNumCells(), 2);
  base.setGeometry(7, kX, kY, 2, triangles, nullptr);
  EXPECT_EQ(mesh.getNumCells(), 0);
}

TEST(IndexedMesh, CellsOfEveryKindFillABlock) {
  const MixedBlock block(5, 0);
  const auto mesh = block.make();
  EXPECT_NEAR(mesh->getVolume(), 64, 1e-3);
  EXPECT_FLOAT_EQ(mesh->getLongestEdgeLength(), std::sqrt(2.0F));
  PbArrayOfInt found;
  for (int c = 0; c < mesh->getNumCells(); ++c) {
    ASSERT_EQ(mesh->getCell(c)->getNumNodes(), block.cells.sizes[std::size_t(c)]);
    // Facet by facet, by counting shared nodes.
    std::vector<int> facet, expected;
    for (int f = 0; f < mesh->getCell(c)->getNumFacets(); ++f) {
      PbArrayOfInt corners;
      mesh->getCell(c)->getNodesIndexOfFacet(f, corners);
      for (int other = 0; other < mesh->getNumCells(); ++other) {
        int num;
        const int* nodes = mesh->getNodes(other, num);
        int numShared = 0;
        for (int n = 0; n < corners.getNum(); ++n) numShared += int(std::count(nodes, nodes + num, corners.get(n)));
        if (other != c && numShared == corners.getNum()) expected.push_back(other);
      }
    }
    mesh->getAdjacentCellsIndByFacet(c, found);
    EXPECT_EQ(std::vector<int>(found.get(), found.get() + found.getNum()), expected) << c;
  }
}

TEST(IndexedMesh, FindsWhatAWalkFinds) {
  for (const float dent : {0.0F, 0.3F}) {
    const MixedBlock block(5, dent);
    expectSameAsWalk(*block.make(), SbVec3f(0, 0, 0), SbVec3f(4, 4, 4), true);

    const Nodes nodes = warpedNodes(9, 9, 1, dent, 8);
    Cells cells;
    for (int i = 0; i < 8; ++i)
      for (int j = 0; j < 8; ++j) {
        const int n = i * 9 + j;
        if ((i + 2 * j) % 3) {
          cells.add({n, n + 9, n + 10, n + 1});
        } else {
          cells.add({n + 9, n, n + 1});
          cells.add({n + 9, n + 10, n + 1});
        }
      }
    for (const float* z : {static_cast<const float*>(nullptr), nodes.z.data()}) {
      const PbIndexedMesh2D mesh(81, nodes.x.data(), nodes.y.data(), z, cells.num(), cells.nodes.data(),
                                 cells.sizes.data(), 0);
      expectSameAsWalk(mesh, SbVec3f(-1, -1, -1), SbVec3f(9, 9, 1), false);
    }
  }
}

TEST(IndexedMesh, OrientationTellsHowACellTurns) {
  const float x[] = {0, 1, 1, 0, 2}, y[] = {0, 0, 1, 1, 0};
  // Counter-clockwise, clockwise, straight, clockwise, beyond the nodes.
  const int nodes[] = {0, 1, 2, 3, 1, 2, 4, 0, 1, 4, 3, 2, 1, 0, 0, 1, 9}, sizes[] = {4, 3, 3, 4, 3};
  PbIndexedMesh2D mesh(5, x, y, 5, nodes, sizes, 1);
  EXPECT_EQ(mesh.getElemOrientation(), PbIndexedMesh2D::ORIENTATION_NONE);
  const auto flags = [&] { return std::vector<int>(mesh.getOrientFlags(), mesh.getOrientFlags() + 5); };
  mesh.setElemOrientation(PbIndexedMesh2D::ORIENTATION_COUNTERCLOCKWISE);
  EXPECT_EQ(flags(), (std::vector<int>{1, 0, 0, 0, 0}));
  const float mirrored[] = {0, -1, -1, 0, -2};
  mesh.setVertices(mirrored, y);
  EXPECT_EQ(flags(), (std::vector<int>{0, 1, 0, 1, 0}));
  const PbIndexedMesh2D copy = mesh;
  mesh.setElemOrientation(PbIndexedMesh2D::ORIENTATION_NONE);
  EXPECT_EQ(mesh.getOrientFlags(), nullptr);
  EXPECT_NE(copy.getOrientFlags(), nullptr);
}

TEST(IndexedMesh, NewCoordinatesKeepCellsAndNewCellsDropTheOwners) {
  PbIndexedMesh2D mesh = mixedSurface();
  const float values[7] = {};
  mesh.addValuesSet(0, values, "kept");
  EXPECT_EQ(owners(mesh, 3), (std::vector<int>{0, 2}));
  const unsigned topology = mesh.getTopologyId(), geometry = mesh.getGeometryId();
  EXPECT_EQ(search(mesh, SbVec3f(0.5F, 0.5F, 0), 0), 0);
  std::vector<float> shifted(kX, kX + 7);
  for (float& x : shifted) x += 10;
  mesh.setCoordinates(shifted.data(), kY, nullptr);
  EXPECT_EQ(mesh.getTopologyId(), topology);
  EXPECT_NE(mesh.getGeometryId(), geometry);
  EXPECT_EQ(mesh.getNumValuesSet(), 1);
  EXPECT_EQ(mesh.getBoundingBox().getMin()[0], 10);
  EXPECT_EQ(search(mesh, SbVec3f(0.5F, 0.5F, 0), 0), -1);
  EXPECT_EQ(search(mesh, SbVec3f(10.5F, 0.5F, 0), 0), 0);
  mesh.setCoordinates(nullptr, kY, nullptr);
  EXPECT_EQ(mesh.getNodeCoord(1), SbVec3f(11, 0, 0)) << "without x nothing changes";

  const int other[] = {3, 2, 5, 0, 1, 3}, threes[] = {3, 3};
  mesh.setGeometry(7, kX, kY, 2, other, threes);
  EXPECT_NE(mesh.getTopologyId(), topology);
  EXPECT_EQ(owners(mesh, 3), (std::vector<int>{0, 1}));
  EXPECT_EQ(owners(mesh, 4), std::vector<int>());
  EXPECT_EQ(mesh.getNumValuesSet(), 0) << "the sets of a duplicating mesh go with its size";

  // The arrays of a mesh may be given back to it.
  int numNodes, numCells;
  const float *x, *y;
  const int *nodes, *sizes;
  mesh.getGeometry(numNodes, x, y, numCells, nodes, sizes);
  mesh.setGeometry(numNodes - 1, x, y, numCells, nodes, sizes);
  EXPECT_EQ(mesh.getNumNodes(), 6);
  EXPECT_EQ(owners(mesh, 3), (std::vector<int>{0, 1}));
}

TEST(IndexedMesh, AHubOfManyCellsIsNoQuadraticWalk) {
  const int num = 20000;
  std::vector<float> x = {0}, y = {0};
  std::vector<int> nodes;
  for (int n = 0; n < num; ++n) {
    x.push_back(std::cos(0.0003F * float(n)));
    y.push_back(std::sin(0.0003F * float(n)));
    if (n > 0) nodes.insert(nodes.end(), {0, n, n + 1});
  }
  const PbTriangleMesh2D fan(num + 1, x.data(), y.data(), num - 1, nodes.data(), 1);
  PbArrayOfInt found, sizes;
  for (int c = 0; c < num - 1; ++c) {
    fan.getAdjacentCellsIndByFacet(c, found);
    ASSERT_EQ(found.getNum(), c == 0 || c == num - 2 ? 1 : 2);
  }
  fan.getAdjacentCellsIndByNode(0, found);
  EXPECT_EQ(found.getNum(), num - 2);
  fan.getLimitIndices(sizes, found);
  ASSERT_EQ(sizes.getNum(), 1);
  EXPECT_EQ(sizes.get(0), num + 1);
}

TEST(IndexedMesh, BadCellsHaveNoObjectAndEndNothingButTheirOwnUse) {
  const struct {
    const char* name;
    std::vector<int> sizes, nodes;
    unsigned whole;  // a bit for each cell with an object
  } rows[] = {
      {"seven nodes in between", {3, 7, 3}, {0, 1, 2, 0, 1, 2, 3, 4, 5, 6, 1, 4, 2}, 0b101},
      {"no, one and two nodes", {0, 3, 1, 2, 3}, {0, 1, 2, 5, 5, 6, 1, 4, 2}, 0b10010},
      {"nodes that don't exist", {3, 4, 3, 3}, {0, 1, 7, 0, 1, 2, -1, INT_MIN, INT_MAX, 0, 1, 4, 2}, 0b1000},
      {"a negative size", {3, -1, 3}, {0, 1, 2, 1, 4, 2}, 0b1},
      {"the smallest size", {3, INT_MIN, 3}, {0, 1, 2, 1, 4, 2}, 0b1},
      {"an absurd size", {3, 1001, 3}, {0, 1, 2, 1, 4, 2}, 0b1},
      {"a giant size", {3, INT_MAX, INT_MAX}, {0, 1, 2, 1, 4, 2}, 0b1},
      {"one node three times", {3, 3}, {2, 2, 2, 1, 4, 2}, 0b11},
  };
  for (const auto& row : rows)
    for (const int isDataDuplicate : {0, 1}) {
      SCOPED_TRACE(row.name);
      const int num = int(row.sizes.size());
      const PbIndexedMesh2D mesh(7, kX, kY, num, row.nodes.data(), row.sizes.data(), isDataDuplicate);
      ASSERT_EQ(mesh.getNumCells(), num) << "cells keep their numbers";
      for (int c = 0; c < num; ++c) EXPECT_EQ(mesh.getCell(c) != nullptr, (row.whole >> c & 1) != 0) << c;
      askEverything(mesh);
    }
  const PbIndexedMesh2D seven(7, kX, kY, 3, rows[0].nodes.data(), rows[0].sizes.data(), 1);
  int size;
  seven.getNodes(1, size);
  EXPECT_EQ(size, 7);
  EXPECT_EQ(owners(seven, 6), std::vector<int>{1}) << "the cell names the node, whatever it is";
  EXPECT_EQ(owners(PbTriangleMesh2D(7, kX, kY, 2, rows[7].nodes.data(), 1), 2), (std::vector<int>{0, 1}));

  const int solid[] = {0, 1, 2, 3, 0, 1, 2, 3, 4, 5, 6, 0, 1, 2, 3, 4, 5, 0, 1, 2, 5, 8, 6, 1, 2};
  const int solidSizes[] = {4, 7, 6, 4, 4};
  const PbIndexedMesh3D volume(7, kX, kY, kX, 5, solid, solidSizes, 1);
  EXPECT_NE(volume.getCell(0), nullptr);
  EXPECT_EQ(volume.getCell(1), nullptr) << "a cell of seven nodes has no object";
  EXPECT_EQ(volume.getCell(2)->getNumNodes(), 6) << "and the next one starts behind its seven nodes";
  EXPECT_EQ(volume.getCell(2)->getNodeIndex(0), 0);
  EXPECT_NE(volume.getCell(3), nullptr);
  EXPECT_EQ(volume.getCell(4), nullptr) << "node 8 doesn't exist";
  askEverything(volume);
}

TEST(IndexedMesh, NothingIsReadThatWasNotGiven) {
  const int cell[] = {0, 1, 2, 3, 4, 5, 6, 0}, four = 4, eight = 8;
  const float* none = nullptr;
  for (const int isDataDuplicate : {0, 1}) {
    const std::unique_ptr<PbMesh> meshes[] = {
        std::make_unique<PbIndexedMesh2D>(-1, kX, kY, 1, cell, &four, isDataDuplicate),
        std::make_unique<PbIndexedMesh2D>(INT_MAX, none, kY, 1, cell, &four, isDataDuplicate),
        std::make_unique<PbIndexedMesh2D>(7, kX, kY, -1, cell, &four, isDataDuplicate),
        std::make_unique<PbIndexedMesh2D>(7, kX, kY, INT_MAX, nullptr, &four, isDataDuplicate),
        std::make_unique<PbIndexedMesh2D>(7, kX, kY, INT_MAX, cell, nullptr, isDataDuplicate),
        std::make_unique<PbTriangleMesh2D>(7, kX, kY, INT_MAX, cell, isDataDuplicate),
        std::make_unique<PbQuadrangleMesh2D>(INT_MIN, kX, kY, INT_MIN, cell, isDataDuplicate),
        std::make_unique<PbIndexedMesh3D>(7, kX, kY, none, 1, cell, &eight, isDataDuplicate),
        std::make_unique<PbTetrahedronMesh3D>(7, kX, kY, kX, INT_MAX / 2, cell, isDataDuplicate),
        std::make_unique<PbHexahedronMesh3D>(7, kX, kY, kX, INT_MAX, nullptr, isDataDuplicate)};
    for (const auto& mesh : meshes) {
      EXPECT_EQ(mesh->getNumCells(), 0);
      EXPECT_TRUE(mesh->isEmpty());
      askEverything(*mesh);
    }
  }
  // More nodes than an int can count: the cells up to there, of which none is read.
  const std::vector<int> sizes(2200000, 1000);
  const PbIndexedMesh2D mesh(7, kX, kY, 2200000, cell, sizes.data(), 0);
  int size;
  mesh.getNodes(2147482, size);
  EXPECT_EQ(size, 1000);
  EXPECT_EQ(mesh.getNodes(2147483, size), nullptr);
  EXPECT_EQ(mesh.getNodes(2199999, size), nullptr);
  EXPECT_EQ(mesh.getCell(0), nullptr);
}

TEST(IndexedMesh, NonFiniteNodesSpoilOnlyTheirCells) {
  const float nan = std::nanf("");
  std::vector<float> x(kX, kX + 7), y(kY, kY + 7);
  x[5] = nan;
  y[4] = HUGE_VALF;
  PbIndexedMesh2D mesh(7, x.data(), y.data(), 3, kNodes, kSizes, 1);
  mesh.setElemOrientation(PbIndexedMesh2D::ORIENTATION_COUNTERCLOCKWISE);
  EXPECT_FLOAT_EQ(mesh.getArea(), 1);
  EXPECT_FLOAT_EQ(mesh.getLongestEdgeLength(), 1);
  EXPECT_EQ(mesh.getBoundingBox().getMax(), SbVec2f(9, 9));
  EXPECT_EQ(mesh.getOrientFlags()[2], 0);
  askEverything(mesh);
}
