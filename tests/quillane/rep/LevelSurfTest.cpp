// The level surface as geometry: closed, shared, facing one way.

#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "graph/frame/PiParallel.h"
#include "quillane/rep/LevelSurfFixture.h"
#include "quillane/rep/PiSurfaceStore.h"
#include "support/Soup.h"

namespace {

class LevelSurfTest : public LevelSurfFixture {};

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
}  // namespace
