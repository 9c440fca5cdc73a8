#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbTriangleCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "CellFamily.h"
#include "quillane/cell/PiCellTopology.h"
#include "quillane/marching/PiMarchingCases.h"
#include "quillane/marching/PiMarchingTable.h"

namespace {

struct TableKind {
  const char* name;
  const PiCellTopology* topology;
  void (*build)(PiMarchingTable&);
  std::unique_ptr<PiMarchingCase> (*makeCase)(unsigned char id);
};

std::ostream& operator<<(std::ostream& out, const TableKind& kind) { return out << kind.name; }

template <class Case>
std::unique_ptr<PiMarchingCase> makeCase(unsigned char id) {
  return std::make_unique<Case>(0, id);
}

const TableKind kKinds[] = {
    {"Hexahedron", &PiTopology::kHexahedron,
     [](PiMarchingTable& table) { table.build<PiMarchingCubeCase>(PiBaseCases::kCube); }, makeCase<PiMarchingCubeCase>},
    {"Tetrahedron", &PiTopology::kTetrahedron,
     [](PiMarchingTable& table) { table.build<PiMarchingTetraCase>(PiBaseCases::kTetra); },
     makeCase<PiMarchingTetraCase>},
    {"Wedge", &PiTopology::kWedge,
     [](PiMarchingTable& table) { table.build<PiMarchingWedgeCase>(PiBaseCases::kWedge); },
     makeCase<PiMarchingWedgeCase>},
    {"Pyramid", &PiTopology::kPyramid,
     [](PiMarchingTable& table) { table.build<PiMarchingPyraCase>(PiBaseCases::kPyramid); },
     makeCase<PiMarchingPyraCase>},
};

using Side = std::pair<int, int>;

std::vector<std::vector<int>> runs(const std::vector<int>& separated) {
  std::vector<std::vector<int>> result;
  if (!separated.empty()) result.emplace_back();
  for (const int entry : separated) {
    if (entry == -1)
      result.emplace_back();
    else
      result.back().push_back(entry);
  }
  return result;
}

// The directed sides of polygons that no other polygon takes in the opposite direction.
std::set<Side> boundary(const std::vector<std::vector<int>>& polygons) {
  std::set<Side> sides;
  for (const auto& polygon : polygons)
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      const Side side{polygon[i], polygon[(i + 1) % polygon.size()]};
      EXPECT_FALSE(sides.count(side)) << "two polygons take one side in the same direction";
      if (!sides.erase({side.second, side.first})) sides.insert(side);
    }
  return sides;
}

std::vector<std::vector<int>> trianglesOfStrips(const std::vector<int>& strips) {
  std::vector<std::vector<int>> triangles;
  for (const auto& strip : runs(strips))
    for (std::size_t i = 2; i < strip.size(); ++i) {
      const std::size_t odd = i % 2;
      triangles.push_back({strip[i - 2 + odd], strip[i - 1 - odd], strip[i]});
    }
  return triangles;
}

class EachTable : public testing::TestWithParam<TableKind> {
 protected:
  EachTable() : kind(GetParam()), numIds(1 << kind.topology->numNodes) { kind.build(table); }

  bool isMixed(const PiMarchingCase& mc, int edge) const {
    return ((mc.getId() >> mc.getEdgeNode0(edge)) & 1) != ((mc.getId() >> mc.getEdgeNode1(edge)) & 1);
  }
  bool lieOnOneFacet(const PiMarchingCase& mc, const std::vector<int>& edges) const {
    return std::any_of(kind.topology->facets.begin(), kind.topology->facets.end(), [&](const PiFacet& facet) {
      const auto has = [&](int node) { return std::count(facet.corners().begin(), facet.corners().end(), node) == 1; };
      return std::all_of(edges.begin(), edges.end(),
                         [&](int edge) { return has(mc.getEdgeNode0(edge)) && has(mc.getEdgeNode1(edge)); });
    });
  }

  const TableKind& kind;
  const int numIds;
  PiMarchingTable table;
};

INSTANTIATE_TEST_SUITE_P(MarchingTables, EachTable, testing::ValuesIn(kKinds),
                         [](const auto& tableKind) { return std::string(tableKind.param.name); });

TEST_P(EachTable, HasEachIdOnce) {
  EXPECT_EQ(table.count(), numIds);
  for (int id = 0; id < 256; ++id) {
    const PiMarchingCase* mc = table.at(static_cast<unsigned char>(id));
    ASSERT_EQ(mc != nullptr, id < numIds) << id;
    EXPECT_TRUE(!mc || mc->getId() == id) << id;
  }
}

TEST_P(EachTable, EdgesAreThoseOfTheCell) {
  const auto mc = kind.makeCase(0);
  for (std::size_t edge = 0; edge < kind.topology->edges.size(); ++edge) {
    const int* ends = kind.topology->edges[edge];
    const int e = static_cast<int>(edge);
    EXPECT_EQ(std::minmax(mc->getEdgeNode0(e), mc->getEdgeNode1(e)), std::minmax(ends[0], ends[1])) << e;
  }
}

TEST_P(EachTable, StripsAndFacesCutExactlyTheMixedEdges) {
  for (int id = 0; id < numIds; ++id) {
    SCOPED_TRACE(id);
    const PiMarchingCase& mc = *table.at(static_cast<unsigned char>(id));
    std::vector<int> mixed;
    for (int edge = 0; edge < static_cast<int>(kind.topology->edges.size()); ++edge)
      if (isMixed(mc, edge)) mixed.push_back(edge);
    for (const auto* set : {&mc.getEdgeStripSet(), &mc.getEdgeFaceSet()}) {
      std::vector<int> cut = *set;
      std::erase(cut, -1);
      std::sort(cut.begin(), cut.end());
      EXPECT_EQ(cut, mixed);
      for (const auto& run : runs(*set)) EXPECT_GE(run.size(), 3u);
    }
    const std::pair<const std::vector<int>*, const std::vector<int>*> twins[] = {
        {&mc.getEdgeStripSet(), &mc.getNodeStripSet()}, {&mc.getEdgeFaceSet(), &mc.getNodeFaceSet()}};
    for (const auto& [edges, nodes] : twins) {
      std::vector<int> expected;
      for (const int edge : *edges) {
        expected.push_back(edge == -1 ? -1 : mc.getEdgeNode0(edge));
        if (edge != -1) expected.push_back(mc.getEdgeNode1(edge));
      }
      EXPECT_EQ(*nodes, expected);
    }
  }
}

TEST_P(EachTable, FacesAreTheOutlinesOfTheStrips) {
  for (int id = 0; id < numIds; ++id) {
    SCOPED_TRACE(id);
    const PiMarchingCase& mc = *table.at(static_cast<unsigned char>(id));
    const std::set<Side> outline = boundary(runs(mc.getEdgeFaceSet()));
    EXPECT_EQ(boundary(trianglesOfStrips(mc.getEdgeStripSet())), outline);
    for (const auto& [from, to] : outline) EXPECT_TRUE(lieOnOneFacet(mc, {from, to})) << from << " " << to;
  }
}

TEST_P(EachTable, SurfacesHaveTheFlaggedNodesOnOneSide) {
  const std::vector<SbVec3f>& nodes = cellKind(kind.name).shape;
  for (int id = 0; id < numIds; ++id) {
    SCOPED_TRACE(id);
    const PiMarchingCase& mc = *table.at(static_cast<unsigned char>(id));
    for (const auto& polygon : runs(mc.getEdgeFaceSet())) {
      SbVec3f normal(0, 0, 0), towardsFlagged(0, 0, 0);
      const auto middle = [&](int edge) { return (nodes[mc.getEdgeNode0(edge)] + nodes[mc.getEdgeNode1(edge)]) / 2; };
      for (std::size_t i = 0; i < polygon.size(); ++i) {
        normal += middle(polygon[i]).cross(middle(polygon[(i + 1) % polygon.size()]));
        const int node0 = mc.getEdgeNode0(polygon[i]), node1 = mc.getEdgeNode1(polygon[i]);
        towardsFlagged += (nodes[node1] - nodes[node0]) * ((id >> node1) & 1 ? 1.0f : -1.0f);
      }
      EXPECT_GT(normal.dot(towardsFlagged), 0.0f);
    }
  }
}

TEST_P(EachTable, OptionalQuadranglesCloseAmbiguousFacets) {
  for (int id = 0; id < numIds; ++id) {
    SCOPED_TRACE(id);
    const PiMarchingCase& mc = *table.at(static_cast<unsigned char>(id));
    std::vector<int> points = mc.getEdgeStripSet();
    std::erase(points, -1);
    const std::set<Side> outline = boundary(runs(mc.getEdgeFaceSet()));
    std::set<std::set<int>> closed;
    std::vector<std::vector<int>> quadrangles = runs(mc.getOptQuad());
    for (const auto& quadrangle : runs(mc.getCompletion())) quadrangles.push_back(quadrangle);
    for (const auto& quadrangle : quadrangles) {
      ASSERT_EQ(quadrangle.size(), 4u);
      std::vector<int> edges;
      for (const int position : quadrangle) {
        ASSERT_TRUE(position >= 0 && position < static_cast<int>(points.size()));
        edges.push_back(points[static_cast<std::size_t>(position)]);
      }
      EXPECT_TRUE(lieOnOneFacet(mc, edges));
      EXPECT_TRUE(closed.insert({edges.begin(), edges.end()}).second) << "one facet is closed twice";
      int numJoined = 0;
      for (std::size_t i = 0; i < 4; ++i) numJoined += static_cast<int>(outline.count({edges[(i + 1) % 4], edges[i]}));
      EXPECT_EQ(numJoined, 2) << "two sides continue the surface of the cell";
    }
    std::size_t numAmbiguous = 0;
    for (const PiFacet& facet : kind.topology->facets) {
      const auto flag = [&](int corner) { return (id >> facet.nodes[corner]) & 1; };
      numAmbiguous += facet.numNodes == 4 && flag(0) == flag(2) && flag(1) == flag(3) && flag(0) != flag(1);
    }
    EXPECT_EQ(closed.size(), numAmbiguous);
  }
}

TEST_P(EachTable, RotationsMapEdgesAsTheyMapTheirNodes) {
  using Rotate = std::unique_ptr<PiMarchingCase> (PiMarchingCase::*)(int) const;
  int numAxes = 0;
  for (const Rotate rotate : {&PiMarchingCase::getRotX, &PiMarchingCase::getRotY, &PiMarchingCase::getRotZ}) {
    if (!((*kind.makeCase(0)).*rotate)(1)) continue;
    ++numAxes;
    std::set<int> images;
    for (int edge = 0; edge < static_cast<int>(kind.topology->edges.size()); ++edge) {
      // A case that only flags the ends of the edge and only names the edge shows where both go.
      const auto probe = kind.makeCase(0);
      probe->setId(static_cast<unsigned char>(1u << probe->getEdgeNode0(edge) | 1u << probe->getEdgeNode1(edge)));
      probe->setStripSet({edge});
      const auto turned = ((*probe).*rotate)(1);
      const int image = turned->getEdgeStripSet().front();
      images.insert(image);
      EXPECT_EQ(turned->getId(), 1u << probe->getEdgeNode0(image) | 1u << probe->getEdgeNode1(image))
          << "edge " << edge;
      // A number of turns is that many single turns, and each turn comes round within four.
      const auto twice = ((*turned).*rotate)(1);
      EXPECT_EQ(((*probe).*rotate)(2)->getEdgeStripSet(), twice->getEdgeStripSet());
      const auto around3 = ((*probe).*rotate)(3), around4 = ((*probe).*rotate)(4);
      EXPECT_TRUE(around3->getEdgeStripSet() == probe->getEdgeStripSet() ||
                  around4->getEdgeStripSet() == probe->getEdgeStripSet());
    }
    EXPECT_EQ(images.size(), kind.topology->edges.size());
  }
  EXPECT_EQ(numAxes, kind.topology->numNodes == 5 ? 1 : kind.topology->numNodes == 6 ? 2 : 3);
}

TEST_P(EachTable, TheReverseOfEachCaseIsRegistered) {
  for (int id = 0; id < numIds; ++id) {
    SCOPED_TRACE(id);
    const PiMarchingCase& mc = *table.at(static_cast<unsigned char>(id));
    ASSERT_EQ(mc.getRevertId(), numIds - 1 - id);
    const PiMarchingCase& other = *table.at(mc.getRevertId());
    const auto reverse = mc.getReverse();
    EXPECT_EQ(reverse->getType(), other.getType());
    EXPECT_EQ(reverse->getEdgeStripSet(), other.getEdgeStripSet());
    EXPECT_EQ(reverse->getEdgeFaceSet(), other.getEdgeFaceSet());
    EXPECT_EQ(reverse->getOptQuad(), other.getOptQuad());
    EXPECT_EQ(reverse->getReverse()->getEdgeStripSet(), mc.getEdgeStripSet());
  }
}

// ---- The table as a container, and its life in the cell classes

TEST(MarchingTables, ReportAClashAndKeepTheFirstCase) {
  PiMarchingTable table;
  PiMarchingCase* first = table.addMC(makeCase<PiMarchingTetraCase>(5));
  testing::internal::CaptureStdout();
  PiMarchingCase* second = table.addMC(makeCase<PiMarchingTetraCase>(5));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "  1 : error caseId   5 already set !!!\n");
  EXPECT_EQ(table.at(5), first);
  EXPECT_EQ(second->getId(), 5) << "the argument comes back, and still lives";
  EXPECT_EQ(table.count(), 2);
  PiMarchingCase* both = table.addMCBoth(makeCase<PiMarchingTetraCase>(1));
  EXPECT_EQ(both, table.at(1));
  EXPECT_NE(table.at(14), nullptr);
}

TEST(MarchingTables, HexahedraAndVoxelsShareACountedTable) {
  const PbHexahedronCell hexahedron(nullptr);
  const PbVoxelCell voxel(nullptr);
  PbHexahedronCell::finish();  // one too many
  EXPECT_EQ(hexahedron.getMCcase(1), nullptr);
  for (int cycle = 0; cycle < 3; ++cycle) {
    EXPECT_EQ(PbHexahedronCell::init(), 1);
    PiMarchingCase* found = hexahedron.getMCcase(1);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(voxel.getMCcase(1), found);
    EXPECT_TRUE(hexahedron.getMCcase(0)->getEdgeStripSet().empty());
    EXPECT_TRUE(hexahedron.getMCcase(255)->getEdgeStripSet().empty());
    PbHexahedronCell::init();
    EXPECT_EQ(hexahedron.getMCcase(1), found) << "the table isn't built anew";
    PbHexahedronCell::finish();
    EXPECT_EQ(hexahedron.getMCcase(1), found);
    PbHexahedronCell::finish();
    EXPECT_EQ(hexahedron.getMCcase(1), nullptr);
  }
}

TEST(MarchingTables, OtherSolidsFreeTheirsAtOnce) {
  const PbTetrahedronCell tetrahedron(nullptr);
  const PbWedgeCell wedge(nullptr);
  const PbPyramidCell pyramid(nullptr);
  const std::pair<const PbCell*, unsigned char> lastIds[] = {{&tetrahedron, 15}, {&wedge, 63}, {&pyramid, 31}};
  for (int cycle = 0; cycle < 2; ++cycle) {
    for (int i = 0; i < 2; ++i) EXPECT_EQ(PbTetrahedronCell::init() + PbWedgeCell::init() + PbPyramidCell::init(), 3);
    for (const auto& [cell, lastId] : lastIds) {
      ASSERT_NE(cell->getMCcase(lastId), nullptr);
      EXPECT_EQ(cell->getMCcase(static_cast<unsigned char>(lastId + 1)), nullptr);
    }
    PbTetrahedronCell::finish();
    PbWedgeCell::finish();
    PbPyramidCell::finish();
    for (const auto& [cell, lastId] : lastIds) EXPECT_EQ(cell->getMCcase(lastId), nullptr);
  }
  EXPECT_EQ(PbTriangleCell(nullptr).getMCcase(0), nullptr);
}

}  // namespace
