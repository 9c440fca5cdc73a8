#ifndef ORMELLE_TESTS_CELLWALK_H
#define ORMELLE_TESTS_CELLWALK_H

/// @file
/// Searches by index against asking every cell in turn.

#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

/// The answer that defines the others: the first cell that holds the point.
inline int walk(const PbMesh& mesh, const SbVec3f& point, float tolerance) {
  SbVec3f pcoord;
  for (int c = 0; c < mesh.getNumCells(); ++c) {
    const PbCell* cell = mesh.getCell(c);
    if (cell && cell->locatePoint(point, tolerance, pcoord)) return c;
  }
  return -1;
}

inline int search(const PbMesh& mesh, const SbVec3f& point, float tolerance) {
  SbVec3f pcoord, expected;
  const PbCell* cell = mesh.findContainingCell(point, tolerance, pcoord);
  if (!cell) return -1;
  EXPECT_TRUE(mesh.getCell(cell->getIndex())->locatePoint(point, tolerance, expected));
  EXPECT_EQ(pcoord, expected);
  return cell->getIndex();
}

struct Nodes {
  std::vector<float> x, y, z;
};

/// A grid whose nodes are moved at random; `dent` is in steps of the grid. Above 0.5 cells turn inside out and overlap.
inline Nodes warpedNodes(int numX, int numY, int numZ, float dent, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> move(-dent, dent);
  Nodes nodes;
  for (int i = 0; i < numX; ++i)
    for (int j = 0; j < numY; ++j)
      for (int k = 0; k < numZ; ++k) {
        nodes.x.push_back(float(i) + move(random));
        nodes.y.push_back(float(j) + move(random));
        nodes.z.push_back(float(k) + move(random));
      }
  return nodes;
}

/// Points at random, at nodes and in the middle between two nodes, where several cells meet.
inline std::vector<SbVec3f> probes(const PbMesh& mesh, const SbVec3f& low, const SbVec3f& high, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> share(0, 1);
  std::uniform_int_distribution<int> node(0, mesh.getNumNodes() - 1);
  std::vector<SbVec3f> points;
  for (int n = 0; n < 200; ++n) {
    SbVec3f point;
    for (int a = 0; a < 3; ++a) point[a] = low[a] + share(random) * (high[a] - low[a]);
    points.push_back(point);
  }
  for (int n = 0; n < 80; ++n) {
    const int a = node(random), b = std::min(a + 1, mesh.getNumNodes() - 1);
    points.push_back(mesh.getNodeCoord(a));
    points.push_back((mesh.getNodeCoord(a) + mesh.getNodeCoord(b)) / 2);
  }
  return points;
}

inline void expectSameAsWalk(const PbMesh& mesh, const SbVec3f& low, const SbVec3f& high, bool isVolume) {
  const SbBox3f box = mesh.getBoundingBox();
  // From no tolerance upwards and back: the index is made for one of them and must serve all.
  int numHits = 0;
  for (const float tolerance : {0.0F, 0.2F, 3.0F, 0.001F})
    for (const SbVec3f& point : probes(mesh, low, high, 5)) {
      if (isVolume && !box.intersect(point)) continue;
      const int expected = walk(mesh, point, tolerance);
      ASSERT_EQ(search(mesh, point, tolerance), expected)
          << "at " << point[0] << " " << point[1] << " " << point[2] << " tolerance " << tolerance;
      numHits += expected >= 0;
    }
  EXPECT_GT(numHits, 300);
}

#endif
