// The solver results in data/: meshes that exist as files test what meshes made by formula can't.

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace {

// Empty if there is no such file.
template <class Number>
std::vector<Number> readRaw(const std::string& set, const std::string& name) {
  const char* folder = std::getenv("ORMELLE_SOURCE_DIR");
  std::ifstream in(std::string(folder ? folder : ".") + "/data/" + set + "/" + name + ".raw", std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
  std::vector<Number> numbers(bytes.size() / sizeof(Number));
  std::copy_n(bytes.data(), numbers.size() * sizeof(Number), reinterpret_cast<char*>(numbers.data()));
  return numbers;
}

struct Bracket {
  std::string set;
  std::map<int, std::size_t> numCells;  // by their number of nodes
};

class BracketDataTest : public testing::TestWithParam<Bracket> {
 protected:
  void SetUp() override {
    const std::vector<float> points = readRaw<float>(GetParam().set, "points");
    std::vector<float> coordinates[3];
    for (std::size_t i = 0; i < points.size(); ++i) coordinates[i % 3].push_back(points[i]);
    std::vector<int> indices;
    std::vector<int> sizes;
    for (const auto& [size, name] :
         std::map<int, std::string>{{4, "tetrahedron"}, {5, "pyramid"}, {6, "wedge"}, {8, "hexahedron"}}) {
      const auto cells = readRaw<int32_t>(GetParam().set, name + "_cells");
      indices.insert(indices.end(), cells.begin(), cells.end());
      sizes.insert(sizes.end(), cells.size() / static_cast<std::size_t>(size), size);
    }
    m_mesh.setGeometry(static_cast<int>(points.size() / 3), coordinates[0].data(), coordinates[1].data(),
                       coordinates[2].data(), static_cast<int>(sizes.size()), indices.data(), sizes.data());
    ASSERT_FALSE(sizes.empty());
  }

  PbIndexedMesh3D m_mesh{1};
};

TEST_P(BracketDataTest, FillsThePartWithCellsThatTurnTheSameWay) {
  std::map<int, std::size_t> numCells;
  std::vector<bool> isUsed(static_cast<std::size_t>(m_mesh.getNumNodes()));
  for (int i = 0; i < m_mesh.getNumCells(); ++i) {
    const PbCell* cell = m_mesh.getCell(i);
    ASSERT_NE(cell, nullptr) << i;
    ++numCells[cell->getNumNodes()];
    EXPECT_EQ(cell->getOrdering(), 0) << i;
    EXPECT_GT(cell->getVolume(), 0) << i;
    for (int node = 0; node < cell->getNumNodes(); ++node)
      isUsed[static_cast<std::size_t>(cell->getNodeIndex(node))] = true;
  }
  EXPECT_EQ(numCells, GetParam().numCells);
  EXPECT_EQ(std::count(isUsed.begin(), isUsed.end(), false), 0);
  // By the formulas for the part; chords for arcs take a little from the outside and add a little to it in the holes.
  EXPECT_NEAR(m_mesh.getVolume(), 94492, 94492 * 0.001);
}

// Cells that meet share whole facets, so that the facets of one cell only make a closed surface: along each of its
// edges it goes on.
TEST_P(BracketDataTest, HasAClosedSurface) {
  std::map<std::vector<int>, int> facets;  // nodes in rising order, to how many cells have them
  std::map<std::vector<int>, std::vector<int>> perimeters;
  PbArrayOfInt nodes;
  for (int i = 0; i < m_mesh.getNumCells(); ++i) {
    const PbCell* cell = m_mesh.getCell(i);
    for (int facet = 0; facet < cell->getNumFacets(); ++facet) {
      cell->getNodesIndexOfFacet(facet, nodes);
      std::vector<int> perimeter;
      for (int k = 0; k < nodes.getNum(); ++k) perimeter.push_back(nodes[k]);
      std::vector<int> key(perimeter);
      std::sort(key.begin(), key.end());
      ++facets[key];
      perimeters[key] = perimeter;
    }
  }
  std::map<std::pair<int, int>, int> edges;
  for (const auto& [key, count] : facets) {
    EXPECT_LE(count, 2);
    if (count != 1) continue;
    const std::vector<int>& perimeter = perimeters[key];
    for (std::size_t k = 0; k < perimeter.size(); ++k)
      ++edges[std::minmax({perimeter[k], perimeter[(k + 1) % perimeter.size()]})];
  }
  for (const auto& [edge, count] : edges) EXPECT_EQ(count, 2) << edge.first << ' ' << edge.second;
}

TEST_P(BracketDataTest, HasTheResultsOfTheLoads) {
  const std::string& set = GetParam().set;
  const auto numNodes = static_cast<std::size_t>(m_mesh.getNumNodes());
  const std::vector<float> stress = readRaw<float>(set, "stress");
  const std::vector<float> cellStress = readRaw<float>(set, "cell_stress");
  const std::vector<float> temperature = readRaw<float>(set, "temperature");
  const std::vector<float> displacement = readRaw<float>(set, "displacement");
  ASSERT_EQ(stress.size(), numNodes);
  ASSERT_EQ(temperature.size(), numNodes);
  ASSERT_EQ(displacement.size(), 3 * numNodes);
  ASSERT_EQ(cellStress.size(), static_cast<std::size_t>(m_mesh.getNumCells()));
  EXPECT_GT(*std::min_element(cellStress.begin(), cellStress.end()), 0);
  // Both meshes find the peak at the same place, on the edge of the bolt hole that is farther from the pull.
  const auto peak = std::max_element(stress.begin(), stress.end());
  EXPECT_NEAR(*peak, 190, 15);
  EXPECT_EQ(m_mesh.getNodeCoord(static_cast<int>(peak - stress.begin())), SbVec3f(60.5F, 15, 0));
  for (std::size_t i = 0; i < numNodes; ++i) {
    const SbVec3f point = m_mesh.getNodeCoord(static_cast<int>(i));
    const float fromPin = std::hypot(point[1] - 30, point[2] - 62);
    const float* moved = &displacement[3 * i];
    EXPECT_TRUE(std::isfinite(stress[i]) && stress[i] >= 0);
    EXPECT_LT(std::hypot(moved[0], moved[1], moved[2]), 0.3F);
    EXPECT_TRUE(temperature[i] >= 20 && temperature[i] <= 120);
    if (point[2] == 0) {
      EXPECT_EQ(temperature[i], 20);
    }
    if (fromPin < 12.001F) {
      EXPECT_EQ(temperature[i], 120);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Meshes, BracketDataTest,
                         testing::Values(Bracket{"bracket_tetrahedra", {{4, 12962}}},
                                         Bracket{"bracket_mixed", {{4, 3394}, {5, 117}, {6, 1905}, {8, 1698}}}),
                         [](const auto& bracket) { return bracket.param.set; });

}  // namespace
