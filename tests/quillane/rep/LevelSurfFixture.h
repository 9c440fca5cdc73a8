#ifndef ORMELLE_TESTS_LEVELSURFFIXTURE_H
#define ORMELLE_TESTS_LEVELSURFFIXTURE_H

#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PoMeshLevelSurf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "quillane/rep/VolumeSamples.h"
#include "support/NodePtr.h"

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

inline void useStrips(bool areUsed) { setenv("ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET", areUsed ? "TRUE" : "FALSE", 1); }

/// A kit that shows level surfaces of a set 0.
class LevelSurfFixture : public testing::Test {
 protected:
  void TearDown() override { unsetenv("ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET"); }

  void show(PbMesh3D& mesh, const std::vector<float>& values, float level) {
    mesh.addValuesSet(0, values.data(), PbMesh::PER_NODE, "level");
    kit->setMesh(&mesh);
    kit->valuesIndexForLevel = 0;
    kit->levelValue = level;
    kit->rebuild();
  }
  SoGroup* group() const { return static_cast<SoGroup*>(kit->getPart("groupLevelSurf", FALSE)); }
  MadeSurface surface() const { return MadeSurface::of(group()); }
  template <class Node>
  Node* child() const {
    for (int c = 0; group() && c < group()->getNumChildren(); ++c)
      if (group()->getChild(c)->isOfType(Node::getClassTypeId())) return static_cast<Node*>(group()->getChild(c));
    return nullptr;
  }

  NodePtr<PoMeshLevelSurf> kit{new PoMeshLevelSurf};
};

/// Random values on either side of 0, none of them 0.
inline std::vector<float> randomSides(int num, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<float> values;
  for (int n = 0; n < num; ++n)
    values.push_back((random() % 2 != 0 ? 1.0F : -1.0F) * (0.1F + static_cast<float>(random() % 1000) / 1000));
  return values;
}

/// The facets of a surface, each turned to begin with its smallest point, where points are told apart
// by place.
inline std::multiset<std::vector<std::array<float, 3>>> facetsOf(const MadeSurface& surface) {
  std::multiset<std::vector<std::array<float, 3>>> result;
  for (const std::vector<int>& polygon : surface.polygons) {
    std::vector<std::array<float, 3>> corners;
    for (const int p : polygon) {
      const SbVec3f& point = surface.points[static_cast<std::size_t>(p)];
      corners.push_back({point[0], point[1], point[2]});
    }
    std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()), corners.end());
    result.insert(corners);
  }
  return result;
}

#endif
