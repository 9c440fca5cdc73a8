#include <Inventor/fields/SoMFVec3f.h>
#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbDefinedValue.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "quillane/view/PiView2D.h"

namespace {

std::vector<float> range(int num, float step = 1) {
  std::vector<float> values;
  for (int i = 0; i < num; ++i) values.push_back(step * float(i));
  return values;
}

std::vector<int> toVector(const PbArrayOfInt& array) { return {array.get(), array.get() + array.getNum()}; }

std::string printed(const PbMesh& mesh) {
  FILE* file = std::tmpfile();
  mesh.print(file);
  std::string text(static_cast<std::size_t>(std::ftell(file)), ' ');
  std::rewind(file);
  EXPECT_EQ(std::fread(text.data(), 1, text.size(), file), text.size());
  std::fclose(file);
  return text;
}

template <class Mesh>
void expectEmpty(const Mesh& mesh) {
  EXPECT_TRUE(mesh.isEmpty());
  EXPECT_EQ(mesh.getNumNodes(), 0);
  EXPECT_EQ(mesh.getNumCells(), 0);
  EXPECT_EQ(mesh.getCell(0), nullptr);
  EXPECT_EQ(mesh.getTopoCell(0), nullptr);
  EXPECT_EQ(mesh.getArea() + mesh.getVolume() + mesh.getLongestEdgeLength(), 0);
  EXPECT_TRUE(mesh.PbMesh::getBoundingBox().isEmpty());
  int index = 7;
  EXPECT_TRUE(mesh.getBiggestCellBox(index).isEmpty());
  EXPECT_EQ(index, -1);
  PbArrayOfInt cells;
  mesh.getNodeOwnerCellsInd(0, cells);
  mesh.getNodesOwnerCellsInd(cells, cells);
  mesh.getAdjacentCellsIndByNode(0, cells);
  EXPECT_EQ(cells.getNum(), 0);
  SbVec3f pcoord;
  EXPECT_EQ(mesh.findContainingCell(SbVec3f(0, 0, 0), 1, pcoord), nullptr);
  EXPECT_FALSE(printed(mesh).empty());
  mesh.getCellNodeIds(0);
}

// A view without a mesh: what the concept asks for is enough to make one.
struct OneTriangle {
  static constexpr bool isGrid = false;
  int numNodes() const { return 3; }
  int numCells() const { return 1; }
  SbVec2f node(int n) const { return SbVec2f(float(n % 2), float(n / 2)); }
  SbVec3f point(int n) const { return SbVec3f(node(n)[0], node(n)[1], 0); }
  float z(int) const { return 0; }
  bool hasZ() const { return false; }
  template <class Use>
  void forEachNode(Use&& use) const {
    for (int n = 0; n < 3; ++n) use(n, node(n));
  }
  template <class Use>
  void forEachCell(Use&& use) const {
    use(PiCellNodes{3, {0, 1, 2}});
  }
};
static_assert(PiView2D<OneTriangle> && !PiGridView<OneTriangle>);

// The view against the mesh's own answers.
template <class Mesh>
void expectView(const Mesh& mesh) {
  const auto view = viewOf(mesh);
  static_assert(PiGridView<decltype(view)>);
  ASSERT_EQ(view.numNodes(), mesh.getNumNodes());
  EXPECT_EQ(view.hasZ(), mesh.getZcoord() != nullptr);
  int next = 0;
  view.forEachNode([&](int node, const SbVec2f& xy) {
    EXPECT_EQ(node, next++);
    const SbVec3f coord = mesh.getNodeCoord(node);
    EXPECT_EQ(xy, SbVec2f(coord[0], coord[1]));
    EXPECT_EQ(view.node(node), xy);
    EXPECT_EQ(view.point(node), coord);
  });
  EXPECT_EQ(next, mesh.getNumNodes());
  int cell = 0;
  view.forEachCell([&](const PiCellNodes& nodes) {
    const int* expected = mesh.getCellNodeIds(cell++);
    EXPECT_TRUE(std::equal(nodes.node, nodes.node + nodes.num, expected));
  });
  EXPECT_EQ(cell, mesh.getNumCells());
  EXPECT_EQ(view.numCells(), cell);
}

}  // namespace

TEST(Grid, ListsOwnersAndNeighboursInOrder) {
  const PbRegularCartesianGrid2D grid(4, 4, 0, 0, 3, 3, 1);
  PbArrayOfInt cells;
  grid.getNodeOwnerCellsInd(grid.getNodeIndex(1, 1), cells);
  EXPECT_EQ(toVector(cells), (std::vector<int>{4, 1, 0, 3}));
  grid.getAdjacentCellsIndByFacet(4, cells);
  EXPECT_EQ(toVector(cells), (std::vector<int>{1, 7, 3, 5}));
  PbArrayOfInt nodes;
  nodes.add(grid.getNodeIndex(1, 1));
  nodes.add(grid.getNodeIndex(1, 2));
  grid.getNodesOwnerCellsInd(nodes, cells);
  EXPECT_EQ(toVector(cells), (std::vector<int>{4, 1})) << "the cells at an edge, in the order of its first node";

  const PbRegularCartesianGrid3D box(4, 4, 4, 0, 0, 0, 3, 3, 3, 1);
  box.getNodeOwnerCellsInd(box.getNodeIndex(1, 1, 1), cells);
  EXPECT_EQ(toVector(cells), (std::vector<int>{13, 4, 1, 10, 12, 3, 0, 9})) << "upper k first";
  box.getAdjacentCellsIndByFacet(13, cells);
  EXPECT_EQ(toVector(cells), (std::vector<int>{4, 22, 10, 16, 12, 14}));
}

TEST(Grid, IsEmptyForHostileDimensions) {
  const std::vector<float> some = range(4);
  const float* c = some.data();
  for (const auto& [numX, numY] : {std::pair(0, 5), std::pair(-3, -3), std::pair(INT_MAX, 2), std::pair(65536, 65536),
                                   std::pair(INT_MIN, INT_MIN)}) {
    expectEmpty(PbCartesianGrid2D(numX, numY, c, c, 1));
    expectEmpty(PbParalCartesianGrid2D(numX, numY, c, c, c, 0));
    expectEmpty(PbRegularCartesianGrid2D(numX, numY, 0, 0, 1, 1, 1));
    expectEmpty(PbPolarGrid2D(numX, numY, c, c, 1));
    expectEmpty(PbCartesianGrid3D(numX, numY, 2, c, c, c, 1));
    expectEmpty(PbRegularCartesianGrid3D(2, numX, numY, 0, 0, 0, 1, 1, 1, 1));
  }
  expectEmpty(PbRegularCartesianGrid3D(65536, 65536, 65536, 0, 0, 0, 1, 1, 1, 1));
  expectEmpty(PbParalCartesianGrid3D(2, 2, 2, c, nullptr, c, 1));
  expectEmpty(PbCartesianGrid2D(2, 2, nullptr, c, 1));
  expectEmpty(PbCartesianGrid3D(1));

  // Nothing is allocated for the nodes of a regular grid, so it may be as large as ints can count.
  const PbRegularCartesianGrid3D huge(1290, 1290, 1290, 0, 0, 0, 1, 1, 1, 1);
  EXPECT_EQ(huge.getNumNodes(), 1290 * 1290 * 1290);
  SbVec3f pcoord;
  EXPECT_TRUE(huge.findContainingCell(SbVec3f(0.3F, 0.4F, 0.5F), 0, pcoord));
  const PbRegularCartesianGrid3D sheet(46340, 46340, 1, 0, 0, 0, 1, 1, 1, 1);
  EXPECT_EQ(sheet.evaluateSkinFacesNum(), INT_MAX) << "the number of facets is cut where it overflows";
}

TEST(Grid, BecomesAnotherOrEmpty) {
  const std::vector<float> c = range(12);
  PbCartesianGrid2D mesh(4, 3, c.data(), c.data(), c.data(), 1);
  mesh.setGeometry(2, 6, c.data(), c.data());
  EXPECT_EQ(mesh.getZcoord(), nullptr);
  EXPECT_EQ(mesh.getNumCells(), 5);
  const float *x, *y, *z;
  int numX, numY, numZ;
  mesh.getCoordinates(x, y, z, numX, numY, numZ);
  mesh.setGeometry(3, 2, x + 6, y + 6, x);  // the mesh's own arrays
  EXPECT_EQ(mesh.getNodeCoord(0), SbVec3f(6, 6, 0));
  EXPECT_EQ(mesh.getNodeCoord(5), SbVec3f(11, 11, 5));
  mesh.setGeometry(-1, 2, c.data(), c.data());
  expectEmpty(mesh);
}

TEST(Grid, GivesRowsOfItsArrays) {
  const std::vector<float> x = range(24), y = range(24, 2), z = range(24, 3);
  PbCartesianGrid2D surface(4, 6, x.data(), y.data(), z.data(), 0);
  const float *const *xRows, *const *yRows, *const *zRows;
  int numX, numY, numZ;
  for (const int rows : {4, 3, 8}) {
    surface.setGeometry(rows, 24 / rows, x.data(), y.data(), z.data());
    surface.getGeometry(numX, numY, xRows, yRows, zRows);
    EXPECT_EQ(xRows[1], x.data() + 24 / rows);
    EXPECT_EQ(zRows[rows - 1][1], 3.0F * float(24 - 24 / rows + 1));
  }
  surface.addValuesSet(0, x.data(), "z");
  surface.pushZCoord(0);
  surface.getGeometry(numX, numY, xRows, yRows, zRows);
  EXPECT_EQ(zRows[1], x.data() + 3);
  surface.popZCoord();
  surface.setGeometry(4, 6, x.data(), y.data(), nullptr);
  surface.getGeometry(numX, numY, xRows, yRows, zRows);
  EXPECT_EQ(zRows, nullptr);

  const PbCartesianGrid3D volume(2, 3, 4, x.data(), y.data(), z.data(), 1);
  const float *const *const *xPlanes, *const *const *yPlanes, *const *const *zPlanes;
  volume.getGeometry(numX, numY, numZ, xPlanes, yPlanes, zPlanes);
  EXPECT_EQ(yPlanes[1][2][3], 46);
  // As its base class a parallel grid has no coordinates of nodes to point to.
  const PbParalCartesianGrid3D parallel(2, 3, 4, x.data(), y.data(), z.data(), 1);
  static_cast<const PbCartesianGrid3D&>(parallel).getGeometry(numX, numY, numZ, xPlanes, yPlanes, zPlanes);
  EXPECT_EQ(xPlanes, nullptr);
}

TEST(Grid, LeavesNonFiniteNodesOutOfItsBoxes) {
  std::vector<float> x = {0, 0, 1, 1, 2, 2}, y = {0, 1, 0, 1, 0, 1}, z = {5, 5, 5, 5, 6, 6};
  x[1] = std::nanf("");
  z[2] = -HUGE_VALF;
  const PbCartesianGrid2D mesh(3, 2, x.data(), y.data(), z.data(), 1);
  EXPECT_EQ(mesh.PbMesh::getBoundingBox().getMin(), SbVec3f(0, 0, 5));
  EXPECT_EQ(mesh.PbMesh::getBoundingBox().getMax(), SbVec3f(2, 1, 6));
  int index = 7;
  EXPECT_TRUE(mesh.getSmallestCellBox(index).isEmpty());
  EXPECT_EQ(index, -1) << "no cell is whole";
  EXPECT_EQ(mesh.getArea(), 0);

  const float bad = std::nanf("");
  const SbBox2f lastRow = PbRegularCartesianGrid2D(3, 3, bad, 0, 1, 1, 1).getBoundingBox();
  EXPECT_EQ(lastRow.getMin(), SbVec2f(1, 0));
  EXPECT_EQ(lastRow.getMax(), SbVec2f(1, 1));
  const float axis[] = {bad, 1, 2};
  const PbParalCartesianGrid3D parallel(3, 3, 3, axis, axis, axis, 1);
  EXPECT_EQ(parallel.getBoundingBox().getMin(), SbVec3f(1, 1, 1));
  EXPECT_EQ(parallel.getLongestEdgeLength(), 1);
}

TEST(Grid, OfEqualCellsTheFirstIsSmallestAndBiggest) {
  const PbRegularCartesianGrid3D even(4, 4, 4, 0, 0, 0, 3, 3, 3, 1);
  int index = -1;
  even.getSmallestCellBox(index);
  EXPECT_EQ(index, 0);
  even.getBiggestCellBox(index);
  EXPECT_EQ(index, 0);
  const float x[] = {0, 2, 3, 5, 6}, y[] = {0, 1}, z[] = {0, 1};
  const PbParalCartesianGrid3D uneven(5, 2, 2, x, y, z, 1);
  EXPECT_EQ(uneven.getSmallestCellBox(index).getMin(), SbVec3f(2, 0, 0));
  EXPECT_EQ(index, 1);
  EXPECT_EQ(uneven.getBiggestCellBox(index).getMax(), SbVec3f(2, 1, 1));
  EXPECT_EQ(index, 0);
}

TEST(Grid, PolarHasNodesButNoCellObjects) {
  const float radius[] = {1, 2, 4}, angle[] = {0, 1, 2, 3};
  const PbPolarGrid2D mesh(3, 4, radius, angle, 1);
  EXPECT_EQ(mesh.getNumCells(), 6);
  EXPECT_TRUE(mesh.getNodeCoord(2, 1).equals(SbVec3f(4 * std::cos(1.0F), 4 * std::sin(1.0F), 0), 1e-12F));
  EXPECT_EQ(mesh.getCell(0), nullptr);
  EXPECT_EQ(mesh.getTopoCell(0), nullptr);
  SbVec3f pcoord;
  EXPECT_EQ(mesh.findContainingCell(SbVec3f(1.5F, 0.5F, 0), 0.1F, pcoord), nullptr);
  PbArrayOfInt cells;
  mesh.getAdjacentCellsIndByFacet(0, cells);
  EXPECT_EQ(toVector(cells), (std::vector<int>{3, 1}));
  EXPECT_FLOAT_EQ(mesh.getBoundingBox().getMax()[1], 4 * std::sin(2.0F));
  EXPECT_GT(mesh.getFirstCellNormal()[2], 0);
  const PbPolarGrid2D copy = mesh;
  EXPECT_EQ(copy.getNodeCoord(11), mesh.getNodeCoord(11));
}

TEST(Grid, HasViewsThatReadTheSame) {
  const std::vector<float> x = range(12, 0.3F), y = range(12, -1.7F), z = range(12, 2);
  for (const float* height : {static_cast<const float*>(nullptr), z.data()}) {
    expectView(PbCartesianGrid2D(3, 4, x.data(), y.data(), height, 0));
    expectView(PbParalCartesianGrid2D(3, 4, x.data(), y.data(), height, 0));
    expectView(PbRegularCartesianGrid2D(3, 4, 0.1F, 3, 0.7F, 2, height, 0));
    expectView(PbPolarGrid2D(3, 4, x.data(), y.data(), height, 0));
  }
  expectView(PbCartesianGrid2D(1));
  expectView(PbPolarGrid2D(1, 4, x.data(), y.data(), 0));
}

TEST(Grid, RefinesARegularGrid) {
  const std::vector<float> z = range(6);
  const PbRegularCartesianGrid2D coarse(3, 2, 0, 1, 2, 3, z.data(), 1);
  const PbRegularCartesianGrid2D fine(5, 9, coarse);
  EXPECT_EQ(fine.getNumNodes(), 45);
  EXPECT_EQ(fine.getBoundingBox().getMax(), SbVec2f(2, 3));
  EXPECT_EQ(fine.getZcoord(), nullptr);
}

TEST(Grid, PrintsItselfWithItsArrays) {
  const std::vector<float> c = {0.5F, 1.25F};
  const std::string text = printed(PbParalCartesianGrid2D(2, 2, c.data(), c.data(), 0));
  EXPECT_EQ(text.rfind("PbMesh:: isDataDuplicate = 0\n", 0), 0U);
  EXPECT_NE(text.find("numX = 2\n"), std::string::npos);
  EXPECT_NE(text.find("0.5 1.25"), std::string::npos);
}

TEST(DefinedValue, CountsEveryValueAsDefined) {
  PbDefinedValue isDefined;
  EXPECT_EQ(isDefined(std::nanf(""), 0, 0), 1);
  EXPECT_EQ(isDefined.getUndef(3), 0);
}
