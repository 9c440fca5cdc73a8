#include <Inventor/SbPlane.h>
#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbQuadrangleCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbTriangleCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "CellFamily.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

SbVec3f localCoord(const CellSample& s, int node) { return s.coords[s.nodes[node]]; }

std::string text(const SbVec3f& v) {
  return std::to_string(v[0]) + " " + std::to_string(v[1]) + " " + std::to_string(v[2]);
}

std::vector<int> values(const PbArrayOfInt& array) { return {array.get(), array.get() + array.getNum()}; }

class EachCellKind : public testing::TestWithParam<CellKind> {
 protected:
  std::mt19937 random{20240607};
};

INSTANTIATE_TEST_SUITE_P(Cells, EachCellKind, testing::ValuesIn(allCellKinds()),
                         [](const auto& kind) { return std::string(kind.param.name); });

struct Placement {
  const char* name;
  float warp, scale;
  SbVec3f offset;
  float accuracy;
};

const Placement kPlacements[] = {
    {"regular", 0.0f, 1.0f, {0, 0, 0}, 1e-5f},
    {"warped", 0.15f, 1.0f, {0, 0, 0}, 1e-3f},
    {"tiny", 0.15f, 1e-15f, {0, 0, 0}, 1e-3f},
    {"huge", 0.15f, 1e16f, {0, 0, 0}, 1e-3f},
    // Of coordinates near 4e6 a float keeps a quarter.
    {"far away", 0.15f, 1000.0f, {4.1e6f, -5e5f, 0}, 4e-3f},
};

TEST_P(EachCellKind, LocatesThePointsThatItInterpolates) {
  for (const Placement& placement : kPlacements) {
    SCOPED_TRACE(placement.name);
    for (int round = 0; round < 200; ++round) {
      const auto s = GetParam().make(random, placement.warp, placement.scale, placement.offset);
      const SbVec3f expected = GetParam().randomPcoord(random, 0.01f);
      SbVec3f found(9, 9, 9);
      ASSERT_EQ(s->cell->locatePoint(s->at(expected), 0.0f, found), 1) << text(expected);
      // Towards the apex of a pyramid u and v mean less and less.
      const float accuracy = placement.accuracy / (s->cell->getNumNodes() == 5 ? 1 - expected[2] : 1);
      ASSERT_TRUE(found.equals(expected, accuracy * accuracy)) << text(found) << " for " << text(expected);
    }
  }
}

TEST_P(EachCellKind, TakesToleranceAsAFractionOfTheCell) {
  const CellKind& kind = GetParam();
  for (int round = 0; round < 100; ++round) {
    const auto s = kind.make(random, 0.05f);
    for (int axis = 0; axis < (kind.isSolid() ? 3 : 2); ++axis)
      for (const float outside : {-0.1f, 1.1f}) {
        SbVec3f pcoord = kind.randomPcoord(random, 0.01f);
        pcoord[axis] = outside;
        // The other coordinates keep the barycentric one from being what decides.
        if (kind.isSimplex || kind.isWedge)
          for (int other = 0; other < 3; ++other)
            if (other != axis && !(kind.isWedge && (other == 2 || axis == 2)))
              pcoord[other] *= outside > 1 ? 0.0f : 0.5f;
        // A pyramid is turned inside out beyond its apex.
        if (s->cell->getNumNodes() == 5 && outside > 1 && axis == 2) continue;
        SbVec3f found;
        EXPECT_EQ(s->cell->locatePoint(s->at(pcoord), 0.09f, found), 0) << text(pcoord);
        EXPECT_EQ(s->cell->locatePoint(s->at(pcoord), 0.11f, found), 1) << text(pcoord);
        EXPECT_TRUE(found.equals(pcoord, 1e-5f)) << text(found);
      }
  }
}

TEST_P(EachCellKind, HoldsItsNodesAndFacetsAtToleranceZero) {
  for (int round = 0; round < 200; ++round) {
    const auto s = GetParam().make(random, 0.1f);
    SbVec3f pcoord;
    for (int node = 0; node < s->cell->getNumNodes(); ++node) {
      ASSERT_EQ(s->cell->locatePoint(localCoord(*s, node), 0.0f, pcoord), 1) << "node " << node;
      float weights[8];
      s->cell->getWeight(pcoord, weights);
      ASSERT_NEAR(weights[node], 1.0f, 1e-5f);
    }
    if (!GetParam().isSolid()) continue;
    for (int facet = 0; facet < s->cell->getNumFacets(); ++facet) {
      PbArrayOfInt corners;
      s->cell->getNodesIndexOfFacet(facet, corners);
      SbVec3f middle(0, 0, 0);
      for (const int corner : values(corners)) middle += s->coords[corner] / static_cast<float>(corners.getNum());
      // The middle of a facet carries a rounding error of its own, on either side.
      EXPECT_EQ(s->cell->locatePoint(middle, 1e-6f, pcoord), 1) << "facet " << facet;
    }
  }
}

TEST_P(EachCellKind, WeightsAreOneTogetherAndPickNodes) {
  const auto s = GetParam().make(random, 0.1f);
  const int numNodes = s->cell->getNumNodes();
  float weights[8];
  for (int round = 0; round < 50; ++round) {
    s->cell->getWeight(GetParam().randomPcoord(random, -0.5f), weights);
    float sum = 0;
    for (int node = 0; node < numNodes; ++node) sum += weights[node];
    EXPECT_NEAR(sum, 1.0f, 1e-5f);
  }
  for (int node = 0; node < numNodes; ++node) {
    s->cell->getWeight(GetParam().shape[node], weights);
    EXPECT_NEAR(weights[node], 1.0f, 1e-6f) << "node " << node;
  }
}

TEST_P(EachCellKind, AllFormsOfGetValueAgree) {
  const auto s = GetParam().make(random, 0.1f);
  for (int round = 0; round < 50; ++round) {
    const SbVec3f pcoord = GetParam().randomPcoord(random, -0.5f);
    float weights[8];
    s->cell->getWeight(pcoord, weights);
    SbVec3f expected(0, 0, 0);
    for (int node = 0; node < s->cell->getNumNodes(); ++node) expected += localCoord(*s, node) * weights[node];
    EXPECT_TRUE(s->cell->getValue(pcoord, s->coords.data()).equals(expected, 1e-9f));
    EXPECT_TRUE(s->cell->getValue(weights, s->coords.data()).equals(expected, 1e-9f));
    EXPECT_NEAR(s->cell->getValue(pcoord, s->x.data()), expected[0], 1e-5f);
    EXPECT_NEAR(s->cell->getValue(weights, s->x.data()), expected[0], 1e-5f);
  }
}

TEST_P(EachCellKind, AnswersZeroForWhatIsNotFinite) {
  std::vector<SbVec3f> regular = GetParam().shape;
  SbVec3f pcoord;
  const auto sound = GetParam().make(regular);
  const int numAxes = GetParam().isFlat ? 2 : 3;
  for (const float bad : {kNaN, kInf, -kInf, FLT_MAX, -FLT_MAX})
    for (int axis = 0; axis < numAxes; ++axis) {
      SCOPED_TRACE(testing::Message() << bad << " on axis " << axis);
      SbVec3f point = sound->at(SbVec3f(0.25f, 0.25f, 0.25f));
      point[axis] = bad;
      // Surface cells at z = 0 don't look at z.
      if (GetParam().isSolid() || axis < 2) {
        EXPECT_EQ(sound->cell->locatePoint(point, 0.0f, pcoord), 0);
      }
      if (std::isfinite(bad)) continue;
      for (const std::size_t node : {std::size_t(0), regular.size() == 8 ? 6 : regular.size() / 2}) {
        std::vector<SbVec3f> corners = regular;
        corners[node][axis] = bad;
        const auto broken = GetParam().make(corners);
        EXPECT_EQ(broken->cell->locatePoint(SbVec3f(0.25f, 0.25f, 0.25f), 0.0f, pcoord), 0);
        EXPECT_EQ(broken->cell->getVolume(), 0.0f);
        EXPECT_EQ(broken->cell->getArea(), 0.0f);
        EXPECT_TRUE(std::isfinite(broken->cell->getLongestEdgeLength()));
        const SbBox3f box = broken->cell->getBoundingBox();
        for (int a = 0; a < 3; ++a) EXPECT_TRUE(std::isfinite(box.getMin()[a]) && std::isfinite(box.getMax()[a]));
      }
    }
  EXPECT_EQ(sound->cell->locatePoint(sound->at(SbVec3f(0.25f, 0.25f, 0.25f)), kNaN, pcoord), 0);
}

TEST_P(EachCellKind, DegenerateCellsHoldNothing) {
  std::vector<SbVec3f> onPoint, onLine, onPlane;
  for (const SbVec3f& node : GetParam().shape) {
    onPoint.push_back(SbVec3f(1, 2, 3));
    const float place = static_cast<float>(onLine.size());
    onLine.push_back(GetParam().isBox ? SbVec3f(place, 2, 3) : SbVec3f(1, 2, 3) * place);
    onPlane.push_back(GetParam().isSolid() ? SbVec3f(node[0], node[1], 0) : SbVec3f(node[0], 0, 0));
  }
  SbVec3f pcoord;
  for (const auto& corners : {onPoint, onLine, onPlane}) {
    const auto s = GetParam().make(corners);
    EXPECT_EQ(s->cell->locatePoint(corners[0], 0.0f, pcoord), 0);
    EXPECT_EQ(s->cell->locatePoint(s->cell->getCenter(), 0.5f, pcoord), 0);
    EXPECT_EQ(s->cell->getVolume(), 0.0f);
  }
}

TEST_P(EachCellKind, EdgesAndFacetsFitTogether) {
  const auto s = GetParam().make(random, 0.1f);
  const PbCell& cell = *s->cell;
  EXPECT_EQ(cell.getNumNodes(), static_cast<int>(s->nodes.size()));
  std::map<std::pair<int, int>, int> uses;  // directed sides of facets
  for (int facet = 0; facet < cell.getNumFacets(); ++facet) {
    PbArrayOfInt local, mesh;
    cell.getNodesLocalIndexOfFacet(facet, local);
    cell.getNodesIndexOfFacet(facet, mesh);
    ASSERT_EQ(local.getNum(), mesh.getNum());
    for (int corner = 0; corner < local.getNum(); ++corner) {
      EXPECT_EQ(mesh.get(corner), s->nodes[local.get(corner)]);
      ++uses[{local.get(corner), local.get((corner + 1) % local.getNum())}];
    }
  }
  std::set<std::pair<int, int>> edges;
  for (int edge = 0; edge < cell.getNumEdges(); ++edge) {
    const int* ends = cell.getNodesLocalIndexOfEdge(edge);
    PbArrayOfInt local, mesh;
    cell.getNodesLocalIndexOfEdge(edge, local);
    cell.getNodesIndexOfEdge(edge, mesh);
    EXPECT_EQ(values(local), std::vector<int>(ends, ends + 2));
    EXPECT_EQ(values(mesh), (std::vector<int>{s->nodes[ends[0]], s->nodes[ends[1]]}));
    edges.insert(std::minmax(ends[0], ends[1]));
    const int forward = uses[{ends[0], ends[1]}], backward = uses[{ends[1], ends[0]}];
    if (GetParam().isSolid())
      EXPECT_TRUE(forward == 1 && backward == 1) << "edge " << edge;
    else
      EXPECT_TRUE(forward == 1 && backward == 0) << "edge " << edge;
  }
  EXPECT_EQ(static_cast<int>(edges.size()), cell.getNumEdges());
  EXPECT_EQ(uses.size(), 2 * edges.size());  // no facet has a side that is no edge
}

TEST_P(EachCellKind, FacetsOfASolidFaceOutwardsWhenItsOrderingIsOne) {
  for (const float mirror : {1.0f, -1.0f}) {
    std::vector<SbVec3f> corners = GetParam().shape;
    for (SbVec3f& corner : corners) corner[2] *= mirror;
    const auto s = GetParam().make(corners);
    if (!GetParam().isSolid()) {
      EXPECT_EQ(s->cell->getOrdering(), 1);
      continue;
    }
    EXPECT_EQ(s->cell->getOrdering(), mirror < 0 ? 1 : 0);
    for (int facet = 0; facet < s->cell->getNumFacets(); ++facet) {
      PbArrayOfInt nodes;
      s->cell->getNodesLocalIndexOfFacet(facet, nodes);
      const SbVec3f a = corners[nodes[0]], b = corners[nodes[1]], c = corners[nodes[2]];
      const float outwards = (b - a).cross(c - a).dot(a - s->cell->getCenter());
      EXPECT_GT(outwards * -mirror, 0.0f) << "facet " << facet;
    }
  }
}

TEST_P(EachCellKind, VolumeAndAreaAreThoseOfAFineDecomposition) {
  constexpr int kParts = 12;
  for (int round = 0; round < 20; ++round) {
    // Only the two triangles of a quadrangle count for its area: the more it is warped, the less that is the true one.
    const auto s = GetParam().make(random, round == 0 ? 0.0f : GetParam().isSolid() ? 0.15f : 0.03f, 3.0f);
    // Places of the parametric domain; that of simplices is a collapsed box.
    const auto at = [&](int i, int j, int k) {
      SbVec3f p(float(i) / kParts, float(j) / kParts, GetParam().isSolid() ? float(k) / kParts : 0.0f);
      if (GetParam().isTetrahedron()) {
        p[1] *= 1 - p[2];
        p[0] *= 1 - p[2] - p[1];
      } else if (GetParam().isSimplex || GetParam().isWedge) {
        p[0] *= 1 - p[1];
      }
      return s->at(p);
    };
    double volume = 0, area = 0;
    for (int i = 0; i < kParts; ++i)
      for (int j = 0; j < kParts; ++j) {
        for (int k = 0; k < (GetParam().isSolid() ? kParts : 0); ++k) {
          std::vector<SbVec3f> corners;
          for (const SbVec3f& c : cellKind("Hexahedron").shape) corners.push_back(at(i + c[0], j + c[1], k + c[2]));
          // Six tetrahedra round the diagonal, as plain triple products.
          const int ring[] = {1, 2, 3, 7, 4, 5, 1};
          for (int t = 0; t < 6; ++t)
            volume +=
                (corners[ring[t]] - corners[0]).cross(corners[ring[t + 1]] - corners[0]).dot(corners[6] - corners[0]) /
                6;
        }
        area += (at(i + 1, j, 0) - at(i, j, 0)).cross(at(i, j + 1, 0) - at(i, j, 0)).length() / 2;
        area += (at(i + 1, j, 0) - at(i + 1, j + 1, 0)).cross(at(i, j + 1, 0) - at(i + 1, j + 1, 0)).length() / 2;
      }
    if (GetParam().isSolid()) {
      EXPECT_NEAR(s->cell->getVolume(), std::fabs(volume), 2e-3 * std::fabs(volume));
      EXPECT_EQ(s->cell->getArea(), 0.0f);
    } else {
      EXPECT_EQ(s->cell->getVolume(), 0.0f);
      EXPECT_NEAR(s->cell->getArea(), area, 5e-3 * area);
    }
  }
}

TEST_P(EachCellKind, BoxCentreAndLongestEdgeComeFromTheNodes) {
  const auto s = GetParam().make(random, 0.1f, 2.0f, SbVec3f(5, -3, 0));
  SbBox3f box;
  SbVec3f sum(0, 0, 0);
  float longest = 0;
  for (int node = 0; node < s->cell->getNumNodes(); ++node) {
    EXPECT_EQ(s->cell->getNodeCoord(node), localCoord(*s, node));
    box.extendBy(localCoord(*s, node));
    sum += localCoord(*s, node);
  }
  for (int edge = 0; edge < s->cell->getNumEdges(); ++edge) {
    const int* ends = s->cell->getNodesLocalIndexOfEdge(edge);
    longest = std::max(longest, (localCoord(*s, ends[0]) - localCoord(*s, ends[1])).length());
  }
  float bounds[6];
  s->cell->getBounds(bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]);
  EXPECT_EQ(SbBox3f(bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]), box);
  EXPECT_EQ(s->cell->getBoundingBox(), box);
  EXPECT_TRUE(s->cell->getCenter().equals(sum / float(s->nodes.size()), 1e-9f));
  EXPECT_FLOAT_EQ(s->cell->getLongestEdgeLength(), longest);
}

TEST_P(EachCellKind, FindsTheEdgesThatAPlaneCrosses) {
  for (int round = 0; round < 50; ++round) {
    const auto s = GetParam().make(random, 0.1f);
    std::normal_distribution<float> normal;
    const SbPlane plane(SbVec3f(normal(random), normal(random), normal(random)), s->cell->getCenter());
    PbArrayOfInt onPlane, edges;
    PbArrayOfFloat params;
    edges.add(99);  // results are appended, and each position stands where its edge does
    s->cell->getEdgesCrossingPlane(plane, onPlane, edges, &params);
    ASSERT_EQ(params.getNum(), edges.getNum());
    std::set<int> crossed;
    for (int i = 1; i < edges.getNum(); ++i) {
      const int* ends = s->cell->getNodesLocalIndexOfEdge(edges.get(i));
      const SbVec3f from = localCoord(*s, ends[0]), to = localCoord(*s, ends[1]);
      EXPECT_NEAR(plane.getDistance(from + (to - from) * params.get(i)), 0.0f, 1e-5f);
      crossed.insert(edges.get(i));
    }
    for (int edge = 0; edge < s->cell->getNumEdges(); ++edge) {
      const int* ends = s->cell->getNodesLocalIndexOfEdge(edge);
      const float d0 = plane.getDistance(localCoord(*s, ends[0])), d1 = plane.getDistance(localCoord(*s, ends[1]));
      EXPECT_EQ(crossed.count(edge) == 1, d0 * d1 < 0) << "edge " << edge;
    }
  }
  // Through node 0 and its neighbour: nodes, but no crossing of the edges that end there; the positions aren't asked
  // for.
  const auto s = GetParam().make(GetParam().shape);
  PbArrayOfInt onPlane, edges;
  s->cell->getEdgesCrossingPlane(SbPlane(SbVec3f(1, 0, 0), 1.0f), onPlane, edges, nullptr);
  EXPECT_GE(onPlane.getNum(), 1);
  EXPECT_EQ(edges.getNum(), 0);
}

TEST_P(EachCellKind, QuestionsOutOfRangeGetHarmlessAnswers) {
  const auto s = GetParam().make(GetParam().shape);
  const auto fresh = GetParam().make(GetParam().shape);
  fresh->cell->setTopology(-1, nullptr);
  for (PbCell* cell : {s->cell.get(), fresh->cell.get()})
    for (const int bad : {-1, 12, 1 << 30}) {
      PbArrayOfInt nodes;
      nodes.add(5);
      cell->getNodesIndexOfEdge(bad, nodes);
      EXPECT_EQ(nodes.getNum(), 0);
      nodes.add(5);
      cell->getNodesIndexOfFacet(bad, nodes);
      EXPECT_EQ(nodes.getNum(), 0);
      nodes.add(5);
      cell->getNodesLocalIndexOfFacet(bad, nodes);
      EXPECT_EQ(nodes.getNum(), 0);
      nodes.add(5);
      cell->getNodesLocalIndexOfEdge(bad, nodes);
      EXPECT_EQ(nodes.getNum(), 0);
      EXPECT_EQ(cell->getNodesLocalIndexOfEdge(bad), nullptr);
      EXPECT_EQ(cell->getNodeIndex(bad), -1);
      EXPECT_EQ(cell->getNodeCoord(bad), SbVec3f(0, 0, 0));
    }
  PbArrayOfInt nodes;
  fresh->cell->getNodesIndex(nodes);
  EXPECT_EQ(nodes.getNum(), 0);
  EXPECT_EQ(fresh->cell->getValue(SbVec3f(0.5f, 0.5f, 0.5f), s->x.data()), 0.0f);
  s->cell->getNodesIndex(nodes);
  EXPECT_EQ(values(nodes), s->nodes);
}

// ---- Single kinds

template <class Cell>
void checkDerivs(const char* kindName, int numParams) {
  std::mt19937 random(5);
  const CellKind& kind = cellKind(kindName);
  const auto s = kind.make(random, 0.1f);
  const auto& cell = static_cast<const Cell&>(*s->cell);
  const int numNodes = cell.getNumNodes();
  for (int round = 0; round < 20; ++round) {
    const SbVec3f p = kind.randomPcoord(random, 0.1f);
    float derivs[24], low[8], high[8];
    cell.getDerivs(p, derivs);
    for (int param = 0; param < numParams; ++param) {
      constexpr float kStep = 0.0625f;  // the weights are linear in each parameter
      SbVec3f before = p, after = p;
      before[param] -= kStep;
      after[param] += kStep;
      cell.getWeight(before, low);
      cell.getWeight(after, high);
      for (int node = 0; node < numNodes; ++node)
        EXPECT_NEAR(derivs[param * numNodes + node], (high[node] - low[node]) / (2 * kStep), 1e-5f);
    }
  }
}

TEST(Cells, DerivativesAgreeWithDifferencesOfTheWeights) {
  checkDerivs<PbHexahedronCell>("Hexahedron", 3);
  checkDerivs<PbWedgeCell>("Wedge", 3);
  checkDerivs<PbPyramidCell>("Pyramid", 3);
  checkDerivs<PbQuadrangleCell>("Quadrangle", 2);
}

TEST(Cells, PyramidsHoldPointsUpToTheApex) {
  std::mt19937 random(11);
  const CellKind& kind = cellKind("Pyramid");
  for (int round = 0; round < 2200; ++round) {
    const auto s = kind.make(random, 0.1f);
    SbVec3f expected = kind.randomPcoord(random, 0.01f), found;
    expected[2] = round < 2000 ? 1 - std::pow(10.0f, -5.0f * static_cast<float>(round) / 2000) : 1.0f;
    ASSERT_EQ(s->cell->locatePoint(s->at(expected), 0.0f, found), 1) << round << " " << 1 - expected[2];
    EXPECT_TRUE(s->at(found).equals(s->at(expected), 1e-10f));
  }
}

TEST(Cells, SurfaceCellsInSpaceReachAThirdOfTheirSize) {
  SbVec3f pcoord;
  // Tilted by 45 degrees, so that the distance isn't a coordinate. The diagonals of the quadrangle are 2 * sqrt(3)
  // long.
  const SbVec3f away = SbVec3f(0, -1, 1) / std::sqrt(2.0f);
  const auto quadrangle = cellKind("Quadrangle").make({{0, 0, 0}, {2, 0, 0}, {2, 2, 2}, {0, 2, 2}});
  const float reach = 2 * std::sqrt(3.0f) / 3;
  const SbVec3f middle = quadrangle->at(SbVec3f(0.5f, 0.5f, 0));
  for (const float side : {-1.0f, 1.0f}) {
    EXPECT_EQ(quadrangle->cell->locatePoint(middle + away * side * reach * 0.99f, 0.0f, pcoord), 1);
    EXPECT_TRUE(pcoord.equals(SbVec3f(0.5f, 0.5f, 0), 1e-6f)) << "the point goes along the normal";
    EXPECT_EQ(quadrangle->cell->locatePoint(middle + away * side * reach * 1.01f, 0.0f, pcoord), 0);
  }
  // An equilateral triangle of edge length 3 reaches 1.
  const float h = 1.5f * std::sqrt(3.0f);
  const auto triangle = cellKind("Triangle").make({{0, 0, 0}, {0, 3, 0}, {0, 1.5f, h}});
  for (const float x : {-0.99f, 0.99f}) {
    EXPECT_EQ(triangle->cell->locatePoint(SbVec3f(x, 1.5f, 1), 0.0f, pcoord), 1);
    EXPECT_EQ(triangle->cell->locatePoint(SbVec3f(x * 1.02f, 1.5f, 1), 0.0f, pcoord), 0);
  }
  // Flat ones look straight down.
  for (const char* flat : {"Triangle", "FlatTriangle", "Quadrangle", "FlatQuadrangle", "Rectangle", "Pixel"}) {
    const auto s = cellKind(flat).make(cellKind(flat).shape);
    EXPECT_EQ(s->cell->locatePoint(SbVec3f(0.25f, 0.25f, 1e6f), 0.0f, pcoord), 1) << flat;
  }
}

// A mesh refills its one cell: nothing may stay of the cell before.
template <class Cell>
void checkRefill(const char* kindName) {
  SCOPED_TRACE(kindName);
  const CellKind& kind = cellKind(kindName);
  const auto sound = kind.make(kind.shape);
  const auto degenerate = kind.make(std::vector<SbVec3f>(kind.shape.size(), SbVec3f(1, 1, 1)));
  Cell cell(nullptr);
  SbVec3f pcoord;
  for (int round = 0; round < 3; ++round) {
    const CellSample& s = round == 1 ? *degenerate : *sound;
    cell.set(round, s.nodes.data(), s.x.data(), s.y.data(), s.z.data());
    EXPECT_EQ(cell.locatePoint(SbVec3f(0.2f, 0.2f, 0), 0.0f, pcoord), round == 1 ? 0 : 1);
  }
}

TEST(Cells, SetForgetsWhatWasKnownOfTheLastCell) {
  checkRefill<PbTetrahedronCell>("Tetrahedron");
  checkRefill<PbTriangleCell>("Triangle");
  checkRefill<PbQuadrangleCell>("Quadrangle");
}

TEST(Cells, VoxelsOfFallingGridsHaveVolumeAndHoldTheirPoints) {
  PbVoxelCell voxel(nullptr);
  const int nodes[] = {0, 1, 2, 3, 4, 5, 6, 7};
  voxel.set(3, nodes, 4, 0, 0, 2, 1, 1);
  SbVec3f pcoord;
  EXPECT_EQ(voxel.getVolume(), 2.0f);
  EXPECT_EQ(voxel.locatePoint(SbVec3f(3.5f, 1, 0), 0.0f, pcoord), 1);
  EXPECT_EQ(pcoord, SbVec3f(0.25f, 1, 0));
  EXPECT_EQ(voxel.locatePoint(SbVec3f(4.5f, 1, 0), 0.0f, pcoord), 0);
}

TEST(Cells, TopologyAloneKeepsTheCoordinates) {
  const auto s = cellKind("Wedge").make(cellKind("Wedge").shape);
  const int other[] = {10, 11, 12, 13, 14, 15};
  s->cell->setTopology(42, other);
  EXPECT_EQ(s->cell->getIndex(), 42);
  EXPECT_EQ(s->cell->getNodeIndexPtr(), other);
  EXPECT_EQ(s->cell->getNodeIndex(5), 15);
  EXPECT_EQ(s->cell->getNodeCoord(1), SbVec3f(1, 0, 0));
}

TEST(Cells, PrintShowsCountsAndNodes) {
  const auto s = cellKind("Triangle").make(cellKind("Triangle").shape);
  FILE* file = std::tmpfile();
  s->cell->print(file);
  std::rewind(file);
  char text[1024] = {};
  const std::size_t length = std::fread(text, 1, sizeof text - 1, file);
  std::fclose(file);
  EXPECT_EQ(std::string(text, length),
            "=====================print cell informations ==================== \n"
            "PbCell:: m_numFaces = 1\nPbCell:: m_numEdges = 3\nPbCell:: m_numNodes = 3\nPbCell:: m_index = 7\n"
            "PbCell:: node 0 : 0.000000 0.000000 0.000000\nPbCell:: node 1 : 1.000000 0.000000 0.000000\n"
            "PbCell:: node 2 : 0.000000 1.000000 0.000000\n");
}

}  // namespace
