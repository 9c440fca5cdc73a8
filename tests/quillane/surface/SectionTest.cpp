#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "graph/frame/PiParallel.h"
#include "quillane/surface/SectionSamples.h"

namespace {

struct NamedPlane {
  const char* name;
  PiSectionPlane plane;
};

// Of a box of 4 by 4 by 4 unit cells from the origin: nodes have whole coordinates, and sums of them are exact.
const NamedPlane kPlanes[] = {{"between nodes", {1, 0, 0, 1.25F}},
                              {"oblique", {0.4F, 0.5F, 0.3F, 2.1F}},
                              {"steep", {0.001F, 1, 0.02F, 1.53F}},
                              {"layer in x", {1, 0, 0, 2}},
                              {"layer in y", {0, 1, 0, 1}},
                              {"layer in z", {0, 0, 1, 3}},
                              {"layer seen from behind", {0, 0, -1, -3}},
                              {"first face", {1, 0, 0, 0}},
                              {"last face", {1, 0, 0, 4}},
                              {"last face from behind", {0, -1, 0, -4}},
                              {"through edges along z", {1, 1, 0, 4}},
                              {"through edges along x", {0, 1, -1, 1}},
                              {"through corners", {1, 1, 1, 6}},
                              {"through corners and edges", {1, -1, 1, 2}},
                              {"through some nodes", {2, 1, 1, 7}},
                              {"touches a corner", {1, 1, 1, 12}},
                              {"touches an edge", {1, 1, 0, 8}},
                              {"outside", {1, 0, 0, 5}}};

BoxSpec unitCells() { return {5, 5, 5, {0, 0, 0}, {4, 4, 4}}; }

class SectionFamilyTest : public testing::TestWithParam<MeshKind3D> {};

TEST_P(SectionFamilyTest, DrawsEachPartOfThePlaneOnce) {
  const MeshSample<PbMesh3D> mesh = GetParam().make(unitCells(), 1);
  PiMeshSection section;
  for (const NamedPlane& named : kPlanes) {
    SCOPED_TRACE(named.name);
    cutMesh(section, *mesh.mesh, {named.plane});
    const SectionFacts facts(section.section, named.plane);
    const BoxSection expected(unitCells(), named.plane);
    EXPECT_NEAR(facts.area, expected.area(), 1e-5 * std::max(1.0, expected.area()));
    EXPECT_NEAR(facts.openLength, expected.area() > 0 ? expected.perimeter() : 0, 1e-4);
    EXPECT_EQ(facts.numShared, 0);
    EXPECT_EQ(facts.numTwins, 0);
    EXPECT_EQ(facts.numUnused, 0);
    EXPECT_EQ(facts.numBackwards, 0);
    EXPECT_LT(facts.furthest, 1e-5);
  }
}

// What is linear in space is linear on the section.
TEST_P(SectionFamilyTest, InterpolatesValues) {
  const MeshSample<PbMesh3D> mesh = GetParam().make(unitCells(), 1);
  std::vector<float> values;
  const auto field = [](const SbVec3f& p) { return 3 * p[0] - 2 * p[1] + p[2] + 1; };
  for (int node = 0; node < mesh->getNumNodes(); ++node) values.push_back(field(mesh->getNodeCoord(node)));
  PiMeshSection section;
  for (const NamedPlane& named : kPlanes) {
    cutMesh(section, *mesh.mesh, {named.plane, values.data()});
    ASSERT_EQ(section.section.values.size(), section.section.points.size());
    for (std::size_t i = 0; i < section.section.points.size(); ++i)
      EXPECT_NEAR(section.section.values[i], field(section.section.points[i]), 1e-4) << named.name;
  }
}

// A hole in the mesh is a hole in the section, whichever way it came about; beside a plane through a layer of facets
// the cells on the other side close it.
TEST_P(SectionFamilyTest, LeavesOutWhatIsUndefined) {
  const float bad[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()};
  const MeshSample<PbMesh3D> mesh = GetParam().make(unitCells(), 1);
  std::vector<float> values(static_cast<std::size_t>(mesh->getNumNodes()), 1);
  values[0] = bad[0];
  PiMeshSection section;
  const PiSectionPlane plane(0, 0, 1, 0.5F);
  cutMesh(section, *mesh.mesh, {plane, values.data()});
  EXPECT_LT(SectionFacts(section.section, plane).area, 15.9) << "values";
  cutMesh(section, *mesh.mesh, {plane});
  EXPECT_NEAR(SectionFacts(section.section, plane).area, 16, 1e-4) << "values that aren't used";
  for (const float d : {bad[0], bad[1]}) {
    cutMesh(section, *mesh.mesh, {{0, 0, 1, d}});
    EXPECT_EQ(section.section.cells.size(), 0U);
    cutMesh(section, *mesh.mesh, {{d, 0, 1, 2}});
    EXPECT_EQ(section.section.cells.size(), 0U);
  }
}

INSTANTIATE_TEST_SUITE_P(All, SectionFamilyTest, testing::ValuesIn(sectionKinds()), MeshKindName());

// Bent cells, cut by planes that run exactly through some of their nodes: cells agree about the points and chords of
// the facets between them, flat or not.
TEST(SectionTest, IsWatertightInBentCells) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> shift(-0.3F, 0.3F);
  for (const MeshKind3D& kind : sectionKinds()) {
    MeshSample<PbMesh3D> sample = kind.make(unitCells(), 1);
    auto* mesh = dynamic_cast<PbIndexedMesh3D*>(sample.mesh.get());
    if (!mesh) continue;
    SCOPED_TRACE(kind.name);
    const int numNodes = mesh->getNumNodes();
    std::vector<float> x, y, z;
    for (int node = 0; node < numNodes; ++node) {
      SbVec3f p = mesh->getNodeCoord(node);
      const bool isInside = p[0] > 0 && p[0] < 4 && p[1] > 0 && p[1] < 4 && p[2] > 0 && p[2] < 4;
      // Every other node keeps its place in z, and so lies on the plane of its layer.
      if (isInside) p += SbVec3f(shift(random), shift(random), node % 2 ? shift(random) : 0);
      x.push_back(p[0]), y.push_back(p[1]), z.push_back(p[2]);
    }
    mesh->setVertices(x.data(), y.data(), z.data());
    PiMeshSection section;
    for (const PiSectionPlane& plane : {PiSectionPlane(0, 0, 1, 1.5F), PiSectionPlane(0, 0, 1, 2),
                                        PiSectionPlane(0, 0, -1, -1), PiSectionPlane(0.5F, 0.5F, 0.70710678F, 3)}) {
      cutMesh(section, *mesh, {plane});
      const SectionFacts facts(section.section, plane);
      const BoxSection expected(unitCells(), plane);
      EXPECT_NEAR(facts.openLength, expected.perimeter(), 1e-4) << plane.d;
      EXPECT_EQ(facts.numUnused, 0);
      EXPECT_EQ(facts.numBackwards, 0);
      // Facets of four bent nodes are cut along straight chords, beside which the section may fold.
      EXPECT_NEAR(facts.area, expected.area(), kind.name == "TetrahedronMesh3D" ? 1e-4 : 0.5);
    }
  }
}

// Also where the plane runs through nodes and along facets.
TEST(SectionTest, IsTheSameToTheByteForAnyNumberOfThreads) {
  const auto bytes = [](const auto& buffer) {
    return std::string(reinterpret_cast<const char*>(buffer.data()), buffer.size() * sizeof(*buffer.data()));
  };
  for (const MeshKind3D& kind : sectionKinds()) {
    const MeshSample<PbMesh3D> mesh = kind.make({25, 21, 17, {0, 0, 0}, {24, 20, 16}}, 1);
    std::vector<float> values;
    for (int node = 0; node < mesh->getNumNodes(); ++node) values.push_back(float(node % 101));
    for (const PiSectionPlane& plane :
         {PiSectionPlane(0.48F, 0.6F, 0.64F, 16.3F), PiSectionPlane(1, 1, 1, 30), PiSectionPlane(0, 0, 1, 8)}) {
      std::string first;
      for (const int numThreads : {1, 2, 5}) {
        PiParallel::setNumThreads(numThreads);
        PiMeshSection section;
        for (int again = 0; again < 2; ++again) cutMesh(section, *mesh.mesh, {plane, values.data()});
        const PiSection& made = section.section;
        const std::string all = bytes(made.points) + bytes(made.values) + bytes(made.coordIndices) + bytes(made.cells);
        if (numThreads == 1) first = all;
        EXPECT_TRUE(all == first) << kind.name << ' ' << plane.d << ' ' << numThreads;
      }
      EXPECT_GT(first.size(), 10000U);
    }
  }
  PiParallel::setNumThreads(0);
}

TEST(SectionTest, CutsTheDiagonalOfAHexahedron) {
  const MeshSample<PbMesh3D> mesh = meshKinds3D()[3].make({2, 2, 2, {0, 0, 0}, {1, 1, 1}}, 1);
  ASSERT_EQ(meshKinds3D()[3].name, "HexahedronMesh3D");
  PiMeshSection section;
  // Nodes 0, 2, 6 and 4 share no facet.
  cutMesh(section, *mesh.mesh, {{1, -1, 0, 0}});
  EXPECT_EQ(section.section.cells.size(), 1U);
  EXPECT_NEAR(SectionFacts(section.section, {1, -1, 0, 0}).area, std::sqrt(2.0), 1e-6);
}

// Cells without volume have no section, not even in a plane that they lie in; nor has a plane without a normal.
TEST(SectionTest, LeavesOutFlatCellsAndPlanesWithoutNormal) {
  MeshSample<PbMesh3D> mesh = meshKinds3D()[3].make({4, 4, 4, {0, 0, 0}, {3, 3, 0}}, 1);
  PiMeshSection section;
  for (const PiSectionPlane& plane : {PiSectionPlane(0, 0, 1, 0), PiSectionPlane(0, 0, 0, 0)}) {
    cutMesh(section, *mesh.mesh, {plane});
    EXPECT_EQ(section.section.cells.size(), 0U);
  }
  mesh = meshKinds3D()[3].make(unitCells(), 1);
  cutMesh(section, *mesh.mesh, {{0, 0, 0, 0}});
  EXPECT_EQ(section.section.cells.size(), 0U);
}

// A tetrahedron that touches the plane with a facet is drawn from either side, once beside a neighbour.
TEST(SectionTest, DrawsAFacetBetweenTetrahedraOnce) {
  const float x[] = {0, 1, 0, 0, 0}, y[] = {0, 0, 1, 0, 0}, z[] = {0, 0, 0, 1, -1};
  const int cells[] = {0, 1, 2, 3, 0, 2, 1, 4};
  const PiSectionPlane plane(0, 0, 1, 0);
  for (const int first : {0, 1})
    for (const int num : {1, 2}) {
      const PbTetrahedronMesh3D mesh(5, x, y, z, num, cells + (num == 1 ? 4 * first : 0), 1);
      PiMeshSection section;
      section.cut(mesh, {plane});
      EXPECT_EQ(section.section.cells.size(), 1U);
      EXPECT_NEAR(SectionFacts(section.section, plane).area, 0.5, 1e-6);
      EXPECT_EQ(SectionFacts(section.section, plane).numBackwards, 0);
    }
}

// Random numbering costs no more cells than the numbering of a grid; and whatever the order of cells, the section is
// the same.
TEST(SectionTest, VisitsFewCellsInAnyNumbering) {
  const BoxSpec box = {41, 41, 41, {0, 0, 0}, {1, 1, 1}};
  const PiSectionPlane plane(0.6F, 0.48F, 0.64F, 0.83F);
  MeshSample<PbMesh3D> sample = meshKinds3D()[3].make(box, 1);
  std::vector<std::array<int, 8>> cells(std::size_t(sample->getNumCells()));
  for (std::size_t c = 0; c < cells.size(); ++c)
    std::copy_n(sample.indices[0].begin() + std::ptrdiff_t(8 * c), 8, cells[c].begin());
  std::shuffle(cells.begin(), cells.end(), std::mt19937(3));
  const int numNodes = sample->getNumNodes();
  const PbHexahedronMesh3D shuffled(numNodes, sample.arrays[0].data(), sample.arrays[1].data(), sample.arrays[2].data(),
                                    int(cells.size()), cells[0].data(), 1);
  PiMeshSection inOrder, inDisorder;
  cutMesh(inOrder, *sample.mesh, {plane});
  cutMesh(inDisorder, shuffled, {plane});
  EXPECT_LT(inOrder.numVisited(), cells.size() / 4);
  EXPECT_LT(inDisorder.numVisited(), cells.size() / 4);
  EXPECT_EQ(inOrder.section.points.size(), inDisorder.section.points.size());
  EXPECT_EQ(inOrder.section.cells.size(), inDisorder.section.cells.size());
  EXPECT_NEAR(SectionFacts(inDisorder.section, plane).area, BoxSection(box, plane).area(), 1e-5);
}

}  // namespace
