// The skin of a mesh against the facets of all its cells, counted one by one.

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoCellFilter.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include "graph/frame/PiParallel.h"
#include "quillane/mesh/WrappedMesh.h"
#include "quillane/surface/PiMeshSkin.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"

namespace {

class TestFilter : public PoCellFilter {
 public:
  explicit TestFilter(std::function<bool(int, float)> accepts) : m_accepts(std::move(accepts)) {}
  int acceptCell(int cell, float value) const override { return m_accepts(cell, value); }
  std::function<bool(int, float)> m_accepts;
};

/// A facet as its cell gives it: cell, then nodes.
using Facet = std::vector<int>;

std::vector<Facet> facetsOf(const PiMeshSkin& skin) {
  std::vector<Facet> facets;
  for (int f = 0; f < skin.getNumFacets(); ++f) {
    Facet facet = {skin.getCell(f)};
    for (const int node : skin.getNodes(f)) facet.push_back(node);
    facets.push_back(facet);
  }
  std::sort(facets.begin(), facets.end());
  return facets;
}

/// Facets that an odd number of accepted cells has; of three, the last one's is left.
std::vector<Facet> countedFacets(const PbMesh3D& mesh, const std::function<bool(int)>& accepts) {
  std::map<Facet, Facet> open;
  PbArrayOfInt nodes;
  for (int c = 0; c < mesh.getNumCells(); ++c) {
    const PbCell* cell = accepts(c) ? mesh.getCell(c) : nullptr;
    for (int f = 0; cell && f < cell->getNumFacets(); ++f) {
      cell->getNodesIndexOfFacet(f, nodes);
      Facet key(nodes.get(), nodes.get() + nodes.getNum());
      Facet facet = key;
      facet.insert(facet.begin(), c);
      std::sort(key.begin(), key.end());
      if (!open.erase(key)) open[key] = facet;
    }
  }
  std::vector<Facet> facets;
  for (const auto& entry : open) facets.push_back(entry.second);
  std::sort(facets.begin(), facets.end());
  return facets;
}

std::vector<Facet> skinOf(const PbMesh3D& mesh, const PoCellFilter* filter = nullptr, int set = -1) {
  unsigned int id = 0;
  return facetsOf(*mesh.getSkinTopology(filter, set, id));
}

class SkinTopologyTest : public testing::TestWithParam<MeshKind3D> {};

TEST_P(SkinTopologyTest, HasTheFacetsOfOneAcceptedCell) {
  for (const std::array<int, 3>& num : {std::array{5, 4, 3}, {2, 2, 2}, {4, 2, 2}, {2, 3, 2}, {3, 3, 5}, {6, 6, 6}}) {
    BoxSpec spec;
    spec.numX = num[0], spec.numY = num[1], spec.numZ = num[2];
    const auto sample = GetParam().make(spec, 0);
    const WrappedMesh wrapped(*sample.mesh);
    EXPECT_EQ(skinOf(*sample.mesh), countedFacets(*sample.mesh, [](int) { return true; }));
    EXPECT_EQ(skinOf(wrapped), skinOf(*sample.mesh));
    for (const int rest : {0, 1, 2}) {
      const auto accepts = [rest](int cell) { return (cell * 7 + cell / 5) % 3 >= rest; };
      const NodePtr<TestFilter> filter(new TestFilter([&](int cell, float) { return accepts(cell); }));
      EXPECT_EQ(skinOf(*sample.mesh, filter.get()), countedFacets(*sample.mesh, accepts));
      EXPECT_EQ(skinOf(wrapped, filter.get()), skinOf(*sample.mesh, filter.get()));
    }
    const NodePtr<TestFilter> nothing(new TestFilter([](int, float) { return false; }));
    EXPECT_TRUE(skinOf(*sample.mesh, nothing.get()).empty());
  }
}

TEST_P(SkinTopologyTest, IsMadeAnewOnlyWhenItMustBe) {
  const auto sample = GetParam().make({}, 1);
  PbMesh3D& mesh = *sample.mesh;
  std::vector<float> values(static_cast<std::size_t>(mesh.getNumCells()), 1);
  mesh.addValuesSet(3, values.data(), PbMesh::PER_CELL, "values");
  int numAsked = 0;
  const NodePtr<TestFilter> filter(new TestFilter([&](int, float value) { return ++numAsked, value > 0; }));
  unsigned int plain = 0, first = 0, again = 0;

  const PiMeshSkin* skin = mesh.getSkinTopology(nullptr, 3, plain);
  EXPECT_EQ(mesh.getSkinTopology(nullptr, -1, again), skin);
  EXPECT_EQ(again, plain) << "values don't matter without a filter";

  EXPECT_NE(mesh.getSkinTopology(filter.get(), 3, first), skin);
  EXPECT_NE(first, plain);
  EXPECT_EQ(numAsked, mesh.getNumCells());
  mesh.getSkinTopology(filter.get(), 3, again);
  EXPECT_EQ(again, first);
  EXPECT_EQ(numAsked, mesh.getNumCells());

  values[0] = -1;
  mesh.addValuesSet(3, values.data(), PbMesh::PER_CELL, "values");
  EXPECT_EQ(facetsOf(*mesh.getSkinTopology(filter.get(), 3, again)),
            countedFacets(mesh, [](int cell) { return cell != 0; }));
  EXPECT_NE(again, first);
  first = again;
  filter->touch();
  mesh.getSkinTopology(filter.get(), 3, again);
  EXPECT_NE(again, first);
  EXPECT_TRUE(facetsOf(*mesh.getSkinTopology(filter.get(), -1, again)).empty()) << "no values: 0 for every cell";
  mesh.getSkinTopology(nullptr, -1, again);
  EXPECT_EQ(again, plain);
}

INSTANTIATE_TEST_SUITE_P(Meshes, SkinTopologyTest, testing::ValuesIn(meshKinds3D()), MeshKindName());

const std::vector<float> kNoPlace(64, 0.0F);

TEST(SkinTopologyOfIndexedMesh, KnowsFewCells) {
  const float* place = kNoPlace.data();
  const int hexahedra[16] = {0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 8, 9, 10, 11};
  EXPECT_EQ(skinOf(PbHexahedronMesh3D(12, place, place, place, 2, hexahedra, 1)).size(), 10U);
  EXPECT_EQ(skinOf(PbTetrahedronMesh3D(4, place, place, place, 1, hexahedra, 1)).size(), 4U);
  EXPECT_TRUE(skinOf(PbTetrahedronMesh3D(1)).empty());
  EXPECT_TRUE(skinOf(PbIndexedMesh3D(1)).empty());
  // The same cell twice is no cell, three times it is one.
  const int same[12] = {0, 1, 2, 3, 3, 1, 0, 2, 1, 0, 2, 3};
  EXPECT_TRUE(skinOf(PbTetrahedronMesh3D(4, place, place, place, 2, same, 1)).empty());
  const PbTetrahedronMesh3D three(4, place, place, place, 3, same, 1);
  EXPECT_EQ(skinOf(three), countedFacets(three, [](int) { return true; }));
}

// Cells of all kinds among nodes taken at random: shared facets, repeated nodes, cells that aren't whole.
TEST(SkinTopologyOfIndexedMesh, AgreesWithCountingOnWildCells) {
  std::mt19937 random(7);
  for (const int numNodes : {1, 5, 9, 60}) {
    for (int round = 0; round < 40; ++round) {
      std::vector<int> sizes, nodes;
      for (int c = 0; c < 400; ++c) {
        sizes.push_back(std::array{4, 4, 4, 5, 6, 8, 8, 3, 7, 0}[random() % 10]);
        for (int n = 0; n < sizes.back(); ++n)
          nodes.push_back(static_cast<int>(random() % static_cast<unsigned>(numNodes)));
      }
      nodes[100] = -1;
      nodes[200] = numNodes;
      nodes[300] = std::numeric_limits<int>::min();
      const PbIndexedMesh3D mesh(numNodes, kNoPlace.data(), kNoPlace.data(), kNoPlace.data(), 400, nodes.data(),
                                 sizes.data(), 1);
      ASSERT_EQ(skinOf(mesh), countedFacets(mesh, [](int) { return true; }));
      const auto isEven = [](int cell) { return cell % 2 == 0; };
      const NodePtr<TestFilter> filter(new TestFilter([&](int cell, float) { return isEven(cell); }));
      ASSERT_EQ(skinOf(mesh, filter.get()), countedFacets(mesh, isEven));
    }
  }
}

// A hundred thousand cells round one edge take no longer than others; in lists of one node this would be minutes.
TEST(SkinTopologyOfIndexedMesh, BearsANodeOfAllCells) {
  constexpr int kNum = 100000;
  const std::vector<float> place(kNum + 3, 0.0F);
  std::vector<int> order(kNum), nodes;
  for (int c = 0; c < kNum; ++c) order[static_cast<std::size_t>(c)] = c;
  std::shuffle(order.begin(), order.end(), std::mt19937(1));
  for (const int c : order) nodes.insert(nodes.end(), {0, 1, 2 + c, 3 + c});
  const PbTetrahedronMesh3D mesh(kNum + 3, place.data(), place.data(), place.data(), kNum, nodes.data(), 0);
  EXPECT_EQ(skinOf(mesh).size(), 2U * kNum + 2);
}

// In order and to the last facet, whether threads share the work or not.
TEST(SkinTopologyOfIndexedMesh, DoesNotDependOnThreads) {
  constexpr int kNum = 40;
  std::vector<int> nodes;
  for (int i = 0; i < kNum; ++i)
    for (int j = 0; j < kNum; ++j)
      for (int k = 0; k < kNum; ++k) {
        const auto node = [=](int di, int dj, int dk) {
          return ((i + di) * (kNum + 1) + j + dj) * (kNum + 1) + k + dk;
        };
        const int n[8] = {node(0, 0, 0), node(1, 0, 0), node(1, 1, 0), node(0, 1, 0),
                          node(0, 0, 1), node(1, 0, 1), node(1, 1, 1), node(0, 1, 1)};
        for (const int corner : {0, 1, 3, 4, 2, 3, 1, 6, 5, 4, 6, 1, 7, 6, 4, 3, 1, 3, 4, 6})
          nodes.push_back(n[corner]);
      }
  const int numCells = static_cast<int>(nodes.size() / 4), numNodes = (kNum + 1) * (kNum + 1) * (kNum + 1);
  const std::vector<float> place(static_cast<std::size_t>(numNodes), 0.0F);
  PbTetrahedronMesh3D mesh(numNodes, place.data(), place.data(), place.data(), numCells, nodes.data(), 0);
  const NodePtr<TestFilter> filter(new TestFilter([](int cell, float) { return cell % 11 != 3; }));
  std::vector<std::vector<int>> skins;
  for (const int threads : {1, 2, 3, 4, 100}) {
    PiParallel::setNumThreads(threads);
    mesh.setGeometry(numNodes, place.data(), place.data(), place.data(), numCells, nodes.data());
    std::vector<int>& facets = skins.emplace_back();
    unsigned int id = 0;
    for (const PoCellFilter* chosen :
         {static_cast<const PoCellFilter*>(nullptr), static_cast<const PoCellFilter*>(filter.get())}) {
      const PiMeshSkin* skin = mesh.getSkinTopology(chosen, -1, id);
      for (int f = 0; f < skin->getNumFacets(); ++f) {
        facets.push_back(skin->getCell(f));
        facets.insert(facets.end(), skin->getNodes(f).begin(), skin->getNodes(f).end());
      }
    }
    EXPECT_EQ(facets, skins[0]) << threads;
    EXPECT_GT(facets.size(), 100000U);
  }
  PiParallel::setNumThreads(0);
}

}  // namespace
