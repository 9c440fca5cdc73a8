#include <Ormelle/PoMeshLevelSurf.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoRegularCartesianGrid3D.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <random>
#include <set>

#include "graph/frame/PiParallel.h"
#include "quillane/rep/PiSurfaceStore.h"
#include "quillane/rep/TestGrid.h"
#include "quillane/rep/VolumeSamples.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

void useStrips(bool areUsed) { setenv("ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET", areUsed ? "TRUE" : "FALSE", 1); }

class LevelSurfTest : public testing::Test {
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
std::vector<float> randomSides(int num, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<float> values;
  for (int n = 0; n < num; ++n)
    values.push_back((random() % 2 != 0 ? 1.0F : -1.0F) * (0.1F + static_cast<float>(random() % 1000) / 1000));
  return values;
}

// The reference: the facets of the surface, each turned to begin with its smallest point, where points are told apart
// by place.
std::multiset<std::vector<std::array<float, 3>>> facetsOf(const MadeSurface& surface) {
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

TEST_F(LevelSurfTest, IsClosedForRandomValuesInEveryMesh) {
  for (const VolumeKind& kind : volumeKinds())
    for (unsigned seed = 1; seed <= 6; ++seed) {
      const auto mesh = kind.make(7, 5, 4);
      const std::vector<float> values = randomSides(mesh->getNumNodes(), seed);
      for (const bool areStrips : {true, false}) {
        SCOPED_TRACE(kind.name + (areStrips ? " strips " : " faces ") + std::to_string(seed));
        useStrips(areStrips);
        show(*mesh, values, 0);
        const MadeSurface made = surface();
        EXPECT_GT(made.polygons.size(), 100U);
        EXPECT_EQ(made.numFaults(), 0);
        const SbBox3f box = mesh->getBoundingBox();
        EXPECT_EQ(made.numOpenEdges([&](const SbVec3f& a, const SbVec3f& b) { return areOnSide(box, a, b); }), 0);
      }
    }
}

TEST_F(LevelSurfTest, IsASphereThatFacesTheAskedSideInEveryMesh) {
  const auto distance = [](const SbVec3f& p) { return (p - SbVec3f(10, 10, 10)).length(); };
  for (const VolumeKind& kind : volumeKinds()) {
    SCOPED_TRACE(kind.name);
    const auto mesh = kind.make(20, 20, 20);
    const std::vector<float> values = valuesAt(*mesh, distance);
    for (const int orientation : {PoMeshLevelSurf::ORIENTED_TO_MIN, PoMeshLevelSurf::ORIENTED_TO_MAX}) {
      kit->surfOrientation = orientation;
      kit->creaseAngle = orientation == PoMeshLevelSurf::ORIENTED_TO_MAX ? 1.5F : 0.0F;
      show(*mesh, values, 7);
      const MadeSurface made = surface();
      EXPECT_NEAR(made.area(), 4 * M_PI * 49, 12);
      EXPECT_EQ(made.numOpenEdges([](const SbVec3f&, const SbVec3f&) { return false; }), 0);
      const float side = orientation == PoMeshLevelSurf::ORIENTED_TO_MAX ? 1.0F : -1.0F;
      for (const SoupTriangle& t : Soup::of(kit.get()).triangles) {
        const SbVec3f outward = t[0].point - SbVec3f(10, 10, 10);
        const SbVec3f clockwise = (t[2].point - t[0].point).cross(t[1].point - t[0].point);
        ASSERT_GT(clockwise.dot(outward) * side, -1e-5F);
        for (const SoupVertex& vertex : t) ASSERT_GT(vertex.normal.dot(outward) * side, 0.7F * 7);
      }
    }
  }
}

// A mesh class of an application: it answers cell by cell.
struct OwnMesh : PbIndexedMesh3D {
  using PbIndexedMesh3D::PbIndexedMesh3D;
  explicit OwnMesh(const PbIndexedMesh3D& other) : PbIndexedMesh3D(other) {}
  void meshLevelSurfShapeIndices(PoMesh3D*, int, const float*) const override {}
};

TEST_F(LevelSurfTest, AMeshClassOfAnApplicationGetsTheSameFacetsCellByCell) {
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(5, 4, 3);
    const auto* indexed = dynamic_cast<const PbIndexedMesh3D*>(mesh.get());
    if (!indexed) continue;
    SCOPED_TRACE(kind.name);
    std::vector<float> values = randomSides(mesh->getNumNodes(), 3);
    values[7] = kNaN;
    useStrips(false);
    show(*mesh, values, 0);
    const auto expected = facetsOf(surface());
    OwnMesh own(*indexed);
    show(own, values, 0);
    EXPECT_EQ(facetsOf(surface()), expected);
    EXPECT_FALSE(expected.empty());
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(LevelSurfTest, GridsAndCellsOfOneShapeGiveTheSameFacets) {
  useStrips(false);
  std::vector<std::multiset<std::vector<std::array<float, 3>>>> found;
  for (const std::size_t kind : {0U, 2U, 3U}) {
    const auto mesh = volumeKinds()[kind].make(70, 4, 130);  // rows of more than one word
    std::vector<float> values = randomSides(mesh->getNumNodes(), 8);
    values[100] = values[4000] = kNaN;
    show(*mesh, values, 0);
    found.push_back(facetsOf(surface()));
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
  EXPECT_GT(found[0].size(), 10000U);
  EXPECT_EQ(found[0], found[1]);
  EXPECT_EQ(found[0], found[2]);
}

TEST_F(LevelSurfTest, EndsAtUndefinedValuesPlacesAndRefusedCells) {
  for (const VolumeKind& kind : volumeKinds()) {
    SCOPED_TRACE(kind.name);
    const auto mesh = kind.make(6, 5, 4);
    std::vector<float> values = randomSides(mesh->getNumNodes(), 2);
    const int hole = mesh->getNumNodes() / 2;
    const SbVec3f place = mesh->getNodeCoord(hole);
    values[static_cast<std::size_t>(hole)] = kNaN;
    show(*mesh, values, 0);
    const SbBox3f box = mesh->getBoundingBox();
    const MadeSurface made = surface();
    EXPECT_EQ(made.numFaults(), 0);
    // What is open lies on a side of the box or on the cells round the hole.
    const auto isNear = [&](const SbVec3f& p) {
      const SbVec3f d = p - place;
      return std::max({std::fabs(d[0]), std::fabs(d[1]), std::fabs(d[2])}) <= 1;
    };
    EXPECT_EQ(made.numOpenEdges(
                  [&](const SbVec3f& a, const SbVec3f& b) { return areOnSide(box, a, b) || (isNear(a) && isNear(b)); }),
              0);
    EXPECT_GT(made.numOpenEdges([&](const SbVec3f& a, const SbVec3f& b) { return areOnSide(box, a, b); }), 0);
  }
}

TEST_F(LevelSurfTest, LeavesOutCellsAtNoPlaceAndNeverShowsOne) {
  std::vector<float> x, y, z;
  for (int n = 0; n < 64; ++n) {
    x.push_back(static_cast<float>(n / 16));
    y.push_back(static_cast<float>(n / 4 % 4));
    z.push_back(static_cast<float>(n % 4));
  }
  x[21] = kInfinity;
  z[42] = kNaN;
  PbCartesianGrid3D grid(4, 4, 4, x.data(), y.data(), z.data(), 1);
  std::vector<float> values = randomSides(64, 4);
  values[0] = kInfinity;
  values[63] = -kInfinity;
  values[5] = 1e38F;
  values[6] = -1e38F;
  values[9] = std::numeric_limits<float>::denorm_min();
  for (const float level : {0.0F, 1e-44F, 0.5F, 3e38F, kInfinity, -kInfinity, kNaN}) {
    SCOPED_TRACE(level);
    show(grid, values, level);
    EXPECT_TRUE(Soup::of(kit.get()).isFinite());
    // Beside a node by less than a float can tell, points of several edges fall together.
    if (level != 1e-44F) {
      EXPECT_EQ(surface().numFaults(), 0);
    }
  }
  for (const int numX : {1, 2}) {
    PbRegularCartesianGrid3D thin(numX, 2, 1, 0, 0, 0, 1, 1, 1, 1);
    show(thin, {1, -1, 1, -1}, 0);
    EXPECT_TRUE(surface().points.empty());
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

class HalfFilter : public PoCellFilter {
 public:
  int acceptCell(int cell, float value) const override { return value == 0 ? cell % 2 : value > 0.5F; }
};

TEST_F(LevelSurfTest, ShowsTheCellsThatTheFilterAcceptsWithTheirOwnValues) {
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

TEST_F(LevelSurfTest, ColoursPointsByTheOtherSetAndAllByItsOwn) {
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

TEST_F(LevelSurfTest, RunsThePassesThatAChangeAsksFor) {
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

TEST_F(LevelSurfTest, BandsCoverTheSurface) {
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

TEST_F(LevelSurfTest, TakesTransparentPartsAwayAndBringsThemBack) {
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

TEST_F(LevelSurfTest, IsTheSameToTheByteForAnyNumberOfThreads) {
  for (const VolumeKind& kind : volumeKinds()) {
    SCOPED_TRACE(kind.name);
    const auto mesh = kind.make(50, 40, 30);
    const std::vector<float> values = randomSides(mesh->getNumNodes(), 9);
    std::vector<SbVec3f> points;
    std::vector<std::vector<int>> facets;
    for (const int threads : {1, 2, 5}) {
      PiParallel::setNumThreads(threads);
      kit->levelValue = 1;
      show(*mesh, values, 0);
      const MadeSurface made = surface();
      if (threads == 1) {
        points = made.points;
        facets = made.facets;
      }
      ASSERT_EQ(made.points.size(), points.size());
      EXPECT_EQ(std::memcmp(made.points.data(), points.data(), points.size() * sizeof(SbVec3f)), 0);
      EXPECT_EQ(made.facets, facets);
    }
    PiParallel::setNumThreads(0);
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

template <class Number>
std::vector<Number> readBracket(const std::string& file) {
  const char* folder = std::getenv("ORMELLE_SOURCE_DIR");
  std::ifstream in(std::string(folder ? folder : ".") + "/data/bracket_mixed/" + file + ".raw", std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
  std::vector<Number> numbers(bytes.size() / sizeof(Number));
  std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(Number));
  return numbers;
}

// A solved part: all four kinds of cells in one mesh, whose outside is no box.
TEST_F(LevelSurfTest, OfTheBracketEndsOnItsSkinAlone) {
  const std::vector<float> points = readBracket<float>("points");
  ASSERT_EQ(points.size(), 3U * 4645);
  std::vector<float> x, y, z;
  for (std::size_t n = 0; n < points.size(); n += 3) {
    x.push_back(points[n]);
    y.push_back(points[n + 1]);
    z.push_back(points[n + 2]);
  }
  std::vector<int> nodes, sizes;
  for (const auto& [name, size] : {std::pair("tetrahedron", 4), {"pyramid", 5}, {"wedge", 6}, {"hexahedron", 8}}) {
    const std::vector<int> cells = readBracket<int>(std::string(name) + "_cells");
    nodes.insert(nodes.end(), cells.begin(), cells.end());
    sizes.insert(sizes.end(), cells.size() / static_cast<std::size_t>(size), size);
  }
  PbIndexedMesh3D mesh(static_cast<int>(x.size()), x.data(), y.data(), z.data(), static_cast<int>(sizes.size()),
                       nodes.data(), sizes.data(), 1);
  // Facets of one cell alone are the skin.
  std::map<std::set<int>, int> facets;
  PbArrayOfInt corners;
  for (int c = 0; c < mesh.getNumCells(); ++c)
    for (int facet = 0; facet < mesh.getTopoCell(c)->getNumFacets(); ++facet) {
      mesh.getTopoCell(c)->getNodesIndexOfFacet(facet, corners);
      ++facets[std::set<int>(corners.get(), corners.get() + corners.getNum())];
    }
  std::multimap<int, const std::set<int>*> skinAt;
  for (const auto& [facet, num] : facets)
    if (num == 1)
      for (const int node : facet) skinAt.emplace(node, &facet);

  int numShown = 0;
  for (const char* set : {"temperature", "stress"}) {
    const std::vector<float> values = readBracket<float>(set);
    for (const float level : {21.0F, 40.0F, 70.0F, 100.0F}) {
      SCOPED_TRACE(set + std::to_string(level));
      show(mesh, values, level);
      const MadeSurface made = surface();
      EXPECT_EQ(made.numFaults(), 0);
      numShown += static_cast<int>(made.polygons.size());
      const auto& cuts = PiSurfaceStore::of(*kit).points.points();
      std::set<std::pair<int, int>> edges;
      for (const std::vector<int>& polygon : made.polygons)
        for (std::size_t c = 0; c < polygon.size(); ++c) edges.emplace(polygon[c], polygon[(c + 1) % polygon.size()]);
      for (const auto& [from, to] : edges) {
        if (edges.count({to, from})) continue;
        const PiSurfacePoint& a = cuts[static_cast<std::size_t>(from)];
        const PiSurfacePoint& b = cuts[static_cast<std::size_t>(to)];
        const auto [begin, end] = skinAt.equal_range(a.a);
        EXPECT_TRUE(std::any_of(begin, end, [&](const auto& entry) {
          const std::set<int>& facet = *entry.second;
          return facet.count(a.b) && facet.count(b.a) && facet.count(b.b);
        }));
      }
    }
  }
  EXPECT_GT(numShown, 3000);
  kit->setMesh(static_cast<PbMesh3D*>(nullptr));
}

TEST_F(LevelSurfTest, OutlivesItsMeshAndBringsBackWhatWasTakenFromItsGroup) {
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

TEST_F(LevelSurfTest, FindsAllItNeedsOnTheState) {
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

TEST_F(LevelSurfTest, UsesTheColouringSetWithoutALevelSetAndNothingForValuesOfCells) {
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
