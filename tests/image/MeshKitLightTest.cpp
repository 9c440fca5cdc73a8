// Surfaces must be lit on the side that is looked at, whatever way round their cells run.

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLines.h>
#include <Ormelle/PoMeshSides.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "support/NodePtr.h"

namespace {

/// How bright the middle of the picture is with a light from where the viewer is; 255 is the background.
int brightness(PoMesh2D* kit, const SbVec3f& direction) {
  NodePtr<SoSeparator> root(new SoSeparator);
  auto* light = new SoDirectionalLight;
  light->direction = direction;
  root->addChild(light);
  root->addChild(kit);
  PiOffscreen offscreen(60, 60);
  PiViewpoint viewpoint;
  viewpoint.direction = direction;
  if (direction[2] == 0) viewpoint.up = SbVec3f(0, 0, 1);
  offscreen.setViewpoint(viewpoint);
  EXPECT_TRUE(offscreen.draw(root.get())) << offscreen.error();
  // A little off the middle, where there is no edge.
  return offscreen.picture().width ? offscreen.picture().pixel(33, 32)[0] : 0;
}

TEST(MeshKitLightTest, BothSidesOfASurfaceAreLit) {
  for (const bool isMirrored : {false, true}) {
    for (const char* kind : {"flat", "raised", "overall normal", "with a hole"}) {
      SCOPED_TRACE(std::string(kind) + (isMirrored ? " mirrored" : ""));
      std::vector<float> x, y, z;
      for (int i = 0; i < 5; ++i) {
        for (int j = 0; j < 5; ++j) {
          x.push_back(static_cast<float>(isMirrored ? -i : i));
          y.push_back(static_cast<float>(j));
          z.push_back(0.1F * static_cast<float>(i));
        }
      }
      const std::string name = kind;
      if (name == "with a hole") z[0] = std::numeric_limits<float>::quiet_NaN();
      const bool isFlat = name == "flat" || name == "overall normal";
      PbCartesianGrid2D mesh(5, 5, x.data(), y.data(), isFlat ? nullptr : z.data(), 1);
      NodePtr<PoMeshFilled> kit(new PoMeshFilled);
      kit->setMesh(&mesh);
      kit->useOverallNormal = name == "overall normal";
      for (const float side : {-1.0F, 1.0F}) {
        const int level = brightness(kit.get(), SbVec3f(0, 0, side));
        EXPECT_GT(level, 180) << side;
        EXPECT_LT(level, 250) << side;
      }
    }
  }
}

TEST(MeshKitLightTest, WallsAreLitFromOutsideAndInside) {
  for (const bool isMirrored : {false, true}) {
    for (const bool hasNormals : {false, true}) {
      for (const float level : {-2.0F, 2.0F}) {
        SCOPED_TRACE(testing::Message() << isMirrored << hasNormals << level);
        const float s = isMirrored ? -1.0F : 1.0F;
        const float axisX[] = {-s, s}, axisY[] = {-1, 1};
        const float x[] = {-s, -s, s, s}, y[] = {-1, 1, -1, 1};
        std::unique_ptr<PbMesh2D> mesh;
        if (hasNormals)
          mesh = std::make_unique<PbParalCartesianGrid2D>(2, 2, axisX, axisY, 1);
        else
          mesh = std::make_unique<PbCartesianGrid2D>(2, 2, x, y, 1);
        ASSERT_EQ(mesh->hasSidesNormals(), hasNormals);
        NodePtr<PoMeshSides> kit(new PoMeshSides);
        kit->setMesh(mesh.get());
        kit->thresholdValue = level;
        for (const SbVec3f& direction : {SbVec3f(1, 0, 0), SbVec3f(-1, 0, 0), SbVec3f(0, 1, 0), SbVec3f(0, -1, 0)}) {
          EXPECT_GT(brightness(kit.get(), direction), 180);
          EXPECT_LT(brightness(kit.get(), direction), 250);
        }
        // Steeply down or up into the box: the inner side of a wall.
        EXPECT_GT(brightness(kit.get(), SbVec3f(0.6F, 0, level < 0 ? -1.0F : 1.0F)), 60);
      }
    }
  }
}

// What is left of a mesh may be no cell, no colour and no line at all.
TEST(MeshKitDrawTest, EmptyGeometryDrawsNothing) {
  PoBase::init();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float x[] = {0, 0, 1, 1}, y[] = {0, 1, 0, 1}, undefined[] = {nan, nan, nan, nan}, cut[] = {5, 5, 5, 5};
  PbLinearDataMapping mapping;
  mapping.setMaxThreshold(4);
  mapping.enableThresholds(0, 1);
  for (const auto& [numX, numY] : {std::pair(2, 2), std::pair(1, 1), std::pair(1, 3)}) {
    PbCartesianGrid2D mesh(numX, numY, x, y, 1);
    mesh.addValuesSet(0, undefined, "undefined");
    mesh.addValuesSet(1, cut, "cut");
    for (const int set : {0, 1}) {
      for (const int coloring : {PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING}) {
        NodePtr<SoSeparator> root(new SoSeparator);
        for (PoMesh2D* kit : std::initializer_list<PoMesh2D*>{new PoMeshFilled, new PoMeshLines, new PoMeshSides}) {
          root->addChild(kit);
          kit->setMesh(&mesh);
          kit->setDataMapping(&mapping);
          kit->valuesIndex = set;
          kit->coloringType = coloring;
        }
        PiOffscreen offscreen(20, 20);
        offscreen.setViewpoint(PiViewpoint());
        ASSERT_TRUE(offscreen.draw(root.get())) << offscreen.error();
        EXPECT_EQ(offscreen.picture().pixel(10, 10)[0], 255);
      }
    }
  }
}

}  // namespace
