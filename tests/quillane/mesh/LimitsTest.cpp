#include <Ormelle/PbIndexedMesh2D.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <vector>

// The boundary of indexed surfaces.

namespace {

using Contours = std::vector<std::vector<int>>;
using Cells = std::vector<std::vector<int>>;

Contours limitOf(int numNodes, const Cells& cells) {
  std::vector<int> nodes, sizes;
  for (const std::vector<int>& cell : cells) {
    sizes.push_back(int(cell.size()));
    nodes.insert(nodes.end(), cell.begin(), cell.end());
  }
  const std::vector<float> coords(std::size_t(numNodes), 0.0F);
  const PbIndexedMesh2D mesh(numNodes, coords.data(), coords.data(), int(cells.size()), nodes.data(), sizes.data(), 0);
  PbArrayOfInt contourSizes, indices;
  contourSizes.add(99);
  indices.add(99);
  mesh.getLimitIndices(contourSizes, indices);
  Contours contours;
  const int* next = indices.get();
  for (int c = 0; c < contourSizes.getNum(); ++c) {
    contours.emplace_back(next, next + contourSizes.get(c));
    next += contourSizes.get(c);
  }
  EXPECT_EQ(next, indices.get() + indices.getNum());
  return contours;
}

// Quadrangles of a grid of num by num nodes, counter-clockwise with x along i.
std::vector<int> quadrangle(int num, int i, int j) {
  const int n = i * num + j;
  return {n, n + num, n + num + 1, n + 1};
}

}  // namespace

TEST(Limits, OuterContoursRunClockwiseAndHolesCounterClockwise) {
  // A ring of eight cells round a hole, and an island in the hole's place of another grid.
  Cells cells;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      if (i != 1 || j != 1) cells.push_back(quadrangle(4, i, j));
  EXPECT_EQ(limitOf(16, cells), (Contours{{0, 1, 2, 3, 7, 11, 15, 14, 13, 12, 8, 4}, {5, 9, 10, 6}}));
  cells.push_back({16, 17, 18});
  EXPECT_EQ(limitOf(19, cells).back(), (std::vector<int>{16, 18, 17})) << "a component of its own";
}

TEST(Limits, LoopsThatTouchAreSplit) {
  // Two triangles that meet in a node, and four quadrangles of a chess board round one.
  EXPECT_EQ(limitOf(5, {{0, 1, 2}, {2, 3, 4}}), (Contours{{0, 2, 1}, {2, 4, 3}}));
  EXPECT_EQ(limitOf(5, {{2, 3, 4}, {0, 1, 2}}), (Contours{{0, 2, 1}, {2, 4, 3}})) << "whatever the order of the cells";
  const Contours chess = limitOf(9, {quadrangle(3, 0, 0), quadrangle(3, 1, 1)});
  EXPECT_EQ(chess, (Contours{{0, 1, 4, 3}, {4, 5, 8, 7}}));
}

TEST(Limits, OddCellsHaveTheLimitThatTheirEdgesTell) {
  const struct {
    const char* name;
    int numNodes;
    Cells cells;
    Contours limit;
  } rows[] = {
      {"nothing", 3, {}, {}},
      {"the same cell twice", 3, {{0, 1, 2}, {0, 1, 2}}, {}},
      {"a closed surface", 4, {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}}, {}},
      {"neighbours that turn differently", 4, {{0, 1, 2}, {1, 2, 3}}, {{0, 2, 3, 1}}},
      {"a quadrangle with a node twice", 4, {{1, 1, 2, 3}}, {{1, 3, 2}}},
      {"a triangle with a node twice", 3, {{1, 1, 2}, {0, 0, 0}}, {}},
      {"a quadrangle folded to a line", 3, {{0, 1, 0, 2}}, {}},
      {"a fold beside a cell", 3, {{0, 1, 2}, {1, 2, 2}}, {{0, 2, 1}}},
      {"cells without an object", 9, {{0, 1, 2}, {3, 4, 5, 6, 7}, {0, 1, 9}, {0, 1, -1}}, {{0, 2, 1}}},
      {"three cells on an edge", 5, {{0, 1, 2}, {0, 1, 3}, {0, 1, 4}}, {{0, 2, 1, 3}, {0, 4, 1}}},
      {"a strip round a twist", 6, {{0, 1, 3, 2}, {2, 3, 5, 4}, {4, 5, 0, 1}}, {{0, 2, 4, 1, 3, 5}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(limitOf(row.numNodes, row.cells), row.limit);
  }
}

TEST(Limits, EveryEdgeOfOneCellIsRunOnceAndNoContourCrossesItself) {
  std::mt19937 random(3);
  for (const double share : {0.95, 0.6, 0.3})
    for (int round = 0; round < 20; ++round) {
      // Part of the cells of a grid, quadrangles and triangles: holes, islands and cells that meet in a node.
      const int num = 14;
      std::bernoulli_distribution isThere(share), isCut(0.5);
      Cells cells;
      for (int i = 0; i + 1 < num; ++i)
        for (int j = 0; j + 1 < num; ++j) {
          const std::vector<int> q = quadrangle(num, i, j);
          if (!isCut(random)) {
            if (isThere(random)) cells.push_back(q);
            continue;
          }
          if (isThere(random)) cells.push_back({q[0], q[1], q[2]});
          if (isThere(random)) cells.push_back({q[2], q[3], q[0]});
        }
      std::shuffle(cells.begin(), cells.end(), random);
      std::map<std::pair<int, int>, int> uses;
      for (const std::vector<int>& cell : cells)
        for (std::size_t n = 0; n < cell.size(); ++n) {
          const int a = cell[n], b = cell[(n + 1) % cell.size()];
          ++uses[{a, b}];
          --uses[{b, a}];
        }
      std::set<std::pair<int, int>> expected, found;
      for (const auto& [edge, num1] : uses)
        if (num1 < 0) expected.insert(edge);

      const Contours contours = limitOf(num * num, cells);
      int previous = -1;
      for (const std::vector<int>& contour : contours) {
        EXPECT_GE(contour.size(), 3U);
        EXPECT_EQ(std::set<int>(contour.begin(), contour.end()).size(), contour.size()) << "no node twice";
        EXPECT_EQ(contour.front(), *std::min_element(contour.begin(), contour.end()));
        EXPECT_GE(contour.front(), previous);
        previous = contour.front();
        for (std::size_t n = 0; n < contour.size(); ++n)
          EXPECT_TRUE(found.insert({contour[n], contour[(n + 1) % contour.size()]}).second) << "an edge once";
      }
      EXPECT_EQ(found, expected) << "against the cells";
    }
}
