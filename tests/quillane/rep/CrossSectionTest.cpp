#include <Ormelle/PoMeshCrossSection.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoMeshCrossContour.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>

#include "quillane/rep/PiSectionState.h"
#include "quillane/rep/PiSurfaceStore.h"
#include "quillane/rep/TestGrid.h"
#include "quillane/rep/VolumeSamples.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr auto kMethods = {PoMeshCrossSection::ISOSURFACE, PoMeshCrossSection::INTERSECTION};

class CellsWhere : public PoCellFilter {
 public:
  explicit CellsWhere(std::function<bool(int, float)> accepts) : m_accepts(std::move(accepts)) {}
  int acceptCell(int cell, float value) const override { return m_accepts(cell, value); }

 private:
  std::function<bool(int, float)> m_accepts;
};

float field(const SbVec3f& p) { return 5 * p[0] + 3 * p[1] + 7 * p[2] + 10; }

class CrossSectionTest : public testing::Test {
 protected:
  void TearDown() override { unsetenv("ZEL_QUILLANE_CROSS_SECTION_METHOD"); }

  void cut(PbMesh3D& mesh, const SbPlane& plane) {
    kit->setMesh(&mesh);
    kit->plane = plane;
  }
  void colorBy(PbMesh3D& mesh, const std::vector<float>& values, PbMesh::DataBinding binding, int coloring) {
    mesh.addValuesSet(0, values.data(), binding, "values");
    kit->setDataMapping(mapping.get());
    kit->valuesIndex = 0;
    kit->coloringType = coloring;
  }
  SoGroup* group() const { return static_cast<SoGroup*>(kit->getPart("groupCrossSection", FALSE)); }
  PiSectionPasses passes() const { return PiSectionState::passesOf(*kit.get()); }
  PiSurfacePasses surfacePasses() const { return PiSurfaceStore::passesOf(*kit.get()); }

  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  NodePtr<PoMeshCrossSection> kit{new PoMeshCrossSection};
};

// Planes that meet no node of the unit cells.
const SbPlane kFreePlanes[] = {SbPlane(SbVec3f(0.31F, 0.52F, 0.795F), 3.217F), SbPlane(SbVec3f(1, 0, 0), 2.3F),
                               SbPlane(SbVec3f(0, -1, 0), -1.6F), SbPlane(SbVec3f(-0.5F, 0.2F, 0.6F), 0.137F)};

TEST_F(CrossSectionTest, BothMethodsAgreeInEveryMesh) {
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(5, 4, 3);
    const std::vector<float> values = valuesAt(*mesh, field);
    for (const SbPlane& plane : kFreePlanes) {
      SCOPED_TRACE(kind.name + " " + std::to_string(plane.getDistanceFromOrigin()));
      colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_MAPPING);
      cut(*mesh, plane);
      double areas[2];
      int i = 0;
      for (const auto method : kMethods) {
        kit->setCrossSectionMethod(method);
        const Soup soup = Soup::of(kit.get());
        areas[i++] = soup.area();
        for (const SoupTriangle& triangle : soup.triangles) {
          const SbVec3f normal = (triangle[1].point - triangle[0].point).cross(triangle[2].point - triangle[0].point);
          const float side = method == PoMeshCrossSection::INTERSECTION ? 1.0F : -1.0F;  // as the hints say
          ASSERT_GE(normal.dot(plane.getNormal()) * side, -1e-6F);
          for (const SoupVertex& vertex : triangle) {
            ASSERT_NEAR(plane.getDistance(vertex.point), 0, 1e-5);
            ASSERT_NEAR(vertex.color[0], greyOf(field(vertex.point)), 1e-4);
            ASSERT_TRUE(vertex.normal.equals(plane.getNormal(), 1e-6F));
          }
        }
      }
      EXPECT_GT(areas[0], 1);
      EXPECT_NEAR(areas[0], areas[1], 1e-5 * areas[0]);
    }
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(CrossSectionTest, ValuesOfCellsColourWhatIsCutOutOfEach) {
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(4, 3, 3);
    std::vector<float> values;
    for (int cell = 0; cell < mesh->getNumCells(); ++cell) values.push_back(static_cast<float>(cell % 97));
    colorBy(*mesh, values, PbMesh::PER_CELL, PoMesh::COLOR_AVERAGE);
    for (const SbPlane& plane : kFreePlanes) {
      cut(*mesh, plane);
      for (const auto method : kMethods) {
        SCOPED_TRACE(kind.name + " " + std::to_string(method));
        kit->setCrossSectionMethod(method);
        const Soup soup = Soup::of(kit.get());
        ASSERT_GT(soup.triangles.size(), 10U);
        for (const SoupTriangle& t : soup.triangles) {
          if (areaOf(t) < 1e-3) continue;
          SbVec3f pcoord;
          const SbVec3f middle = (t[0].point + t[1].point + t[2].point) / 3;
          const PbCell* cell = mesh->findContainingCell(middle, 1e-4F, pcoord);
          ASSERT_TRUE(cell);
          ASSERT_NEAR(t[0].color[0], greyOf(values[static_cast<std::size_t>(cell->getIndex())]), 1e-5);
        }
      }
    }
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(CrossSectionTest, BandsCoverTheSection) {
  PbIsovaluesList list;
  list.setRegularIsoList(4, 20.0F, 10.0F);
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(5, 4, 3);
    const std::vector<float> values = valuesAt(*mesh, field);
    colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_CONTOURING);
    kit->setIsovaluesList(&list);
    for (const SbPlane& plane : kFreePlanes)
      for (const auto method : kMethods) {
        SCOPED_TRACE(kind.name + " " + std::to_string(method));
        cut(*mesh, plane);
        kit->setCrossSectionMethod(method);
        kit->coloringType = PoMesh::COLOR_MAPPING;
        const double area = Soup::of(kit.get()).area();
        kit->coloringType = PoMesh::COLOR_CONTOURING;
        const Soup bands = Soup::of(kit.get());
        EXPECT_NEAR(bands.area(), area, 1e-4 * area);
        EXPECT_GE(bands.numColors(), 2);
        EXPECT_LE(bands.numColors(), 5);
        kit->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
        EXPECT_NEAR(Soup::of(kit.get()).area(), area, 1e-5 * area);
        EXPECT_TRUE(kit->getPart("appearance.texture2", FALSE));
      }
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
  kit->setIsovaluesList(nullptr);
}

TEST_F(CrossSectionTest, ChoosesTheMethod) {
  struct Row {
    const char* key;
    int method;
    bool isGrid, isFiltered, isIntersection;
  };
  const Row rows[] = {{"", 0, true, false, true},
                      {"", 0, false, false, false},
                      {"", 0, true, true, false},
                      {"isosurface", 0, true, false, false},
                      {"Intersection", 0, false, false, true},
                      {"INTERSECTION", 0, true, true, true},
                      {"whatever", 0, true, false, true},
                      {"ISOSURFACE", 2, false, false, true},
                      {"INTERSECTION", 1, true, false, false}};
  const auto grid = volumeKinds()[0].make(3, 3, 3);
  const auto cells = volumeKinds()[3].make(3, 3, 3);
  ASSERT_TRUE(grid->isCrossSectionOptimal() && !cells->isCrossSectionOptimal());
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.key) + std::to_string(row.method) + (row.isGrid ? " grid" : ""));
    setenv("ZEL_QUILLANE_CROSS_SECTION_METHOD", row.key, 1);
    NodePtr<PoMeshCrossSection> section(new PoMeshCrossSection);
    NodePtr<SoSeparator> scene(new SoSeparator);
    if (row.isFiltered) scene->addChild(new CellsWhere([](int, float) { return true; }));
    scene->addChild(section.get());
    section->setCrossSectionMethod(static_cast<PoMeshCrossSection::CrossSectionMethod>(row.method));
    section->setMesh(row.isGrid ? grid.get() : cells.get());
    section->plane = SbPlane(SbVec3f(0.3F, 0.4F, 0.8F), 1.7F);
    EXPECT_GT(Soup::of(scene.get()).area(), 1);
    EXPECT_EQ(PiSectionState::passesOf(*section.get()).intersections, row.isIntersection);
    EXPECT_EQ(PiSurfaceStore::passesOf(*section.get()).topology, !row.isIntersection);
  }
}

// The environment may change between two rebuilds, and each method finds the other's nodes gone.
TEST_F(CrossSectionTest, ChangesTheMethodBetweenRebuilds) {
  const auto mesh = volumeKinds()[0].make(3, 3, 3);
  cut(*mesh, SbPlane(SbVec3f(0.3F, 0.4F, 0.8F), 1.7F));
  const double area = Soup::of(kit.get()).area();
  for (const char* key : {"ISOSURFACE", "INTERSECTION", "ISOSURFACE"}) {
    setenv("ZEL_QUILLANE_CROSS_SECTION_METHOD", key, 1);
    kit->rebuild();
    EXPECT_NEAR(Soup::of(kit.get()).area(), area, 1e-5);
    EXPECT_EQ(childTypes(group()).find("Strip") != std::string::npos, key[1] == 'S');
  }
}

TEST_F(CrossSectionTest, GroupsOfAnIntersection) {
  const auto mesh = volumeKinds()[0].make(3, 3, 3);
  const std::vector<float> values = valuesAt(*mesh, field);
  cut(*mesh, SbPlane(SbVec3f(0.3F, 0.4F, 0.8F), 1.7F));
  kit->rebuild();
  EXPECT_EQ(childTypes(group()), "NormalBinding Normal ShapeHints Coordinate3 IndexedFaceSet");
  colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_AVERAGE);
  kit->rebuild();
  EXPECT_EQ(childTypes(group()), "NormalBinding Normal ShapeHints MaterialBinding Coordinate3 IndexedFaceSet");
  kit->plane = SbPlane(SbVec3f(0, 1, 0), 1.7F);
  kit->rebuild();
  EXPECT_EQ(childTypes(group()), "NormalBinding Normal ShapeHints MaterialBinding Coordinate3 QuadMesh");
  kit->plane = SbPlane(SbVec3f(0, 1, 0), 17);
  kit->rebuild();
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
}

// Rising and falling axes, seen from both sides, between nodes, through them and on the borders.
TEST_F(CrossSectionTest, SlicesGridsAcrossAxes) {
  const float up[] = {0, 1, 3, 4}, down[] = {4, 3, 1, 0};
  for (int axis = 0; axis < 3; ++axis)
    for (const bool isX : {false, true})
      for (const bool isY : {false, true})
        for (const float sign : {1.0F, -1.0F})
          for (const float place : {0.0F, 0.25F, 1.0F, 3.5F, 4.0F}) {
            PbParalCartesianGrid3D grid(4, 4, 4, isX ? up : down, isY ? up : down, up, 1);
            const std::vector<float> values = valuesAt(grid, field);
            colorBy(grid, values, PbMesh::PER_NODE, PoMesh::COLOR_MAPPING);
            SbVec3f normal(0.00004F, -0.00004F, 0.00004F);
            normal[axis] = sign;
            cut(grid, SbPlane(normal, sign * place));
            const int before = passes().slices;
            const Soup soup = Soup::of(kit.get());
            EXPECT_EQ(passes().slices, before + 1);
            EXPECT_NEAR(soup.area(), 16, 1e-4);
            for (const SoupTriangle& t : soup.triangles) {
              ASSERT_GT((t[1].point - t[0].point).cross(t[2].point - t[0].point)[axis] * sign, 0);
              ASSERT_GT(t[0].normal[axis] * sign, 0.99F);
              for (const SoupVertex& v : t) {
                ASSERT_EQ(v.point[axis], sign * kit->plane.getValue().getDistanceFromOrigin());
                ASSERT_NEAR(v.color[0], greyOf(field(v.point)), 1e-4);
              }
            }
            kit->setMesh(static_cast<PbMesh3D*>(nullptr));
          }
}

TEST_F(CrossSectionTest, LeavesOutUndefinedAndRefusedCells) {
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(4, 4, 4);
    std::vector<float> values = valuesAt(*mesh, field);
    for (int node = 0; node < mesh->getNumNodes(); ++node) {
      const SbVec3f p = mesh->getNodeCoord(node);
      if (p == SbVec3f(1, 1, 1) || p == SbVec3f(1, 1, 2)) values[static_cast<std::size_t>(node)] = kNaN;
    }
    colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_MAPPING);
    cut(*mesh, SbPlane(SbVec3f(0, 0, 1), 1.4F));
    double areas[2];
    int i = 0;
    for (const auto method : kMethods) {
      kit->setCrossSectionMethod(method);
      areas[i++] = Soup::of(kit.get()).area();
    }
    EXPECT_NEAR(areas[0], areas[1], 1e-4) << kind.name;
    EXPECT_GT(areas[1], 11.9) << kind.name;
    EXPECT_LT(areas[1], 15.9) << kind.name;
    kit->coloringType = PoMesh::COLOR_INHERITED;
    EXPECT_NEAR(Soup::of(kit.get()).area(), 16, 1e-4) << kind.name;

    // Two cells of three by their numbers, and then by a value.
    std::vector<float> ofCells;
    for (int cell = 0; cell < mesh->getNumCells(); ++cell) ofCells.push_back(cell % 3 ? 1.0F : 0.0F);
    mesh->addValuesSet(1, ofCells.data(), PbMesh::PER_CELL, "accepted");
    double filtered[2][2];
    for (const bool isByValue : {false, true}) {
      NodePtr<SoSeparator> scene(new SoSeparator);
      scene->addChild(
          new CellsWhere([isByValue](int cell, float value) { return isByValue ? value > 0 : cell % 3 != 0; }));
      scene->addChild(kit.get());
      kit->valuesIndexForCellFilter = 1;
      for (const auto method : kMethods) {
        kit->setCrossSectionMethod(method);
        filtered[isByValue][method - 1] = Soup::of(scene.get()).area();
      }
    }
    for (const double area : {filtered[0][1], filtered[1][0], filtered[1][1]})
      EXPECT_NEAR(area, filtered[0][0], 1e-4) << kind.name;
    EXPECT_GT(filtered[0][0], 2);
    EXPECT_LT(filtered[0][0], 14);
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(CrossSectionTest, EachChangeCostsItsOwnPasses) {
  const auto mesh = volumeKinds()[3].make(4, 4, 4);
  const std::vector<float> values = valuesAt(*mesh, field);
  colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_MAPPING);
  const SbVec3f normal(0.3F, 0.4F, 0.866F);
  cut(*mesh, SbPlane(normal, 2.1F));
  PiSurfacePasses surface;
  PiSectionPasses section;
  const auto expectPasses = [&](const char* change, int distances, int topology, int colors) {
    SCOPED_TRACE(change);
    kit->rebuild();
    EXPECT_EQ(passes().distances - section.distances, distances);
    EXPECT_EQ(surfacePasses().topology - surface.topology, topology);
    EXPECT_EQ(surfacePasses().coordinates - surface.coordinates, topology);
    EXPECT_EQ(surfacePasses().colors - surface.colors, colors);
    EXPECT_EQ(passes().intersections, 0);
    section = passes();
    surface = surfacePasses();
  };
  expectPasses("first", 1, 1, 1);
  expectPasses("nothing", 0, 0, 0);
  mapping->setValues(0, SbColor(0, 0, 1), 100, SbColor(1, 0, 0));
  expectPasses("colours", 0, 0, 1);
  kit->plane = SbPlane(normal, 2.2F);
  expectPasses("along the normal", 0, 1, 1);
  kit->plane = SbPlane(SbVec3f(0.4F, 0.3F, 0.866F), 2.2F);
  expectPasses("turned", 1, 1, 1);
  kit->coloringType = PoMesh::COLOR_INHERITED;
  expectPasses("inherited", 0, 0, 0);
  kit->coloringType = PoMesh::COLOR_MAPPING;
  expectPasses("mapped again", 0, 0, 1);
  kit->plane = SbPlane(SbVec3f(0.4F, 0.3F, 0.866F), kNaN);
  kit->rebuild();
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
}

TEST_F(CrossSectionTest, TransparentPartsAreDeletedByEitherMethod) {
  const auto mesh = volumeKinds()[0].make(8, 8, 2);
  const std::vector<float> values = valuesAt(*mesh, [](const SbVec3f& p) { return p[0] * 10; });
  mapping->setMaxThreshold(45, SbColor(1, 0, 0), 1);
  mapping->enableTransparency(1);
  mapping->enableThresholds(0, 1);
  colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_MAPPING);
  for (const auto& [plane, isSlice] :
       {std::pair(SbPlane(SbVec3f(0, 0, 1), 0.7F), true), std::pair(SbPlane(SbVec3f(0.001F, 0, 1), 0.7F), false)})
    for (const auto method : kMethods) {
      cut(*mesh, plane);
      kit->setCrossSectionMethod(method);
      for (int again = 0; again < 2; ++again) {
        kit->rebuild();
        const Soup soup = Soup::of(kit.get());
        EXPECT_GT(soup.area(), 30);
        EXPECT_LT(soup.area(), 41);
        EXPECT_LT(soup.box().getMax()[0], 5.01F);
      }
    }
}

TEST_F(CrossSectionTest, OutlivesItsData) {
  auto mesh = volumeKinds()[4].make(3, 3, 3);
  const std::vector<float> values = valuesAt(*mesh, field);
  for (const auto method : kMethods) {
    kit->setCrossSectionMethod(method);
    colorBy(*mesh, values, PbMesh::PER_NODE, PoMesh::COLOR_MAPPING);
    cut(*mesh, SbPlane(SbVec3f(0.3F, 0.4F, 0.866F), 1.7F));
    EXPECT_GT(Soup::of(kit.get()).numColors(), 1);
    mesh->removeValuesSet(0);
    EXPECT_EQ(Soup::of(kit.get()).numColors(), 1);
    NodePtr<SoNode> copy(kit->copy());
    const double area = Soup::of(kit.get()).area();
    EXPECT_NEAR(Soup::of(copy.get()).area(), area, 1e-6);
    mesh.reset();
    EXPECT_EQ(Soup::of(kit.get()).area(), 0);
    EXPECT_EQ(group(), nullptr);
    mesh = volumeKinds()[4].make(3, 3, 3);
  }
}

TEST_F(CrossSectionTest, IsWrittenAsFieldsOrAsGeometry) {
  const auto mesh = volumeKinds()[5].make(3, 3, 3);
  const SbPlane plane(SbVec3f(0.6F, 0, 0.8F), 1.7F);
  cut(*mesh, plane);
  NodePtr<PoMeshCrossContour> outline(new PoMeshCrossContour);
  outline->setMesh(mesh.get());
  outline->plane = plane;
  NodePtr<SoSeparator> scene(new SoSeparator);
  scene->addChild(kit.get());
  scene->addChild(outline.get());
  const Soup drawn = Soup::of(scene.get());

  const std::string fields = textOf(scene.get());
  EXPECT_EQ(fields.find("Coordinate3"), std::string::npos);
  const NodePtr<SoSeparator> fromFields = sceneOf(fields);
  ASSERT_TRUE(fromFields);
  EXPECT_EQ(textOf(fromFields.get()), fields);
  EXPECT_EQ(static_cast<PoMeshCrossContour*>(fromFields->getChild(1))->plane.getValue(), plane);
  auto* section = static_cast<PoMeshCrossSection*>(fromFields->getChild(0));
  section->setMesh(mesh.get());
  EXPECT_NEAR(Soup::of(section).area(), drawn.area(), 1e-5);

  PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
  const std::string geometry = textOf(scene.get());
  PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
  const NodePtr<SoSeparator> fromGeometry = sceneOf(geometry);
  ASSERT_TRUE(fromGeometry);
  const Soup read = Soup::of(fromGeometry.get());
  EXPECT_NEAR(read.area(), drawn.area(), 1e-5);
  EXPECT_NEAR(read.length(), drawn.length(), 1e-5);
  section->setMesh(static_cast<PbMesh3D*>(nullptr));
  outline->setMesh(static_cast<PbMesh3D*>(nullptr));
}

// --- the outline ----------------------------------------------------------------------------------------------------

/// The length of edges that one polygon of the section drawn last has.
double borderOf(PoMeshCrossSection* section) {
  const MadeSurface made = MadeSurface::of(static_cast<SoGroup*>(section->getPart("groupCrossSection", FALSE)));
  std::map<std::pair<int, int>, int> edges;
  for (const std::vector<int>& polygon : made.polygons)
    for (std::size_t i = 0; i < polygon.size(); ++i)
      ++edges[std::minmax(polygon[i], polygon[(i + 1) % polygon.size()])];
  double length = 0;
  for (const auto& [edge, count] : edges)
    if (count == 1)
      length += static_cast<double>(
          (made.points[static_cast<std::size_t>(edge.first)] - made.points[static_cast<std::size_t>(edge.second)])
              .length());
  return length;
}

class CrossContourTest : public CrossSectionTest {};

TEST_F(CrossContourTest, IsTheBorderOfTheSection) {
  const SbPlane planes[] = {kFreePlanes[0],
                            kFreePlanes[1],
                            kFreePlanes[3],
                            SbPlane(SbVec3f(0, 1, 0), 2),  // along facets
                            SbPlane(SbVec3f(1, 0, 0), 0),  // the first face
                            SbPlane(SbVec3f(0, 0, 1), 3),  // the last one
                            SbPlane(SbVec3f(1, 1, 0), 2.828427F),
                            SbPlane(SbVec3f(1, -1, 0), 0)};  // through edges
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(4, 4, 3);
    for (const SbPlane& plane : planes)
      for (const bool isFiltered : {false, true}) {
        NodePtr<SoSeparator> scene(new SoSeparator);
        // Half of the box.
        if (isFiltered)
          scene->addChild(new CellsWhere([&mesh](int cell, float) { return cell < mesh->getNumCells() / 2; }));
        NodePtr<PoMeshCrossContour> outline(new PoMeshCrossContour);
        scene->addChild(outline.get());
        scene->addChild(kit.get());
        outline->setMesh(mesh.get());
        outline->plane = plane;
        cut(*mesh, plane);
        kit->setCrossSectionMethod(PoMeshCrossSection::INTERSECTION);
        const Soup soup = Soup::of(scene.get());
        SCOPED_TRACE(kind.name + " " + std::to_string(&plane - planes) + (isFiltered ? " filtered" : ""));
        const SoNode* shape = group()->getChild(group()->getNumChildren() - 1);
        if (shape->getTypeId().getName() == "QuadMesh") {
          const SbVec3f size = soup.box().getMax() - soup.box().getMin();
          EXPECT_NEAR(soup.length(), 2 * (size[0] + size[1] + size[2]), 1e-4);
        } else {
          EXPECT_NEAR(soup.length(), borderOf(kit.get()), 1e-4);
        }
        EXPECT_GT(soup.length(), isFiltered ? -1 : 5);
        outline->setMesh(static_cast<PbMesh3D*>(nullptr));
      }
    kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

TEST_F(CrossContourTest, TakesColoursOfNodesAndCells) {
  for (const VolumeKind& kind : volumeKinds()) {
    const auto mesh = kind.make(4, 3, 3);
    std::vector<float> values = valuesAt(*mesh, field);
    std::vector<float> ofCells;
    for (int cell = 0; cell < mesh->getNumCells(); ++cell) ofCells.push_back(static_cast<float>(cell % 89));
    mesh->addValuesSet(0, values.data(), PbMesh::PER_NODE, "nodes");
    mesh->addValuesSet(1, ofCells.data(), PbMesh::PER_CELL, "cells");
    NodePtr<PoMeshCrossContour> outline(new PoMeshCrossContour);
    outline->setMesh(mesh.get());
    outline->setDataMapping(mapping.get());
    outline->plane = kFreePlanes[0];
    outline->valuesIndex = 0;
    outline->coloringType = PoMesh::COLOR_TEXTURE_CONTOURING;
    SCOPED_TRACE(kind.name);
    const Soup byNodes = Soup::of(outline.get());
    ASSERT_GT(byNodes.segments.size(), 10U);
    for (const SoupSegment& segment : byNodes.segments)
      for (const SoupVertex& end : segment) ASSERT_NEAR(end.color[0], greyOf(field(end.point)), 1e-4);
    EXPECT_EQ(childTypes(static_cast<SoGroup*>(outline->getPart("groupCrossContour", FALSE))),
              "MaterialBinding Coordinate3 IndexedLineSet");
    outline->valuesIndex = 1;
    const Soup byCells = Soup::of(outline.get());
    EXPECT_NEAR(byCells.length(), byNodes.length(), 1e-4);
    for (const SoupSegment& segment : byCells.segments) {
      if (lengthOf(segment) < 1e-2) continue;
      SbVec3f pcoord;
      // A little inside.
      const SbVec3f middle =
          0.9999F * (segment[0].point + segment[1].point) / 2 + 0.0001F * mesh->getBoundingBox().getCenter();
      const PbCell* cell = mesh->findContainingCell(middle, 1e-4F, pcoord);
      ASSERT_TRUE(cell);
      ASSERT_NEAR(segment[0].color[0], greyOf(ofCells[static_cast<std::size_t>(cell->getIndex())]), 1e-5);
    }
    outline->setMesh(static_cast<PbMesh3D*>(nullptr));
  }
}

}  // namespace
