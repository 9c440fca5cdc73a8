#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoMeshContouring.h>
#include <Ormelle/PoNumericDisplayFormat.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "quillane/rep/TestGrid.h"
#include "support/MeshFamily.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// A square of 10 x 10 unit cells whose values are x, with ten levels midway between the nodes.
class ContouringTest : public testing::Test {
 protected:
  ContouringTest() : domain(0, 0, 10, 10, PbDomain::BOX_AS_GIVEN) {
    list.setRegularIsoList(10, 0.5F, 1.0F);
    grid.values = grid.x;
    setUp(grid.make());
  }
  void setUp(std::unique_ptr<PbMesh2D> newMesh) {
    kit->setMesh(newMesh.get());
    mesh = std::move(newMesh);
    kit->setIsovaluesList(&list);
    kit->setDomain(&domain);
    kit->valuesIndex = 0;
  }
  void traverse() { SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(kit.get()); }

  SoGroup* part(const char* name) const { return static_cast<SoGroup*>(kit->getPart(name, FALSE)); }
  template <class Node>
  std::vector<Node*> nodesIn(const char* name) const {
    std::vector<Node*> found;
    if (!part(name)) return found;
    SoSearchAction search;
    search.setType(Node::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.apply(part(name));
    for (int i = 0; i < search.getPaths().getLength(); ++i)
      found.push_back(static_cast<Node*>(search.getPaths()[i]->getTail()));
    return found;
  }
  /// The x of the first point of each line of a part.
  std::vector<float> linesOf(const char* name) const {
    std::vector<float> lines;
    if (!part(name)) return lines;
    const SoMFVec3f& points = nodesIn<SoCoordinate3>(name).at(0)->point;
    const SoMFInt32& sizes = nodesIn<SoLineSet>(name).at(0)->numVertices;
    int first = 0;
    for (int i = 0; i < sizes.getNum(); first += sizes[i++]) lines.push_back(points[first][0]);
    EXPECT_EQ(first, points.getNum());
    return lines;
  }
  std::vector<std::string> texts() const {
    std::vector<std::string> found;
    for (const SoText3* text : nodesIn<SoText3>("annotText")) found.emplace_back(text->string[0].getString());
    return found;
  }
  double lineLength() { return Soup::of(kit.get()).length(); }

  TestGrid grid = TestGrid::unitCells(11, 11);
  PbIsovaluesList list;
  PbDomain domain;
  std::unique_ptr<PbMesh2D> mesh;
  std::unique_ptr<PbLinearDataMapping> mapping = greyMapping();
  NodePtr<PoMeshContouring> kit{new PoMeshContouring};
};

using Floats = std::vector<float>;
using Texts = std::vector<std::string>;

TEST_F(ContouringTest, EveryNthLevelIsMajor) {
  traverse();
  EXPECT_EQ(linesOf("majorContourLine"), (Floats{0.5F, 3.5F, 6.5F, 9.5F}));
  EXPECT_EQ(linesOf("minorContourLine"), (Floats{1.5F, 2.5F, 4.5F, 5.5F, 7.5F, 8.5F}));
  EXPECT_EQ(childTypes(part("majorContourLine")), "Coordinate3 LineSet");
  EXPECT_TRUE(texts().empty());

  kit->firstMajor = 3;
  kit->majorPeriod = 4;
  traverse();
  EXPECT_EQ(linesOf("majorContourLine"), (Floats{2.5F, 6.5F}));

  for (const unsigned short period : {0, 1}) {
    kit->majorPeriod = period;
    traverse();
    EXPECT_EQ(linesOf("majorContourLine").size(), 10U);
    EXPECT_EQ(part("minorContourLine"), nullptr);
  }
}

TEST_F(ContouringTest, ColorLabelAndRankComeFromTheIsovalueOfTheList) {
  // The levels lie on nodes, from which the points of the lines are moved away.
  list.setRegularIsoList(10, 0.0F, 1.0F);
  kit->setDataMapping(mapping.get());
  kit->coloringType = PoMesh::COLOR_MAPPING;
  kit->annotIsVisible = TRUE;
  traverse();
  const Floats lines = linesOf("majorContourLine");
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(childTypes(part("majorContourLine")), "Material MaterialBinding Coordinate3 LineSet");
  const SoMFColor& colors = nodesIn<SoMaterial>("majorContourLine").at(0)->diffuseColor;
  ASSERT_EQ(colors.getNum(), 4);
  for (int i = 0; i < 4; ++i) {
    EXPECT_NE(lines[i], 3.0F * i);
    EXPECT_NEAR(lines[i], 3 * i, 0.05);
    EXPECT_EQ(colors[i][0], greyOf(3.0F * i));
  }
  EXPECT_EQ(texts(), (Texts{"3", "6", "9"})) << "beside the boundary there is no room for one";
}

TEST_F(ContouringTest, LabelsHaveTheSizeAndGapOfTheReference) {
  kit->annotIsVisible = TRUE;
  traverse();
  EXPECT_EQ(texts(), (Texts{"0.5", "3.5", "6.5", "9.5"}));
  EXPECT_FLOAT_EQ(nodesIn<SoFont>("annotText").at(0)->size.getValue(), 0.4F) << "a 25th of the domain";
  EXPECT_EQ(part("transform"), nullptr);
  domain.setDomain(0, 0, 20, 20, PbDomain::BOX_AS_GIVEN);
  traverse();
  EXPECT_FLOAT_EQ(nodesIn<SoFont>("annotText").at(0)->size.getValue(), 0.8F) << "the domain has changed";
  domain.setDomain(0, 0, 10, 10, PbDomain::BOX_AS_GIVEN);

  kit->annotFontSize = 0.15F;
  kit->annotGap = 0.3F;
  traverse();
  EXPECT_FLOAT_EQ(nodesIn<SoFont>("annotText").at(0)->size.getValue(), 1.5F);
  EXPECT_EQ(texts().front(), "3.5") << "those at the sides don't fit any more";
  EXPECT_GT(texts().size(), 4U);

  kit->annotGap = 1;
  kit->annotFontSize = 0.1F;
  const SbVec2f square[] = {{2, 2}, {8, 2}, {8, 8}, {2, 8}};
  kit->annotClippingPolygon.setValues(0, 4, square);
  traverse();
  EXPECT_EQ(texts(), (Texts{"3.5", "6.5"}));
  EXPECT_FLOAT_EQ(nodesIn<SoFont>("annotText").at(0)->size.getValue(), 0.6F) << "the polygon is 6 wide";
  kit->annotClippingPolygon.setNum(2);
  traverse();
  EXPECT_FLOAT_EQ(nodesIn<SoFont>("annotText").at(0)->size.getValue(), 1) << "two points bound nothing";
  kit->annotClippingPolygon.setNum(3);
  kit->annotClippingPolygon.set1Value(1, SbVec2f(kNaN, 3));
  traverse();
  EXPECT_TRUE(Soup::of(kit.get()).isFinite());
}

TEST_F(ContouringTest, LabelsAreFittedAsTheDomainShowsTheLines) {
  // The same lines under every kind of domain: what is drawn is the same up to the scale, and labels aren't distorted.
  for (float& y : grid.y) y *= 100;
  for (int type = PbDomain::TRANSFORM_01; type <= PbDomain::SCALE_MAX_XYZ_FIXED; ++type) {
    SCOPED_TRACE(type);
    PbDomain wide(0, 0, 10, 1000, PbDomain::BOX_AS_GIVEN);
    wide.setTransformType(static_cast<PbDomain::TransformType>(type));
    setUp(grid.make());
    kit->setDomain(&wide);
    kit->annotIsVisible = FALSE;
    const Soup plain = Soup::of(kit.get());
    kit->annotIsVisible = TRUE;
    const Soup labelled = Soup::of(kit.get());
    EXPECT_NE(part("transform"), nullptr);
    EXPECT_EQ(texts().size(), 4U);
    ASSERT_EQ(labelled.segments.size(), plain.segments.size());
    const float shown = std::max(plain.box().getMax()[1], plain.box().getMax()[0]);
    EXPECT_NEAR(labelled.length(), plain.length(), 1e-4 * plain.length());
    for (std::size_t i = 0; i < plain.segments.size(); ++i)
      EXPECT_TRUE(labelled.segments[i][0].point.equals(plain.segments[i][0].point, 1e-4F * shown));
    // Upright letters are drawn a 25th of the side high, less what digits lack of the full height.
    SbBox3f letters;
    for (const SoupTriangle& triangle : labelled.triangles)
      if (triangle[0].point[0] < 0.2F * shown)
        for (const SoupVertex& vertex : triangle) letters.extendBy(vertex.point);
    EXPECT_NEAR((letters.getMax()[0] - letters.getMin()[0]) / shown, 0.04 * 0.7, 0.008);
    kit->setDomain(nullptr);
  }
}

TEST_F(ContouringTest, LinesAreCutOrHiddenBehindLabels) {
  kit->annotIsVisible = TRUE;
  EXPECT_NEAR(lineLength(), 100, 1e-3);
  EXPECT_EQ(part("annotBackground"), nullptr);

  kit->annotIsContourClip = TRUE;
  const double cut = lineLength();
  EXPECT_LT(cut, 98.5);
  EXPECT_GT(cut, 97);
  EXPECT_EQ(texts().size(), 4U);

  // Minor lines are cut as well, where a label lies across.
  kit->annotPath = PoMeshContouring::HORIZONTAL_PATH;
  kit->annotFontSize = 0.2F;
  traverse();
  EXPECT_GT(linesOf("minorContourLine").size(), 6U);

  kit->annotIsBackground = TRUE;
  kit->annotPath = PoMeshContouring::TANGENTIAL_PATH;
  kit->annotFontSize = 0;
  traverse();
  EXPECT_NEAR(Soup::of(part("majorContourLine")).length() + Soup::of(part("minorContourLine")).length(), 100, 1e-3);
  ASSERT_EQ(texts().size(), 4U);
  const SoFaceSet& boxes = *nodesIn<SoFaceSet>("annotBackground").at(0);
  const SoLineSet& borders = *nodesIn<SoLineSet>("annotBackgroundBorder").at(0);
  EXPECT_EQ(boxes.numVertices.getNum(), 4);
  EXPECT_EQ(boxes.numVertices[0], 4);
  EXPECT_EQ(borders.numVertices[0], 8);
  // A border goes round its box, and each text lies in one.
  const SoMFVec3f& corners = nodesIn<SoCoordinate3>("annotBackground").at(0)->point;
  ASSERT_EQ(corners.getNum(), 16);
  float around = 0;
  for (int i = 0; i < 4; ++i) {
    SbBox3f box;
    for (int c = 0; c < 4; ++c) {
      box.extendBy(corners[4 * i + c]);
      around += (corners[4 * i + c] - corners[4 * i + (c + 1) % 4]).length();
    }
    SoGetBoundingBoxAction text(SbViewportRegion(100, 100));
    text.apply(part("annotText")->getChild(i));
    EXPECT_TRUE(box.intersect(text.getBoundingBox().getMin()) && box.intersect(text.getBoundingBox().getMax()));
  }
  EXPECT_NEAR(Soup::of(part("annotBackgroundBorder")).length(), around, 1e-4);
}

TEST_F(ContouringTest, WithoutLevelsOrNodeValuesNothingIsDrawn) {
  kit->annotIsVisible = TRUE;
  kit->annotIsBackground = TRUE;
  const auto isDrawn = [this] {
    traverse();
    int num = 0;
    for (const char* name :
         {"majorContourLine", "minorContourLine", "annotBackground", "annotBackgroundBorder", "annotText"})
      num += part(name) != nullptr;
    EXPECT_TRUE(num == 0 || num == 5);
    return num == 5;
  };
  EXPECT_TRUE(isDrawn());
  kit->setIsovaluesList(nullptr);
  EXPECT_FALSE(isDrawn());
  kit->setIsovaluesList(&list);
  EXPECT_TRUE(isDrawn());
  for (const int index : {-1, 1, 100000}) {
    kit->valuesIndex = index;
    EXPECT_FALSE(isDrawn()) << index;
  }
  kit->valuesIndex = 0;
  EXPECT_TRUE(isDrawn());
  const Floats cellValues(static_cast<std::size_t>(grid.numCells()), 5);
  mesh->addValuesSet(0, cellValues.data(), PbMesh::PER_CELL, "of cells");
  EXPECT_FALSE(isDrawn());
  kit->setMesh(static_cast<PbMesh2D*>(nullptr));
  EXPECT_FALSE(isDrawn());
}

TEST_F(ContouringTest, WhatTheMappingLeavesOutHasNoLineAndNoLabel) {
  mapping->setMinThreshold(2);  // no colour
  mapping->setMaxThreshold(8, SbColor(1, 0, 0));
  mapping->enableThresholds(1, 1);
  kit->setDataMapping(mapping.get());
  kit->coloringType = PoMesh::COLOR_CONTOURING;
  kit->annotIsVisible = TRUE;
  traverse();
  EXPECT_EQ(linesOf("majorContourLine"), (Floats{3.5F, 6.5F, 9.5F}));
  EXPECT_EQ(texts(), (Texts{"3.5", "6.5", "9.5"}));
  for (const auto status : {PoMeshContouring::CROSS_MINOR_CONTOUR, PoMeshContouring::DONT_CROSS_CONTOUR}) {
    kit->annotCrossStatus = status;
    traverse();
    EXPECT_EQ(texts(), (Texts{"3.5", "6.5"})) << "beyond a threshold lines have no label";
  }
  mapping->enableThresholds(0, 0);
  mapping->enableTransparency(1);
  mapping->setTransparencyValueDeletedParts(0.5F);
  mapping->setValues(0, SbColor(0, 0, 0), 10, SbColor(1, 1, 1));
  traverse();
  EXPECT_EQ(linesOf("majorContourLine").size(), 4U);
  EXPECT_EQ(nodesIn<SoMaterial>("majorContourLine").at(0)->transparency.getNum(), 4);
}

TEST_F(ContouringTest, NumbersFollowTheFormat) {
  kit->annotIsVisible = TRUE;
  PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 3);
  kit->setFormat(&format);
  traverse();
  EXPECT_EQ(texts().at(1), "3.500");
  format.setFormat(PbNumericDisplayFormat::INTEGER_FORMAT, 0, 0);
  traverse();
  EXPECT_EQ(texts().at(1), "4");
  {
    PbNumericDisplayFormat dying(PbNumericDisplayFormat::FLOAT_FORMAT, -2, 1);
    kit->setFormat(&dying);
    traverse();
    EXPECT_EQ(texts().at(1), "350.0E-2");
  }
  traverse();
  EXPECT_EQ(texts().at(1), "3.5") << "back to the default";

  auto* node = new PoNumericDisplayFormat;
  NodePtr<SoSeparator> root{new SoSeparator};
  root->addChild(node);
  node->set("formatType FLOAT_FORMAT numDecimal 2");
  root->addChild(kit.get());
  SoGetBoundingBoxAction frame(SbViewportRegion(100, 100));
  frame.apply(root.get());
  EXPECT_EQ(texts().at(1), "3.50") << "that of the state";
  node->set("numDecimal 4");
  frame.apply(root.get());
  EXPECT_EQ(texts().at(1), "3.5000");

  list.setRegularIsoList(3, 2000.0F, 1000.0F);
  for (float& value : grid.values) value *= 1000;
  root->removeChild(kit.get());
  setUp(grid.make());
  kit->majorPeriod = 1;
  traverse();
  EXPECT_EQ(texts(), (Texts{"2E3", "3E3", "4E3"}));
}

TEST_F(ContouringTest, EveryMeshClassShowsTheSameLines) {
  PbDomain bounds(1, -2, 3, 4, PbDomain::BOX_AS_GIVEN);
  RectangleSpec spec;
  spec.numX = 21;
  spec.numY = 25;
  spec.z = [](float x, float y) { return 0.5F * y + 0.1F * x; };
  for (const MeshKind2D& kind : meshKinds2D()) {
    SCOPED_TRACE(kind.name);
    auto sample = kind.make(spec, 1);
    Floats values;
    for (int node = 0; node < sample->getNumNodes(); ++node) values.push_back(sample->getNodeCoord(node)[1]);
    sample->addValuesSet(0, values.data(), "y");
    kit->setMesh(sample.mesh.get());
    kit->setDomain(&bounds);
    list.setRegularIsoList(4, -1.45F, 1.0F);
    kit->majorPeriod = 1;
    kit->annotIsVisible = TRUE;
    const Soup soup = Soup::of(kit.get());
    EXPECT_TRUE(soup.isFinite());
    EXPECT_EQ(texts(), (Texts{"-1.45", "-0.45", "0.55", "1.55"}));
    // As the domain shows it: y is scaled by a third, z by 2.
    EXPECT_NEAR(soup.length(), 4 * std::hypot(2, 0.2 * 2), 1e-3);
    // Labels rise with their lines.
    const SbMatrix place = nodesIn<SoMatrixTransform>("annotText").at(0)->matrix.getValue();
    EXPECT_NEAR(place[0][2] / place[0][0], 0.2, 1e-3);
    kit->setMesh(static_cast<PbMesh2D*>(nullptr));
    kit->setDomain(nullptr);
  }
}

TEST_F(ContouringTest, FieldsSurviveAFile) {
  NodePtr<SoSeparator> root{new SoSeparator};
  root->addChild(kit.get());
  kit->setDomain(nullptr);
  kit->majorPeriod = 2;
  kit->annotIsVisible = TRUE;
  kit->annotPath = PoMeshContouring::VERTICAL_PATH;
  kit->annotCrossStatus = PoMeshContouring::DONT_CROSS_CONTOUR;
  kit->annotClippingPolygon.set1Value(1, SbVec2f(1, 2));
  traverse();
  const std::string text = textOf(root.get());
  EXPECT_EQ(text.find("LineSet"), std::string::npos) << text;
  EXPECT_EQ(text.find("Separator {"), text.rfind("Separator {")) << text;
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_TRUE(scene);
  EXPECT_EQ(textOf(scene.get()), text);
  auto* read = static_cast<PoMeshContouring*>(scene->getChild(0));
  EXPECT_EQ(read->majorPeriod.getValue(), 2);
  EXPECT_EQ(read->annotPath.getValue(), PoMeshContouring::VERTICAL_PATH);
  EXPECT_EQ(read->annotCrossStatus.getValue(), PoMeshContouring::DONT_CROSS_CONTOUR);
  EXPECT_EQ(read->annotClippingPolygon[1], SbVec2f(1, 2));

  PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
  const std::string geometry = textOf(root.get());
  PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
  EXPECT_EQ(geometry.find("annotPath VERTICAL_PATH"), std::string::npos) << geometry;
  const NodePtr<SoSeparator> drawn = sceneOf(geometry);
  ASSERT_TRUE(drawn);
  EXPECT_NEAR(Soup::of(drawn.get()).length(), lineLength(), 1e-3);
  EXPECT_EQ(Soup::of(drawn.get()).triangles.size(), Soup::of(kit.get()).triangles.size());
}

TEST_F(ContouringTest, HostileInputDrawsNothingWrong) {
  kit->annotIsVisible = TRUE;
  kit->annotIsContourClip = TRUE;
  for (const float hostile : {kNaN, std::numeric_limits<float>::infinity(), -1.0F, 1e30F, 1e-40F}) {
    SCOPED_TRACE(hostile);
    TestGrid other = TestGrid::unitCells(11, 11);
    other.values = other.x;
    other.values[50] = hostile;
    other.x[20] = hostile;
    other.z.assign(121, 0);
    other.z[77] = hostile;
    setUp(other.make());
    kit->zValuesIndex = 0;
    for (SoSFFloat* field : {&kit->annotFontSize, &kit->annotGap, &kit->annotFontFactor}) {
      *field = hostile;
      EXPECT_TRUE(Soup::of(kit.get()).isFinite());
      field->setValue(1);
    }
    kit->annotPath = 17;
    kit->annotCrossStatus = -3;
    EXPECT_TRUE(Soup::of(kit.get()).isFinite());
  }
  // A domain in which floats can't hold the lines: they are drawn all the same, without labels.
  setUp(grid.make());
  kit->enableDomainTransform(0);
  kit->setPart("domainTransform", nullptr);
  domain.setDomain(0, 0, 1e30F, 1e-30F, PbDomain::BOX_AS_GIVEN);
  kit->annotIsContourClip = FALSE;
  const Soup soup = Soup::of(kit.get());
  EXPECT_TRUE(soup.isFinite());
  EXPECT_NEAR(soup.length(), 100, 1e-3);
}

}  // namespace
