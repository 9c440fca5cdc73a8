// The level surface as a kit: what colours it, which cells it shows, what a change costs.

#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoRegularCartesianGrid3D.h>

#include <functional>
#include <memory>
#include <string>

#include "quillane/rep/LevelSurfFixture.h"
#include "quillane/rep/PiSurfaceStore.h"
#include "quillane/rep/TestGrid.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

class LevelSurfKitTest : public LevelSurfFixture {};

class HalfFilter : public PoCellFilter {
 public:
  int acceptCell(int cell, float value) const override { return value == 0 ? cell % 2 : value > 0.5F; }
};

TEST_F(LevelSurfKitTest, ShowsTheCellsThatTheFilterAcceptsWithTheirOwnValues) {
  for (const VolumeKind& kind : volumeKinds()) {
    SCOPED_TRACE(kind.name);
    const auto mesh = kind.make(6, 4, 5);
    const std::vector<float> values = randomSides(mesh->getNumNodes(), 6);
    std::vector<float> perCell(static_cast<std::size_t>(mesh->getNumCells()));
    for (std::size_t cell = 0; cell < perCell.size(); ++cell) perCell[cell] = cell % 3 == 0 ? 0.9F : 0.1F;
    mesh->addValuesSet(1, perCell.data(), PbMesh::PER_CELL, "kept");
    // All facets, and which cell each belongs to.
    useStrips(false);
    show(*mesh, values, 0);
    PbLinearDataMapping colors;
    colors.setValues(0, SbColor(0, 0, 0), 1, SbColor(1, 1, 1));

    NodePtr<SoSeparator> scene(new SoSeparator);
    scene->addChild(new HalfFilter);
    NodePtr<PoMeshLevelSurf> filtered(new PoMeshLevelSurf);
    scene->addChild(filtered.get());
    filtered->setMesh(mesh.get());
    filtered->valuesIndexForLevel = 0;
    filtered->valuesIndexForCellFilter = 1;
    filtered->valuesIndex = 1;
    filtered->coloringType = PoMesh::COLOR_MAPPING;
    filtered->setDataMapping(&colors);
    const Soup soup = Soup::of(scene.get());
    EXPECT_GT(soup.triangles.size(), 20U);
    for (const SoupTriangle& t : soup.triangles) EXPECT_EQ(t[0].color, SbColor(0.9F, 0.9F, 0.9F));
    const MadeSurface made = MadeSurface::of(static_cast<SoGroup*>(filtered->getPart("groupLevelSurf", FALSE)));
    EXPECT_EQ(made.numFaults(), 0);
    // Without the optional quadrangles between kept and other cells the kept facets are some of all.
    const auto all = facetsOf(surface()), kept = facetsOf(made);
    EXPECT_LT(kept.size(), all.size());
    EXPECT_TRUE(std::includes(all.begin(), all.end(), kept.begin(), kept.end()));
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
    filtered->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(LevelSurfKitTest, ColoursPointsByTheOtherSetAndAllByItsOwn) {
  const auto mapping = greyMapping();
  for (const bool areStrips : {true, false})
    for (const VolumeKind& kind : volumeKinds()) {
      SCOPED_TRACE(kind.name);
      useStrips(areStrips);
      const auto mesh = kind.make(5, 5, 5);
      const std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return p[0] + 10 * p[1] + 2 * p[2]; });
      const std::vector<float> radii = valuesAt(*mesh, [](const SbVec3f& p) { return p[0] + p[1] + p[2]; });
      mesh->addValuesSet(1, heights.data(), PbMesh::PER_NODE, "heights");
      kit->setDataMapping(mapping.get());
      kit->valuesIndex = 1;
      for (const int coloring : {PoMesh::COLOR_MAPPING, PoMesh::COLOR_AVERAGE}) {
        kit->coloringType = coloring;
        show(*mesh, radii, 6.5F);
        const Soup soup = Soup::of(kit.get());
        ASSERT_FALSE(soup.triangles.empty());
        for (const SoupTriangle& t : soup.triangles)
          for (const SoupVertex& v : t)
            EXPECT_NEAR(v.color[0], greyOf(v.point[0] + 10 * v.point[1] + 2 * v.point[2]), 1e-4);
      }
      kit->valuesIndex = 0;
      show(*mesh, radii, 6.5F);
      EXPECT_EQ(child<SoMaterialBinding>()->value.getValue(), SoMaterialBinding::OVERALL);
      EXPECT_EQ(Soup::of(kit.get()).numColors(), 1);
      EXPECT_NEAR(Soup::of(kit.get()).triangles[0][0].color[0], greyOf(6.5F), 1e-5);
      kit->setMesh(static_cast<PbMesh3D*>(nullptr));
    }
}

TEST_F(LevelSurfKitTest, RunsThePassesThatAChangeAsksFor) {
  const auto mesh = volumeKinds()[0].make(6, 6, 6);
  const std::vector<float> radii = valuesAt(*mesh, [](const SbVec3f& p) { return (p - SbVec3f(3, 3, 3)).length(); });
  const std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return 10 * p[2]; });
  mesh->addValuesSet(1, heights.data(), PbMesh::PER_NODE, "heights");
  auto mapping = greyMapping();
  PbIsovaluesList isovalues(10, 50, 5);
  kit->setDataMapping(mapping.get());
  kit->setIsovaluesList(&isovalues);
  kit->valuesIndex = 1;
  kit->coloringType = PoMesh::COLOR_MAPPING;
  show(*mesh, radii, 2.2F);

  const auto passesOf = [this](const std::function<void()>& change) {
    const PiSurfacePasses before = PiSurfaceStore::passesOf(*kit);
    change();
    kit->rebuild();
    const PiSurfacePasses now = PiSurfaceStore::passesOf(*kit);
    return PiSurfacePasses{now.topology - before.topology, now.coordinates - before.coordinates,
                           now.normals - before.normals,   now.colors - before.colors,
                           now.textures - before.textures, now.contouring - before.contouring};
  };
  EXPECT_EQ(passesOf([] {}), (PiSurfacePasses{}));
  EXPECT_EQ(passesOf([&] { kit->levelValue = 2.3F; }), (PiSurfacePasses{1, 1, 1, 1, 0, 0}));
  EXPECT_EQ(passesOf([&] { mapping->setValues(0, SbColor(1, 0, 0), 100, SbColor(1, 1, 1)); }),
            (PiSurfacePasses{0, 0, 0, 1, 0, 0}));
  EXPECT_EQ(passesOf([&] { mesh->addValuesSet(1, radii.data(), PbMesh::PER_NODE, "radii"); }),
            (PiSurfacePasses{0, 0, 0, 1, 0, 0}));
  EXPECT_EQ(passesOf([&] { kit->creaseAngle = 1; }), (PiSurfacePasses{0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(passesOf([&] { kit->surfOrientation = PoMeshLevelSurf::ORIENTED_TO_MIN; }),
            (PiSurfacePasses{1, 1, 1, 1, 0, 0}));
  EXPECT_EQ(passesOf([&] { mesh->addValuesSet(0, radii.data(), PbMesh::PER_NODE, "level"); }),
            (PiSurfacePasses{1, 1, 1, 1, 0, 0}));
  EXPECT_EQ(passesOf([&] { kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING; }),
            (PiSurfacePasses{0, 0, 0, 0, 1, 0}));
  EXPECT_EQ(passesOf([&] { kit->coloringType = PoMesh::COLOR_INHERITED; }), (PiSurfacePasses{}));
  EXPECT_EQ(passesOf([&] { kit->coloringType = PoMesh::COLOR_CONTOURING; }), (PiSurfacePasses{0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(passesOf([&] { kit->coloringType = PoMesh::COLOR_MAPPING; }), (PiSurfacePasses{0, 0, 1, 1, 0, 0}));
  kit->setMesh(static_cast<PbMesh3D*>(nullptr));
}

TEST_F(LevelSurfKitTest, BandsCoverTheSurface) {
  const auto mapping = greyMapping();
  PbIsovaluesList isovalues(-1, 60, 9);
  for (const bool areStrips : {true, false}) {
    useStrips(areStrips);
    const auto mesh = volumeKinds()[7].make(8, 8, 8);
    const std::vector<float> radii = valuesAt(*mesh, [](const SbVec3f& p) { return (p - SbVec3f(4, 4, 4)).length(); });
    const std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return 7 * p[2] + 0.3F * p[0]; });
    mesh->addValuesSet(1, heights.data(), PbMesh::PER_NODE, "heights");
    kit->setDataMapping(mapping.get());
    kit->setIsovaluesList(&isovalues);
    kit->valuesIndex = 1;
    kit->coloringType = PoMesh::COLOR_MAPPING;
    show(*mesh, radii, 3.1F);
    const double area = Soup::of(kit.get()).area();
    for (int round = 0; round < 2; ++round) {
      kit->coloringType = PoMesh::COLOR_CONTOURING;
      Soup bands = Soup::of(kit.get());
      EXPECT_NEAR(bands.area(), area, area * 0.01);
      EXPECT_GT(bands.numColors(), 4);
      EXPECT_LT(bands.numColors(), 10);
      kit->coloringType = PoMesh::COLOR_MAPPING;
      EXPECT_NEAR(Soup::of(kit.get()).area(), area, area * 1e-6);
    }
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(LevelSurfKitTest, GivesEachPointItsPlaceOnTheTexture) {
  const auto mapping = greyMapping();
  PbIsovaluesList isovalues(0, 70, 8);
  const auto mesh = volumeKinds()[7].make(6, 6, 6);
  const std::vector<float> radii = valuesAt(*mesh, [](const SbVec3f& p) { return (p - SbVec3f(3, 3, 3)).length(); });
  const std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return 10 * p[2] + 5; });
  mesh->addValuesSet(1, heights.data(), PbMesh::PER_NODE, "heights");
  kit->setDataMapping(mapping.get());
  kit->setIsovaluesList(&isovalues);
  kit->valuesIndex = 1;
  kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
  show(*mesh, radii, 2.4F);
  const MadeSurface made = surface();
  ASSERT_NE(kit->getPart("appearance.texture2", FALSE), nullptr);
  const auto* coordinates = child<SoTextureCoordinate2>();
  ASSERT_NE(coordinates, nullptr);
  ASSERT_EQ(coordinates->point.getNum(), static_cast<int>(made.points.size()));
  // Along the height, at the same rate everywhere.
  const auto coordinateOf = [&](std::size_t point) { return coordinates->point[static_cast<int>(point)][0]; };
  const float rate = (coordinateOf(0) - coordinateOf(9)) / (made.points[0][2] - made.points[9][2]);
  EXPECT_GT(rate, 0);
  for (std::size_t p = 1; p < made.points.size(); ++p)
    EXPECT_NEAR(coordinateOf(p) - coordinateOf(0), rate * (made.points[p][2] - made.points[0][2]), 1e-4);
  kit->coloringType = PoMesh::COLOR_INHERITED;
  kit->rebuild();
  EXPECT_EQ(child<SoTextureCoordinate2>(), nullptr);
  EXPECT_EQ(kit->getPart("appearance.texture2", FALSE), nullptr);
  kit->setMesh(static_cast<PbMesh3D*>(nullptr));
}

TEST_F(LevelSurfKitTest, TakesTransparentPartsAwayAndBringsThemBack) {
  for (const bool areStrips : {true, false}) {
    useStrips(areStrips);
    const auto mesh = volumeKinds()[0].make(10, 10, 10);
    const std::vector<float> radii = valuesAt(*mesh, [](const SbVec3f& p) { return (p - SbVec3f(5, 5, 5)).length(); });
    std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return 10 * p[2]; });
    for (float& height : heights)
      if (height > 61) height = kNaN;
    mesh->addValuesSet(1, heights.data(), PbMesh::PER_NODE, "heights");
    const auto mapping = greyMapping();
    kit->setDataMapping(mapping.get());
    kit->valuesIndex = 1;
    for (int round = 0; round < 2; ++round) {
      SCOPED_TRACE(round);
      kit->coloringType = PoMesh::COLOR_INHERITED;
      show(*mesh, radii, 4.2F);
      EXPECT_NEAR(Soup::of(kit.get()).box().getMax()[2], 9.2F, 0.01);
      kit->coloringType = PoMesh::COLOR_MAPPING;
      const Soup soup = Soup::of(kit.get());
      EXPECT_GT(soup.area(), 50);
      EXPECT_LE(soup.box().getMax()[2], 6.0F);
      for (const SoupTriangle& t : soup.triangles) {
        const SbVec3f outward = t[0].point - SbVec3f(5, 5, 5);
        for (const SoupVertex& v : t) EXPECT_GT(v.normal.dot(outward), 2);
        EXPECT_GT((t[2].point - t[0].point).cross(t[1].point - t[0].point).dot(outward), -1e-5F);
      }
    }
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(LevelSurfKitTest, OutlivesItsMeshAndBringsBackWhatWasTakenFromItsGroup) {
  auto mesh = volumeKinds()[0].make(5, 5, 5);
  const std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return p[2]; });
  kit->creaseAngle = 1;
  show(*mesh, heights, 1.5F);
  group()->removeAllChildren();
  kit->levelValue = 2.5F;
  EXPECT_NEAR(Soup::of(kit.get()).area(), 25, 1e-4);
  NodePtr<PoMeshLevelSurf> copy(static_cast<PoMeshLevelSurf*>(kit->copy()));
  copy->levelValue = 3.5F;
  EXPECT_NEAR(Soup::of(copy.get()).box().getMax()[2], 3.5F, 1e-5);
  EXPECT_NEAR(Soup::of(kit.get()).box().getMax()[2], 2.5F, 1e-5);
  mesh.reset();
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
  EXPECT_TRUE(Soup::of(copy.get()).triangles.empty());
  EXPECT_EQ(kit->getPart("groupLevelSurf", FALSE), nullptr);
}

TEST_F(LevelSurfKitTest, FindsAllItNeedsOnTheState) {
  NodePtr<SoSeparator> written(new SoSeparator);
  auto* grid = new PoRegularCartesianGrid3D;
  written->addChild(grid);
  grid->setGeometry(3, 2, 2, 0, 0, 0, 2, 1, 1);
  const float values[] = {0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2};
  grid->addValuesSet(0, values, "x");
  auto* mapping = new PoLinearDataMapping;
  written->addChild(mapping);
  mapping->value2 = 2;
  mapping->color2 = SbColor(1, 1, 1);
  auto* surface = new PoMeshLevelSurf;
  written->addChild(surface);
  surface->valuesIndex = 0;
  surface->levelValue = 0.5F;
  surface->surfOrientation = PoMeshLevelSurf::ORIENTED_TO_MIN;
  surface->coloringType = PoMesh::COLOR_MAPPING;
  const NodePtr<SoSeparator> root = sceneOf(textOf(written.get()));
  ASSERT_TRUE(root);
  const Soup soup = Soup::of(root.get());
  EXPECT_NEAR(soup.area(), 1, 1e-6);
  EXPECT_NEAR(soup.triangles.at(0)[0].color[0], 0.25, 1e-5);
  EXPECT_LT(soup.triangles.at(0)[0].normal[0], -0.99F);
  const std::string text = textOf(root->getChild(2));
  EXPECT_NE(text.find("surfOrientation ORIENTED_TO_MIN"), std::string::npos) << text;
  EXPECT_EQ(text.find("groupLevelSurf Group"), std::string::npos);
}

TEST_F(LevelSurfKitTest, UsesTheColouringSetWithoutALevelSetAndNothingForValuesOfCells) {
  const auto mesh = volumeKinds()[0].make(3, 3, 3);
  const std::vector<float> heights = valuesAt(*mesh, [](const SbVec3f& p) { return p[2]; });
  mesh->addValuesSet(0, heights.data(), PbMesh::PER_NODE, "heights");
  const std::vector<float> perCell(27, 1.0F);
  mesh->addValuesSet(1, perCell.data(), PbMesh::PER_CELL, "cells");
  kit->setMesh(mesh.get());
  kit->valuesIndex = 0;
  kit->levelValue = 1.5F;
  EXPECT_NEAR(Soup::of(kit.get()).area(), 9, 1e-5);
  // A level that is a value of nodes lies a little beside them.
  kit->levelValue = 2;
  EXPECT_NEAR(Soup::of(kit.get()).area(), 9, 1e-5);
  EXPECT_NEAR(Soup::of(kit.get()).box().getMin()[2], 2.01F, 1e-5);
  kit->valuesIndexForLevel = 1;
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
  kit->valuesIndexForLevel = 77;
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
  kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
}

}  // namespace
