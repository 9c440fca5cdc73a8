// What PoMeshSkin draws, by the triangles that a traversal meets.

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbGrid3D.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoMeshSkin.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "quillane/rep/PiSkinDrawing.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr PoMesh::ColoringType kColorings[] = {PoMesh::COLOR_INHERITED, PoMesh::COLOR_AVERAGE, PoMesh::COLOR_MAPPING,
                                               PoMesh::COLOR_CONTOURING, PoMesh::COLOR_TEXTURE_CONTOURING};

class ChosenCells : public PoCellFilter {
 public:
  explicit ChosenCells(std::function<bool(int, float)> accepts) : m_accepts(std::move(accepts)) {}
  int acceptCell(int cell, float value) const override { return m_accepts(cell, value); }
  std::function<bool(int, float)> m_accepts;
};

float valueAt(const SbVec3f& point) { return 30 + 10 * point[0] + 2 * point[1] + 3 * point[2]; }
float greyOf(float value) { return value / 100; }

SbVec3f centreOf(const SoupTriangle& triangle) {
  return (triangle[0].point + triangle[1].point + triangle[2].point) / 3;
}
/// Twice the area as a vector on the side from which the corners run clockwise.
SbVec3f frontOf(const SoupTriangle& t) { return (t[2].point - t[0].point).cross(t[1].point - t[0].point); }

/// Of a closed surface whose corners run clockwise from outside.
double volumeIn(const Soup& soup) {
  double sum = 0;
  for (const SoupTriangle& triangle : soup.triangles) sum += centreOf(triangle).dot(frontOf(triangle)) / 6.0;
  return sum;
}

/// Whether every triangle is lit on its front, and all fronts are outside.
void expectFacingOut(const Soup& soup, double volume) {
  EXPECT_NEAR(volumeIn(soup), volume, 1e-3 * volume);
  for (const SoupTriangle& triangle : soup.triangles)
    for (const SoupVertex& vertex : triangle) {
      EXPECT_NEAR(vertex.normal.length(), 1, 1e-4);
      ASSERT_GT(vertex.normal.dot(frontOf(triangle)), 0.5F * frontOf(triangle).length())
          << &triangle - soup.triangles.data() << " of " << soup.triangles.size() << " " << vertex.normal[0]
          << vertex.normal[1] << vertex.normal[2] << " front " << frontOf(triangle)[0] << " " << frontOf(triangle)[1]
          << " " << frontOf(triangle)[2];
    }
}

/// Shows a mesh by its sets 0, values of nodes, and 1, values of cells; both are linear in x, y and z.
class SkinTest : public testing::TestWithParam<MeshKind3D> {
 protected:
  SkinTest() {
    mapping.setValues(0, SbColor(0, 0, 0), 100, SbColor(1, 1, 1));
    isovalues.setRegularIsoList(20.0F, 100.0F, 9);
    root->addChild(kit.get());
  }

  void show(PbMesh3D& mesh, bool arePerCell = false) {
    std::vector<float> values;
    for (int node = 0; node < mesh.getNumNodes(); ++node) values.push_back(valueAt(mesh.getNodeCoord(node)));
    mesh.addValuesSet(0, values.data(), "nodes");
    values.clear();
    for (int cell = 0; cell < mesh.getNumCells(); ++cell)
      values.push_back(valueAt(const_cast<PbCell*>(mesh.getCell(cell))->getCenter()));
    mesh.addValuesSet(1, values.data(), PbMesh::PER_CELL, "cells");
    kit->setMesh(&mesh);
    kit->setDataMapping(&mapping);
    kit->setIsovaluesList(&isovalues);
    kit->valuesIndex = arePerCell ? 1 : 0;
    kit->valuesIndexForCellFilter = 1;
  }
  void filter(std::function<bool(int, float)> accepts) {
    cells.reset(new ChosenCells(std::move(accepts)));
    root->insertChild(cells.get(), 0);
  }
  Soup draw(int coloring) {
    kit->coloringType = coloring;
    return Soup::of(root.get());
  }
  Soup draw() { return Soup::of(root.get()); }
  SoGroup* group() const { return static_cast<SoGroup*>(kit->getPart("groupSkin", FALSE)); }
  PiSkinPasses passes() const { return PiSkinDrawing::passesOf(*kit); }
  int count(SoType type) const {
    int num = 0;
    for (int child = 0; child < group()->getNumChildren(); ++child) num += group()->getChild(child)->isOfType(type);
    return num;
  }

  PbLinearDataMapping mapping;
  PbIsovaluesList isovalues;
  NodePtr<PoMeshSkin> kit{new PoMeshSkin};  // which starts the toolkit
  NodePtr<SoSeparator> root{new SoSeparator};
  NodePtr<ChosenCells> cells;
};

TEST_P(SkinTest, CoversTheBoxInEveryColouring) {
  auto sample = GetParam().make({}, 1);
  for (const bool arePerCell : {false, true}) {
    show(*sample.mesh, arePerCell);
    for (const int coloring : kColorings) {
      SCOPED_TRACE(testing::Message() << "per cell " << arePerCell << " colouring " << coloring);
      const Soup soup = draw(coloring);
      EXPECT_NEAR(soup.area(), 104, 1e-3);
      expectFacingOut(soup, 60);
      if (coloring != PoMesh::COLOR_AVERAGE && coloring != PoMesh::COLOR_MAPPING) continue;
      for (const SoupTriangle& triangle : soup.triangles) {
        const SbVec3f front = frontOf(triangle);
        SbVec3f pcoord;
        const PbCell* cell =
            sample->findContainingCell(centreOf(triangle) - front / front.length() * 1e-3F, 1e-4F, pcoord);
        ASSERT_NE(cell, nullptr);
        const float ofCell = sample->getValuesSet(1)[cell->getIndex()];
        for (const SoupVertex& vertex : triangle)
          EXPECT_NEAR(vertex.color[0], greyOf(arePerCell ? ofCell : valueAt(vertex.point)), 1e-4);
      }
    }
  }
}

TEST_P(SkinTest, ShowsTheInsideWhereTheFilterOpensIt) {
  BoxSpec spec;
  spec.numX = spec.numY = spec.numZ = 4;
  for (float& end : spec.min) end = 0;
  for (float& end : spec.max) end = 3;
  auto sample = GetParam().make(spec, 1);
  show(*sample.mesh);
  const auto isInMiddle = [&](int cell) {
    const SbVec3f centre = const_cast<PbCell*>(sample->getCell(cell))->getCenter();
    for (int axis = 0; axis < 3; ++axis)
      if (centre[axis] < 1 || centre[axis] > 2) return false;
    return true;
  };
  filter([](int, float) { return true; });
  for (const int coloring : kColorings) {
    const Soup soup = draw(coloring);
    EXPECT_NEAR(soup.area(), 54, 1e-3);
    expectFacingOut(soup, 27);
  }
  const int numFilterRuns = passes().facets;
  cells->m_accepts = [&](int cell, float) { return !isInMiddle(cell); };
  cells->touch();
  for (const int coloring : kColorings) {
    const Soup soup = draw(coloring);
    EXPECT_NEAR(soup.area(), 60, 1e-3);
    expectFacingOut(soup, 26);
  }
  EXPECT_EQ(passes().facets, numFilterRuns + 1) << "one change of the filter";

  // The filter gets the values of cells.
  cells->m_accepts = [](int, float value) { return value < 45; };
  cells->touch();
  kit->valuesIndex = 1;
  const Soup soup = draw(PoMesh::COLOR_MAPPING);
  EXPECT_GT(soup.area(), 10);
  for (const SoupTriangle& triangle : soup.triangles) EXPECT_LT(triangle[0].color[0], greyOf(45));
  cells->m_accepts = [](int, float) { return false; };
  cells->touch();
  EXPECT_TRUE(draw().triangles.empty());

  root->removeChild(cells.get());
  EXPECT_NEAR(draw(PoMesh::COLOR_INHERITED).area(), 54, 1e-3) << "without a filter again";
}

TEST_P(SkinTest, LeavesOutCellsThatHaveAnUndefinedNode) {
  BoxSpec spec;
  spec.numX = spec.numY = spec.numZ = 5;
  for (float& end : spec.min) end = 0;
  for (float& end : spec.max) end = 4;
  auto sample = GetParam().make(spec, 1);
  show(*sample.mesh);
  // One behind the middle of the side z = 0, which no facet has: the four by four facets before it go.
  std::vector<float> values(sample->getValuesSet(0), sample->getValuesSet(0) + sample->getNumNodes());
  values[static_cast<std::size_t>((2 * 5 + 2) * 5 + 1)] = kNaN;
  sample->addValuesSet(0, values.data(), "nodes");
  const double whole = 6 * 16, holed = draw(PoMesh::COLOR_MAPPING).area();
  EXPECT_NEAR(draw(PoMesh::COLOR_INHERITED).area(), whole, 1e-3);
  if (GetParam().numParts == 1)
    EXPECT_NEAR(holed, whole - 4, 1e-3);
  else
    EXPECT_LT(holed, whole - 1);
  for (const int coloring : {PoMesh::COLOR_CONTOURING, PoMesh::COLOR_TEXTURE_CONTOURING, PoMesh::COLOR_MAPPING})
    EXPECT_NEAR(draw(coloring).area(), holed, 1e-3);
  EXPECT_NEAR(draw(PoMesh::COLOR_INHERITED).area(), whole, 1e-3);
}

TEST_P(SkinTest, RunsOnlyThePassesThatAChangeAsksFor) {
  auto sample = GetParam().make({}, 1);
  show(*sample.mesh);
  const bool isGrid = dynamic_cast<const PbGrid3D*>(sample.mesh.get());
  draw(PoMesh::COLOR_MAPPING);
  PiSkinPasses expected = passes();
  EXPECT_EQ(expected, (PiSkinPasses{1, 1, 1, 1, 0, 0}));
  const auto expectPasses = [&](const char* change) {
    draw();
    EXPECT_EQ(passes(), expected) << change;
    expected = passes();
  };
  kit->touchKit();
  expectPasses("nothing");
  mapping.setValues(0, SbColor(0, 0, 0), 90, SbColor(1, 1, 1));
  ++expected.colors;
  expectPasses("mapping");
  std::vector<float> values(sample->getValuesSet(0), sample->getValuesSet(0) + sample->getNumNodes());
  sample->addValuesSet(0, values.data(), "nodes");
  ++expected.colors;
  expectPasses("values");
  sample->addValuesSet(7, values.data(), "others");
  expectPasses("other values");
  kit->creaseAngle = 1;
  if (!isGrid) ++expected.normals;
  expectPasses("crease angle");
  kit->coloringType = PoMesh::COLOR_INHERITED;
  if (isGrid) ++expected.facets, ++expected.normals;  // the sides are quad meshes then
  expectPasses("no colour");
  kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
  if (isGrid) ++expected.facets, ++expected.normals;
  ++expected.textures;
  expectPasses("texture");
  mapping.setValues(0, SbColor(0, 0, 0), 100, SbColor(1, 1, 1));
  expectPasses("mapping of a texture");
  isovalues.setRegularIsoList(20.0F, 80.0F, 5);
  ++expected.textures;
  expectPasses("isovalues of a texture");
}

TEST_P(SkinTest, TakesOutWhatIsTransparentAndBringsItBack) {
  auto sample = GetParam().make({}, 1);
  for (const bool arePerCell : {false, true}) {
    show(*sample.mesh, arePerCell);
    mapping.enableThresholds(0, 0);
    const double whole = draw(PoMesh::COLOR_MAPPING).area();
    EXPECT_NEAR(whole, 104, 1e-3);
    mapping.setMaxThreshold(50);
    mapping.enableThresholds(0, 1);
    const Soup soup = draw();
    EXPECT_LT(soup.area(), whole - 20);
    EXPECT_GT(soup.area(), 5);
    for (const SoupTriangle& triangle : soup.triangles)
      for (const SoupVertex& vertex : triangle) {
        EXPECT_LT(vertex.color[0], greyOf(50));
        EXPECT_GT(vertex.color[0], 0) << "a colour that was left out";
        EXPECT_NEAR(vertex.normal.length(), 1, 1e-4);
        EXPECT_GT(vertex.normal.dot(frontOf(triangle)), 0) << "light of another facet";
      }
    kit->touchKit();
    EXPECT_NEAR(draw().area(), soup.area(), 1e-3);
    kit->creaseAngle = kit->creaseAngle.getValue() + 0.5F;
    EXPECT_NEAR(draw().area(), soup.area(), 1e-3);
    mapping.enableThresholds(0, 0);
    EXPECT_NEAR(draw().area(), whole, 1e-3);
  }
}

TEST_P(SkinTest, FollowsTheMesh) {
  auto sample = GetParam().make({}, 1);
  show(*sample.mesh);
  EXPECT_NEAR(draw(PoMesh::COLOR_MAPPING).area(), 104, 1e-3);
  BoxSpec turned;  // i, j and k run like the fingers of the other hand
  std::swap(turned.min[1], turned.max[1]);
  turned.numX = 3;
  auto other = GetParam().make(turned, 1);
  show(*other.mesh);
  for (const int coloring : kColorings) {
    const Soup soup = draw(coloring);
    EXPECT_NEAR(soup.area(), 104, 1e-3);
    expectFacingOut(soup, 60);
  }
  kit->setMesh(nullptr);
  draw();
  EXPECT_EQ(group(), nullptr);
  kit->setMesh(sample.mesh.get());
  EXPECT_NEAR(draw(PoMesh::COLOR_MAPPING).area(), 104, 1e-3);
  sample.mesh.reset();
  EXPECT_TRUE(draw().triangles.empty());
}

TEST_P(SkinTest, SharesTheSearchWithOtherKits) {
  auto sample = GetParam().make({}, 1);
  show(*sample.mesh);
  int numAsked = 0;
  filter([&](int, float) { return ++numAsked, true; });
  const NodePtr<PoMeshSkin> other(new PoMeshSkin);
  other->setMesh(sample.mesh.get());
  other->valuesIndexForCellFilter = 1;
  root->addChild(other.get());
  EXPECT_NEAR(draw().area(), 208, 1e-3);
  EXPECT_EQ(numAsked, sample->getNumCells());
}

TEST_P(SkinTest, IsWrittenAndReadBack) {
  auto sample = GetParam().make({}, 1);
  show(*sample.mesh);
  for (const bool isGeometry : {false, true}) {
    const Soup drawn = draw(isGeometry ? PoMesh::COLOR_MAPPING : PoMesh::COLOR_INHERITED);
    PoBase::setNodeWriteFormat(isGeometry ? PoBase::WRITE_GEOMETRY : PoBase::WRITE_FIELDS);
    const std::string text = textOf(root.get());
    EXPECT_EQ(text.find("Coordinate3") != std::string::npos, isGeometry);
    const NodePtr<SoSeparator> read = sceneOf(text);
    ASSERT_TRUE(read);
    // The toolkit gives shared nodes of geometry other names.
    if (!isGeometry) {
      EXPECT_EQ(textOf(read.get()), text);
    }
    const Soup soup = Soup::of(read.get());
    EXPECT_NEAR(soup.area(), isGeometry ? drawn.area() : 0, 1e-3) << "there is no mesh in the file";
    EXPECT_EQ(soup.numColors(), isGeometry ? drawn.numColors() : 0);
  }
  PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
}

INSTANTIATE_TEST_SUITE_P(Meshes, SkinTest, testing::ValuesIn(meshKinds3D()), MeshKindName());

using SkinOfMeshTest = SkinTest;
INSTANTIATE_TEST_SUITE_P(One, SkinOfMeshTest, testing::Values(meshKinds3D()[2]), MeshKindName());

TEST_P(SkinOfMeshTest, SidesOfAGridAreQuadMeshesWithPointsOfTheirOwn) {
  auto sample = GetParam().make({}, 1);
  show(*sample.mesh);
  draw(PoMesh::COLOR_INHERITED);
  EXPECT_EQ(count(SoQuadMesh::getClassTypeId()), 6);
  draw(PoMesh::COLOR_MAPPING);
  EXPECT_EQ(count(SoQuadMesh::getClassTypeId()), 0);
  const auto* coordinate = static_cast<SoCoordinate3*>(group()->getChild(group()->getNumChildren() - 2));
  EXPECT_EQ(coordinate->point.getNum(), 2 * ((5 + 4) * 3 + 5 * 4));
  const auto* material = static_cast<SoMaterial*>(kit->getPart("appearance.material", FALSE));
  EXPECT_EQ(material->diffuseColor.getNum(), coordinate->point.getNum());
  const BoxSpec box;
  for (int point = 0; point < coordinate->point.getNum(); ++point) {
    EXPECT_NEAR(material->diffuseColor[point][0], greyOf(valueAt(coordinate->point[point])), 1e-5);
    const int axis = point < 40 ? 2 : point < 70 ? 1 : 0;
    const bool isLower = point < 20 || (point >= 40 && point < 55) || (point >= 70 && point < 82);
    EXPECT_EQ(coordinate->point[point][axis], (isLower ? box.min : box.max)[axis]) << point;
  }
}

TEST_P(SkinOfMeshTest, CellsOfEitherHandFaceOut) {
  for (const MeshKind3D& kind : meshKinds3D()) {
    auto sample = kind.make({}, 1);
    auto* mesh = dynamic_cast<PbHexahedronMesh3D*>(sample.mesh.get());
    if (!mesh) continue;
    std::vector<int> mirrored = sample.indices[0];
    for (std::size_t cell = 0; cell < mirrored.size() / 8; cell += 2) {
      std::swap(mirrored[8 * cell + 1], mirrored[8 * cell + 3]);
      std::swap(mirrored[8 * cell + 5], mirrored[8 * cell + 7]);
    }
    const auto* arrays = sample.arrays.data();
    mesh->setGeometry(mesh->getNumNodes(), arrays[0].data(), arrays[1].data(), arrays[2].data(), mesh->getNumCells(),
                      mirrored.data());
    show(*mesh);
    for (const int coloring : kColorings) {
      const Soup soup = draw(coloring);
      EXPECT_NEAR(soup.area(), 104, 1e-3);
      expectFacingOut(soup, 60);
    }
  }
}

TEST_P(SkinOfMeshTest, MeshesWithoutCellsOrPlacesDrawNothing) {
  PbRegularCartesianGrid3D flat(4, 1, 3, 0, 0, 0, 1, 1, 1, 1);
  show(flat);
  EXPECT_TRUE(draw(PoMesh::COLOR_MAPPING).triangles.empty());
  // Facets that fall on a line or a point are left out; the others have their normals.
  const std::vector<float> x = {0, 1, 1, 0, 0, 1, 1, 0}, y = {0, 0, 1, 1, 0, 0, 1, 1}, z = {0, 0, 0, 0, 1, 1, 1, kNaN};
  const int wedge[8] = {0, 1, 2, 2, 4, 5, 6, 6}, ring[8] = {0, 1, 0, 1, 4, 5, 4, 5};
  PbHexahedronMesh3D collapsed(8, x.data(), y.data(), z.data(), 1, wedge, 1);
  show(collapsed);
  Soup soup = draw();
  EXPECT_NEAR(soup.area(), 1 + 2 + std::sqrt(2.0), 1e-4);
  expectFacingOut(soup, 0.5);
  PbHexahedronMesh3D line(8, x.data(), y.data(), z.data(), 1, ring, 1);
  show(line);
  EXPECT_TRUE(draw().isFinite());
  const int broken[8] = {0, 1, 2, 3, 4, 5, 6, 7};
  PbHexahedronMesh3D undefined(8, x.data(), y.data(), z.data(), 1, broken, 1);
  show(undefined);
  EXPECT_TRUE(draw().triangles.empty());
}

}  // namespace
