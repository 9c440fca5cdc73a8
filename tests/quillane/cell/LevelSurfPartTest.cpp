#include "quillane/marching/PiLevelSurfPart.h"

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbQuadrangleCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace {

// Opens the protected operation.
struct CaseIdOf : PbCell {
  static unsigned char ask(const PbCell& cell, const std::vector<bool>& flags) {
    return (cell.*&CaseIdOf::getIsosurfCaseId)(flags);
  }
};

class Tables : public testing::Test {
 protected:
  Tables() { PbHexahedronCell::init(), PbTetrahedronCell::init(), PbWedgeCell::init(), PbPyramidCell::init(); }
  ~Tables() override {
    PbHexahedronCell::finish(), PbTetrahedronCell::finish(), PbWedgeCell::finish(), PbPyramidCell::finish();
  }
};

// A surface under construction, as a level surface keeps it.
struct Surface {
  std::vector<int> coordIndices, cellIndices;
  std::map<std::pair<int, int>, int> points;
  std::map<std::array<int, 4>, int> quadrangles;

  void addSurfPoint(int a, int b, int& index) {
    index = points.emplace(std::minmax(a, b), static_cast<int>(points.size())).first->second;
  }
  void addOptQuadrangle(std::array<int, 4> corners, int) {
    std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()), corners.end());
    ++quadrangles[corners];
  }

  std::vector<std::vector<int>> polygons(bool areStrips) const {
    std::vector<std::vector<int>> result;
    std::vector<int> run;
    for (const int index : coordIndices) {
      if (index != -1) {
        run.push_back(index);
        continue;
      }
      if (areStrips)
        for (std::size_t i = 2; i < run.size(); ++i) result.push_back({run[i - 2 + i % 2], run[i - 1 - i % 2], run[i]});
      else
        result.push_back(run);
      run.clear();
    }
    EXPECT_TRUE(run.empty()) << "the last part isn't closed";
    // What the cells on both sides of a facet propose belongs to the surface.
    for (const auto& [corners, count] : quadrangles) {
      EXPECT_LE(count, 2);
      if (count == 2) result.emplace_back(corners.begin(), corners.end());
    }
    return result;
  }
};

struct Cell {
  std::vector<int> nodes;
};

// A box of columns, each cut in its own way into cells whose facets fit together.
class ColumnMesh {
 public:
  enum Column { HEXAHEDRA, WEDGES, PYRAMIDS };

  explicit ColumnMesh(int size) : m_size(size), m_numNodes((size + 1) * (size + 1) * (size + 1)) {}

  template <class Choose>
  void fill(Choose choose) {
    for (int i = 0; i < m_size; ++i)
      for (int j = 0; j < m_size; ++j) {
        const int column = choose(i, j);
        for (int k = 0; k < m_size; ++k) addCube(i, j, k, column);
      }
  }

  // The six tetrahedra round the main diagonal of each cube.
  void fillWithTetrahedra() {
    for (int i = 0; i < m_size; ++i)
      for (int j = 0; j < m_size; ++j)
        for (int k = 0; k < m_size; ++k) {
          const auto c = corners(i, j, k);
          const int ring[] = {1, 2, 3, 7, 4, 5, 1};
          for (int t = 0; t < 6; ++t) cells.push_back({{c[0], c[ring[t]], c[ring[t + 1]], c[6]}});
        }
  }

  int numNodes() const { return m_numNodes; }
  bool isOnHull(int node) const {
    if (node >= (m_size + 1) * (m_size + 1) * (m_size + 1)) return false;  // the apex of pyramids
    const int n = m_size + 1, i = node / (n * n), j = node / n % n, k = node % n;
    return i == 0 || j == 0 || k == 0 || i == m_size || j == m_size || k == m_size;
  }

  std::vector<Cell> cells;

 private:
  std::array<int, 8> corners(int i, int j, int k) const {
    const auto node = [&](int di, int dj, int dk) {
      return ((i + di) * (m_size + 1) + j + dj) * (m_size + 1) + k + dk;
    };
    return {node(0, 0, 0), node(1, 0, 0), node(1, 1, 0), node(0, 1, 0),
            node(0, 0, 1), node(1, 0, 1), node(1, 1, 1), node(0, 1, 1)};
  }

  void addCube(int i, int j, int k, int column) {
    const auto c = corners(i, j, k);
    switch (column) {
      case WEDGES:
        cells.push_back({{c[0], c[1], c[2], c[4], c[5], c[6]}});
        cells.push_back({{c[0], c[2], c[3], c[4], c[6], c[7]}});
        break;
      case PYRAMIDS: {
        const int apex = m_numNodes++;
        // Each side of the cube, counterclockwise seen from inside.
        const int sides[6][4] = {{0, 1, 2, 3}, {4, 7, 6, 5}, {0, 4, 5, 1}, {1, 5, 6, 2}, {2, 6, 7, 3}, {3, 7, 4, 0}};
        for (const auto& side : sides) cells.push_back({{c[side[0]], c[side[1]], c[side[2]], c[side[3]], apex}});
        break;
      }
      default:
        cells.push_back({{c.begin(), c.end()}});
    }
  }

  int m_size;
  int m_numNodes;
};

Surface cut(const ColumnMesh& mesh, const std::vector<bool>& flags, bool asStrips) {
  PbHexahedronCell hexahedron(nullptr);
  PbWedgeCell wedge(nullptr);
  PbPyramidCell pyramid(nullptr);
  PbTetrahedronCell tetrahedron(nullptr);
  std::map<std::size_t, PbCell*> kinds = {{8, &hexahedron}, {6, &wedge}, {5, &pyramid}, {4, &tetrahedron}};
  Surface surface;
  for (std::size_t index = 0; index < mesh.cells.size(); ++index) {
    const std::vector<int>& nodes = mesh.cells[index].nodes;
    PbCell& cell = *kinds.at(nodes.size());
    cell.setTopology(static_cast<int>(index), nodes.data());
    addLevelSurfPart(*cell.getMCcase(CaseIdOf::ask(cell, flags)), cell.getNodeIndexPtr(), cell.getIndex(), asStrips,
                     surface);
  }
  return surface;
}

// Each side of a polygon is met once in the other direction; returns the Euler characteristic.
int expectClosed(const Surface& surface, bool asStrips) {
  const auto polygons = surface.polygons(asStrips);
  std::map<std::pair<int, int>, int> sides;
  std::set<int> points;
  for (const auto& polygon : polygons)
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      ++sides[{polygon[i], polygon[(i + 1) % polygon.size()]}];
      points.insert(polygon[i]);
    }
  int numOpen = 0;
  for (const auto& [side, count] : sides) {
    const auto opposite = sides.find({side.second, side.first});
    numOpen += opposite == sides.end() || opposite->second != count;
  }
  EXPECT_EQ(numOpen, 0) << "of " << sides.size();
  EXPECT_EQ(points.size(), surface.points.size());
  EXPECT_EQ(surface.cellIndices.size(),
            static_cast<std::size_t>(std::count(surface.coordIndices.begin(), surface.coordIndices.end(), -1)));
  return static_cast<int>(points.size()) - static_cast<int>(sides.size()) / 2 + static_cast<int>(polygons.size());
}

void expectClosedForRandomFlags(const ColumnMesh& mesh) {
  std::mt19937 random(17);
  for (const double density : {0.1, 0.5, 0.85}) {
    std::vector<bool> flags;
    for (int node = 0; node < mesh.numNodes(); ++node)
      flags.push_back(!mesh.isOnHull(node) && std::bernoulli_distribution(density)(random));
    for (const bool asStrips : {true, false}) {
      SCOPED_TRACE(testing::Message() << "density " << density << (asStrips ? " strips" : " polygons"));
      const Surface surface = cut(mesh, flags, asStrips);
      ASSERT_GT(surface.points.size(), 100u);
      expectClosed(surface, asStrips);
    }
  }
}

TEST_F(Tables, SurfacesThroughHexahedraAreClosed) {
  ColumnMesh mesh(9);
  mesh.fill([](int, int) { return ColumnMesh::HEXAHEDRA; });
  expectClosedForRandomFlags(mesh);
}

TEST_F(Tables, SurfacesThroughTetrahedraAreClosed) {
  ColumnMesh mesh(9);
  mesh.fillWithTetrahedra();
  expectClosedForRandomFlags(mesh);
}

TEST_F(Tables, SurfacesThroughCellsOfSeveralKindsAreClosed) {
  ColumnMesh mesh(9);
  mesh.fill([](int i, int j) { return (i * i + 2 * j) % 3; });
  expectClosedForRandomFlags(mesh);
}

TEST_F(Tables, OneFlaggedBallGivesOneSphere) {
  ColumnMesh mesh(9);
  mesh.fill([](int i, int j) {
    return i < 5 ? ColumnMesh::HEXAHEDRA : j < 5 ? ColumnMesh::WEDGES : ColumnMesh::PYRAMIDS;
  });
  std::vector<bool> flags(static_cast<std::size_t>(mesh.numNodes()));
  for (int node = 0; node < 1000; ++node) {
    const int i = node / 100 - 4, j = node / 10 % 10 - 4, k = node % 10 - 4;
    flags[static_cast<std::size_t>(node)] = i * i + j * j + k * k < 11;
  }
  // The centres of the cubes that are cut into pyramids are outside: some lie in the ball and make small spheres of
  // their own. Flagging them by their cube removes those.
  for (const Cell& cell : mesh.cells)
    if (cell.nodes.size() == 5) {
      int numFlagged = 0;
      for (int corner = 0; corner < 4; ++corner) numFlagged += flags[static_cast<std::size_t>(cell.nodes[corner])];
      if (numFlagged == 4) flags[static_cast<std::size_t>(cell.nodes[4])] = true;
    }
  for (const bool asStrips : {true, false}) EXPECT_EQ(expectClosed(cut(mesh, flags, asStrips), asStrips), 2);
}

TEST_F(Tables, CaseIdsAskTheFlagsOfTheMeshNodes) {
  PbVoxelCell voxel(nullptr);
  const int nodes[] = {10, 3, 5, 7, 0, 2, 11, 1};
  voxel.setTopology(0, nodes);
  std::vector<bool> flags(12, false);
  EXPECT_EQ(CaseIdOf::ask(voxel, flags), 0);
  flags[3] = flags[1] = flags[4] = true;
  EXPECT_EQ(CaseIdOf::ask(voxel, flags), 1 << 1 | 1 << 7);
  EXPECT_EQ(CaseIdOf::ask(voxel, std::vector<bool>(12, true)), 0) << "wholly on one side";
  EXPECT_EQ(CaseIdOf::ask(voxel, std::vector<bool>(2, true)), 1 << 7 | 1 << 4) << "nodes without a flag aren't flagged";
  voxel.setTopology(-1, nullptr);
  EXPECT_EQ(CaseIdOf::ask(voxel, flags), 0);
  PbQuadrangleCell quadrangle(nullptr);
  quadrangle.setTopology(0, nodes);
  EXPECT_EQ(CaseIdOf::ask(quadrangle, flags), 0);
}

}  // namespace
