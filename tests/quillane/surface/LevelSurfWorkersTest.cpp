#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>
#include <vector>

#include "quillane/surface/PiPairTable.h"
#include "quillane/surface/PiQuadMerge.h"
#include "quillane/surface/PiStripJoiner.h"
#include "quillane/surface/PiSurfaceNormals.h"

namespace {

TEST(PairTable, GivesEachPairOneIndexHoweverManyThereAre) {
  PiPairTable table;
  std::mt19937 random(1);
  for (int round = 0; round < 2; ++round) {
    table.clear();
    std::map<std::pair<int, int>, int> expected;
    const auto add = [&](int a, int b) {
      const auto [found, isNew] = expected.emplace(std::minmax(a, b), static_cast<int>(expected.size()));
      int index = -1;
      ASSERT_EQ(table.add(a, b, index), isNew);
      ASSERT_EQ(index, found->second);
    };
    for (int i = 0; i < 100000; ++i) add(static_cast<int>(random() % 1000), static_cast<int>(random() % 1000));
    for (int b = 0; b < 300000; ++b) add(2000000000 - b, 7);  // one node with many edges
    ASSERT_EQ(table.size(), expected.size());
    for (const auto& [pair, index] : expected) {
      ASSERT_EQ(table.points()[static_cast<std::size_t>(index)].a, pair.first);
      ASSERT_EQ(table.points()[static_cast<std::size_t>(index)].b, pair.second);
    }
  }
  // Points that were put there from outside are found, too.
  table.clear();
  table.points().reset(1);
  table.points()[0] = {3, 5, 0.5F};
  int index = -1;
  EXPECT_EQ(table.add(5, 3, index), 0);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(table.add(4, 4, index), 1);
  EXPECT_EQ(index, 1);
}

TEST(QuadMerge, TellsWhichWereProposedTwiceTheSameWayRound) {
  PiQuadMerge merge;
  for (int round = 0; round < 2; ++round) {
    merge.clear();
    for (int i = 0; i < 1000; ++i) {
      merge.add({4 * i + 2, 4 * i, 4 * i + 1, 4 * i + 3}, i);
      if (i % 3 == 0) merge.add({4 * i + 1, 4 * i + 3, 4 * i + 2, 4 * i}, 1000 + i);  // turned
      if (i % 3 == 1) merge.add({4 * i + 3, 4 * i + 1, 4 * i, 4 * i + 2}, 1000 + i);  // the other way round
    }
    std::vector<int> cells;
    merge.forEachShared([&](const PiQuadMerge::Quadrangle& q) {
      EXPECT_EQ(q.corners[0] % 4, 0);
      EXPECT_EQ(q.corners[1], q.corners[0] + 1);
      cells.push_back(q.cell);
    });
    ASSERT_EQ(cells.size(), 334U);
    EXPECT_EQ(merge.numShared(), 334U);
    for (int i = 0; i < 334; ++i) EXPECT_EQ(cells[static_cast<std::size_t>(i)], 1000 + 3 * i);
  }
}

/// Polygons of 3 to 6 corners that run the same way round and share edges: a grid of points with some nodes taken out
/// of the way.
std::vector<int> patchwork(int num, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<int> polygons;
  const auto add = [&](std::initializer_list<int> corners) {
    polygons.insert(polygons.end(), corners);
    polygons.push_back(-1);
  };
  for (int i = 0; i + 1 < num; ++i)
    for (int j = 0; j + 2 < num; j += 2) {
      const int a = i * num + j, b = a + num;
      switch (random() % 5) {
        case 0:
          add({a, b, b + 1, b + 2, a + 2, a + 1});
          break;
        case 1:
          add({a, b, b + 1, a + 1});
          add({a + 1, b + 1, b + 2, a + 2});
          break;
        case 2:
          add({a, b, b + 1, b + 2, a + 1});
          add({a + 1, b + 2, a + 2});
          break;
        case 3:
          add({a, b, a + 1});
          add({b, b + 1, b + 2, a + 2, a + 1});
          break;
        default:  // a hole
          break;
      }
    }
  return polygons;
}

using Edge = std::pair<int, int>;

TEST(StripJoiner, CoversThePolygonsAndNothingElse) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    const std::vector<int> polygons = patchwork(81, seed);
    PiStripJoiner joiner;
    joiner.join(polygons);
    std::vector<int> strips(joiner.numIndices() + 1, -7);
    joiner.write(strips.data());
    EXPECT_EQ(strips.back(), -7);
    strips.pop_back();

    // Inside a polygon the edges of its triangles cancel; what is left are the edges of all polygons.
    std::multiset<Edge> edges, expected;
    int numTriangles = 0, numExpected = 0, numStrips = 0;
    std::vector<int> run;
    for (const int index : strips) {
      if (index >= 0) {
        run.push_back(index);
        continue;
      }
      ++numStrips;
      for (std::size_t t = 2; t < run.size(); ++t) {
        const int corners[3] = {run[t - 2 + t % 2], run[t - 1 - t % 2], run[t]};
        EXPECT_TRUE(corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0]);
        ++numTriangles;
        for (int c = 0; c < 3; ++c) edges.emplace(corners[c], corners[(c + 1) % 3]);
      }
      run.clear();
    }
    for (const int index : polygons) {
      if (index >= 0) {
        run.push_back(index);
        continue;
      }
      numExpected += static_cast<int>(run.size()) - 2;
      for (std::size_t c = 0; c < run.size(); ++c) expected.emplace(run[c], run[(c + 1) % run.size()]);
      run.clear();
    }
    EXPECT_EQ(numTriangles, numExpected);
    for (const Edge& edge : expected) {
      const auto found = edges.find(edge);
      ASSERT_NE(found, edges.end());
      edges.erase(found);
    }
    while (!edges.empty()) {
      const Edge edge = *edges.begin();
      edges.erase(edges.begin());
      const auto other = edges.find({edge.second, edge.first});
      ASSERT_NE(other, edges.end()) << "a triangle was turned over";
      edges.erase(other);
    }
    EXPECT_LT(numStrips * 4, numTriangles);
  }
  PiStripJoiner joiner;
  joiner.join({});
  EXPECT_EQ(joiner.numIndices(), 0U);
}

/// The sides of a cube, clockwise from outside, as polygons or as strips.
struct Cube {
  std::vector<SbVec3f> points;
  std::vector<std::int32_t> indices;

  explicit Cube(bool areStrips) {
    for (int corner = 0; corner < 8; ++corner)
      points.emplace_back(corner & 1 ? 1.0F : -1.0F, corner & 2 ? 1.0F : -1.0F, corner & 4 ? 1.0F : -1.0F);
    for (const auto& [a, b, c, d] : std::vector<std::array<int, 4>>{
             {0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}})
      for (const int index : {a, b, areStrips ? d : c, areStrips ? c : d, -1}) indices.push_back(index);
  }
};

TEST(SurfaceNormals, AreThoseOfFacetsOrPointsByTheCreaseAngle) {
  for (const bool areStrips : {false, true}) {
    SCOPED_TRACE(areStrips);
    const Cube cube(areStrips);
    PiSurfaceNormals normals;
    normals.make(cube.indices, cube.points, areStrips, 0);
    ASSERT_EQ(normals.normals().size(), areStrips ? 12U : 6U);
    EXPECT_TRUE(normals.normalIndices().empty());
    EXPECT_EQ(normals.normals().front(), SbVec3f(0, 0, -1));
    EXPECT_EQ(normals.normals().back(), SbVec3f(1, 0, 0));

    // Sides that meet at a right angle stay apart below it, each corner with the normal of its side.
    normals.make(cube.indices, cube.points, areStrips, 1.5F);
    ASSERT_EQ(normals.normalIndices().size(), cube.indices.size());
    for (std::size_t place = 0; place < cube.indices.size(); ++place) {
      ASSERT_EQ(normals.normalIndices()[place] < 0, cube.indices[place] < 0);
      if (cube.indices[place] < 0) continue;
      const SbVec3f& normal = normals.normals()[static_cast<std::size_t>(normals.normalIndices()[place])];
      const int side = static_cast<int>(place / 5);
      EXPECT_NEAR(normal[side < 2 ? 2 : side < 4 ? 1 : 0], side % 2 == 0 ? -1 : 1, 1e-6);
    }
    // Above it the normals of points lean towards all three sides.
    normals.make(cube.indices, cube.points, areStrips, 1.6F);
    for (std::size_t place = 0; place < cube.indices.size(); ++place) {
      if (cube.indices[place] < 0) continue;
      const auto point = static_cast<std::size_t>(cube.indices[place]);
      const auto own =
          normals.normalIndices().empty() ? point : static_cast<std::size_t>(normals.normalIndices()[place]);
      for (int axis = 0; axis < 3; ++axis) EXPECT_GT(normals.normals()[own][axis] * cube.points[point][axis], 0.3F);
    }
  }
}

TEST(SurfaceNormals, AreFiniteForWhatHasNoDirection) {
  const std::vector<SbVec3f> points = {SbVec3f(0, 0, 0), SbVec3f(0, 0, 0), SbVec3f(1e-30F, 0, 0), SbVec3f(3e38F, 0, 0),
                                       SbVec3f(0, 3e38F, 0)};
  const std::vector<std::int32_t> indices = {0, 1, 2, -1, 0, 1, -1, -1, 3, 4, 0, -1, 2, 1, 0, 3, -1};
  PiSurfaceNormals normals;
  for (const float angle : {0.0F, 1.0F, 3.0F, 4.0F})
    for (const bool areStrips : {false, true}) {
      normals.make(indices, points, areStrips, angle);
      for (const SbVec3f& normal : normals.normals()) EXPECT_NEAR(normal.length(), 1, 1e-5);
    }
}

}  // namespace
