#include <Ormelle/PbCell.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoOrmelle.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "quillane/mesh/PiTriangulation.h"

// Triangles between nodes that come alone.

namespace {

struct Points {
  std::vector<float> x, y;
  int num() const { return int(x.size()); }
  void add(float px, float py) { x.push_back(px), y.push_back(py); }
};

double turn(const Points& p, int a, int b, int c) {
  const auto at = [](const std::vector<float>& v, int n) { return double(v[std::size_t(n)]); };
  return (at(p.x, b) - at(p.x, a)) * (at(p.y, c) - at(p.y, a)) - (at(p.y, b) - at(p.y, a)) * (at(p.x, c) - at(p.x, a));
}

// Area of the convex hull of the finite points, by Andrew's monotone chain.
double hullArea(const Points& points) {
  std::vector<int> order;
  for (int n = 0; n < points.num(); ++n)
    if (std::isfinite(points.x[std::size_t(n)]) && std::isfinite(points.y[std::size_t(n)])) order.push_back(n);
  const auto place = [&](int n) { return std::pair(points.x[std::size_t(n)], points.y[std::size_t(n)]); };
  std::sort(order.begin(), order.end(), [&](int a, int b) { return place(a) < place(b); });
  double area = 0;
  for (int half = 0; half < 2; ++half) {
    std::vector<int> hull;
    for (const int n : order) {
      while (hull.size() > 1 && turn(points, hull[hull.size() - 2], hull.back(), n) <= 0) hull.pop_back();
      hull.push_back(n);
    }
    for (std::size_t n = 0; n + 1 < hull.size(); ++n) area += turn(points, hull[0], hull[n], hull[n + 1]) / 2;
    std::reverse(order.begin(), order.end());
  }
  return area;
}

class Triangulation : public testing::Test {
 protected:
  void SetUp() override {
    if (!PbTriangleMesh2D::canTriangulate()) GTEST_SKIP() << "built without Triangle";
  }
  // Counter-clockwise triangles that fill the hull, no edge in more than two of them.
  static std::vector<int> expectFilledHull(const Points& points) {
    PbTriangleMesh2D mesh(1);
    mesh.setGeometry(points.num(), points.x.data(), points.y.data());
    EXPECT_EQ(mesh.getNumNodes(), points.num());
    double area = 0;
    std::map<std::pair<int, int>, int> edges;
    int numNodes, numCells;
    const float *x, *y;
    const int* nodes;
    mesh.getGeometry(numNodes, x, y, numCells, nodes);
    std::vector<int> triangles(nodes, nodes + 3 * numCells);
    for (int c = 0; c < numCells; ++c) {
      EXPECT_NE(mesh.getCell(c), nullptr);
      const int* n = nodes + 3 * c;
      const double twice = turn(points, n[0], n[1], n[2]);
      EXPECT_GT(twice, 0) << "triangle " << c;
      area += twice / 2;
      for (int e = 0; e < 3; ++e) ++edges[std::minmax(n[e], n[(e + 1) % 3])];
    }
    const double expected = hullArea(points);
    EXPECT_NEAR(area, expected, 1e-9 * expected);
    for (const auto& [edge, num] : edges) EXPECT_LE(num, 2);
    return triangles;
  }
};

}  // namespace

TEST_F(Triangulation, RandomNodesGetDelaunayTriangles) {
  std::mt19937 random(2);
  std::uniform_real_distribution<float> place(-3, 5);
  for (const int num : {3, 4, 5, 10, 150}) {
    Points points;
    for (int n = 0; n < num; ++n) points.add(place(random), place(random));
    const std::vector<int> triangles = expectFilledHull(points);
    // No node inside the circle through the corners of a triangle.
    for (std::size_t t = 0; t < triangles.size(); t += 3)
      for (int n = 0; n < num; ++n) {
        double m[3][3];
        for (int corner = 0; corner < 3; ++corner) {
          const std::size_t c = std::size_t(triangles[t + std::size_t(corner)]), d = std::size_t(n);
          m[corner][0] = double(points.x[c]) - double(points.x[d]);
          m[corner][1] = double(points.y[c]) - double(points.y[d]);
          m[corner][2] = m[corner][0] * m[corner][0] + m[corner][1] * m[corner][1];
        }
        const double inside = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                              m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                              m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
        EXPECT_LE(inside, 1e-10);
      }
  }
}

TEST_F(Triangulation, HardNodesStillFillTheirHull) {
  std::mt19937 random(4);
  Points grid, circle, twins, clusters, mixed, huge, tiny;
  for (int i = 0; i < 30; ++i)
    for (int j = 0; j < 30; ++j) grid.add(float(i) * 0.1F, float(j) * 0.3F);
  for (int n = 0; n < 500; ++n) circle.add(std::cos(0.0125663706F * float(n)), std::sin(0.0125663706F * float(n)));
  std::uniform_int_distribution<int> small(0, 6);
  for (int n = 0; n < 3000; ++n) twins.add(float(small(random)), float(small(random)));
  std::normal_distribution<float> spread(0, 1e-6F);
  for (int n = 0; n < 600; ++n) clusters.add(float(n % 3) + spread(random), float(n % 5) + spread(random));
  const float nan = std::nanf(""), inf = HUGE_VALF;
  std::uniform_real_distribution<float> place(-1, 1);
  for (int n = 0; n < 500; ++n) {
    mixed.add(n % 7 == 3 ? nan : place(random), n % 11 == 4 ? -inf : place(random));
    huge.add(3e38F * place(random), 3e38F * place(random));
    tiny.add(1e-44F * place(random), 1e-44F * place(random));
  }
  for (const Points* points : {&grid, &circle, &twins, &clusters, &mixed, &huge, &tiny}) {
    const std::vector<int> triangles = expectFilledHull(*points);
    EXPECT_FALSE(triangles.empty());
    for (const int node : triangles) {
      EXPECT_TRUE(std::isfinite(points->x[std::size_t(node)]) && std::isfinite(points->y[std::size_t(node)]));
    }
  }
  EXPECT_EQ(expectFilledHull(grid).size(), 3U * 2 * 29 * 29);
  EXPECT_EQ(expectFilledHull(twins).size(), 3U * 2 * 36) << "twins share the triangles of one";
}

TEST_F(Triangulation, NodesThatSpanNothingHaveNoTriangles) {
  const float nan = std::nanf("");
  Points line, slanted, two, negativeZero;
  for (int n = 0; n < 1000; ++n) {
    line.add(float(n % 10), 5);
    slanted.add(float(n), 3 * float(n));
    two.add(float(n % 2), n % 3 ? 1 : nan);
    negativeZero.add(n % 2 ? 0.0F : -0.0F, n % 3 ? 0.0F : 1.0F);
  }
  Points one, three, pair;
  one.add(1, 1);
  three.add(0, 0), three.add(1, nan), three.add(0, 1), three.add(HUGE_VALF, 0);
  pair.add(0, 0), pair.add(1, 0);
  for (const Points* points : {&line, &slanted, &two, &negativeZero, &one, &three, &pair}) {
    PbTriangleMesh2D mesh(0);
    mesh.setGeometry(points->num(), points->x.data(), points->y.data());
    EXPECT_EQ(mesh.getNumNodes(), points->num());
    EXPECT_EQ(mesh.getNumCells(), 0);
    EXPECT_TRUE(mesh.isEmpty());
  }
  PbTriangleMesh2D mesh(0);
  for (const int num : {0, -1, INT_MIN, INT_MAX}) {
    mesh.setGeometry(num, nullptr, line.y.data());
    EXPECT_EQ(mesh.getNumNodes(), 0);
    EXPECT_EQ(mesh.getNumCells(), 0);
  }
}

TEST_F(Triangulation, AMeshOwnsItsTrianglesAndTakesHeights) {
  const float x[] = {0, 2, 2, 0, 1}, y[] = {0, 0, 2, 2, 1}, z[] = {0, 0, 0, 0, 7};
  PbTriangleMesh2D mesh(0);
  mesh.setGeometry(5, x, y, z);
  EXPECT_EQ(mesh.getNumCells(), 4);
  EXPECT_EQ(mesh.getZcoord(), z);
  const PbTriangleMesh2D copy = mesh;
  mesh.setGeometry(3, x, y);
  EXPECT_EQ(mesh.getNumCells(), 1);
  EXPECT_EQ(mesh.getZcoord(), nullptr);
  EXPECT_EQ(copy.getNumCells(), 4);
  EXPECT_EQ(copy.getCell(3)->getNumNodes(), 3);
}

TEST(TriangulationError, IsPostedWhereNodesCantBeTriangulated) {
  PoOrmelle::init();
  static std::string s_text;
  PoDebugError::setHandlerCallback([](const SoError* error, void*) { s_text = error->getDebugString().getString(); },
                                   nullptr);
  const float x[] = {0, 2, 2, 0, 1}, y[] = {0, 0, 2, 2, 1};
  if (PbTriangleMesh2D::canTriangulate()) {
    EXPECT_TRUE(PiTriangulation::triangulate(PiTriangulation::kMaxNodes + 1, x, y).empty());
  } else {
    PbTriangleMesh2D mesh(1);
    mesh.setGeometry(5, x, y);
    EXPECT_EQ(mesh.getNumNodes(), 5);
    EXPECT_EQ(mesh.getNumCells(), 0);
  }
  EXPECT_EQ(s_text.find("Ormelle error in PbTriangleMesh2D::setGeometry(): "), 0U) << s_text;
  PoDebugError::setHandlerCallback(nullptr, nullptr);
  PoOrmelle::finish();
}
