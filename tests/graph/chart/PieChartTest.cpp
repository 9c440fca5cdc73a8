#include <limits>
#include <string>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoPieChart2D.h>
#include <Ormelle/PoPieChart3D.h>
#include <Ormelle/PoPieChartRep.h>
#include <Ormelle/PoRegularMesh1D.h>
#include <gtest/gtest.h>

#include "support/NodePtr.h"
#include "support/PartTexts.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

class PieChart : public ::testing::Test {
 protected:
  void SetUp() override { PoOrmelle::init(); }
  void TearDown() override { PoOrmelle::finish(); }

  static void setValues(PoPieChart& pie, std::initializer_list<float> values) {
    pie.sliceValue.setValues(0, static_cast<int>(values.size()), values.begin());
    pie.sliceValue.setNum(static_cast<int>(values.size()));
  }

  static int pickedAt(PoPieChart& pie, float x, float y) {
    SoRayPickAction pick(SbViewportRegion(100, 100));
    pick.setRay(SbVec3f(x, y, 5), SbVec3f(0, 0, -1));
    pick.apply(&pie);
    int number = -99;
    if (const SoPickedPoint* point = pick.getPickedPoint()) pie.getPickedSliceNumber(point->getPath(), number);
    return number;
  }
};

TEST_F(PieChart, ShowsAndPicksItsSlices) {
  NodePtr<PoPieChart2D> pie(new PoPieChart2D);
  setValues(*pie, {1, 2, 1, 0.1f, 0.1f});
  pie->sliceGroupActive = TRUE;
  pie->sliceGroupMinValue = 0.5f;
  pie->radius = 2;
  pie->setSliceToTranslate(1, 0.5f);
  pie->sliceColor.set1Value(0, SbColor(1, 0, 0));
  pie->sliceColor.set1Value(1, SbColor(0, 1, 0));
  EXPECT_EQ(pie->getSliceToTranslate(1), 0.5f);
  EXPECT_EQ(pie->getSliceToTranslate(0), 0);

  const Soup soup = Soup::of(pie.get());
  EXPECT_NEAR(soup.area(), 3.14159 * 4, 0.01);
  EXPECT_TRUE(soup.isFinite());
  EXPECT_TRUE(soup.colorAt(1, 0.5f).equals(SbColor(1, 0, 0), 1e-5f));
  EXPECT_TRUE(soup.colorAt(-1, 1).equals(SbColor(0, 1, 0), 1e-5f));

  EXPECT_EQ(pickedAt(*pie, 1, 0.5f), 0);
  EXPECT_EQ(pickedAt(*pie, -1, 1), 1);
  EXPECT_EQ(pickedAt(*pie, 0.5f, -1), 2);
  EXPECT_EQ(pickedAt(*pie, 1.5f, -0.2f), -1);
  // The gap that the slice pulled out leaves.
  EXPECT_EQ(pickedAt(*pie, -0.2f, 0.2f), -99);
}

TEST_F(PieChart, AnnotationsSayWhatSlicesAre) {
  NodePtr<PoPieChart2D> pie(new PoPieChart2D);
  setValues(*pie, {1000, 1000, 1000});
  const char* texts[] = {"one", "two"};
  pie->sliceText.setValues(0, 2, texts);
  pie->extAnnotTextVisibility = PoAxis::VISIBILITY_ON;
  pie->extAnnotValueVisibility = PoAxis::VISIBILITY_ON;
  pie->extAnnotAddString = " t";
  pie->extAnnotAddStringVisibility = PoAxis::VISIBILITY_ON;
  pie->intAnnotPercentVisibility = PoAxis::VISIBILITY_ON;
  PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 1);
  pie->setFormat(&format);
  Soup::of(pie.get());
  EXPECT_EQ(textsIn(*pie, "extAnnotText"), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(textsIn(*pie, "extAnnotValue"), (std::vector<std::string>{"1000.0 t", "1000.0 t", "1000.0 t"}));
  EXPECT_EQ(textsIn(*pie, "intAnnotPercent"), (std::vector<std::string>{"33.4%", "33.3%", "33.3%"}));
  EXPECT_EQ(pie->getPart("intAnnotText", FALSE), nullptr);

  // The format is followed, and forgotten with its end.
  format.setFormat(PbNumericDisplayFormat::FLOAT_FORMAT, 3, 0);
  Soup::of(pie.get());
  EXPECT_EQ(textsIn(*pie, "extAnnotValue")[0], "1E3 t");
  pie->setFormat(nullptr);
  {
    PbNumericDisplayFormat shortLived(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 3);
    pie->setFormat(&shortLived);
  }
  Soup::of(pie.get());
  EXPECT_EQ(pie->getFormat(), nullptr);
}

TEST_F(PieChart, BadInputDrawsNothing) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  NodePtr<PoPieChart3D> pie(new PoPieChart3D);
  pie->intAnnotPercentVisibility = PoAxis::VISIBILITY_ON;
  pie->extAnnotTextVisibility = PoAxis::VISIBILITY_ON;
  for (const std::initializer_list<float>& values :
       {std::initializer_list<float>{}, {0, 0}, {-1, nan}, {std::numeric_limits<float>::infinity()}}) {
    setValues(*pie, {1, 2});
    EXPECT_GT(Soup::of(pie.get()).area(), 0);
    setValues(*pie, values);
    EXPECT_EQ(Soup::of(pie.get()).area(), 0);
    EXPECT_EQ(pie->getPart("slice", FALSE), nullptr);
  }
  setValues(*pie, {1, 2});
  for (const float radius : {0.0f, -1.0f, nan}) {
    pie->radius = radius;
    EXPECT_EQ(Soup::of(pie.get()).area(), 0);
  }
  pie->radius = 1;
  pie->zMax = nan;
  pie->setSliceToTranslate(0, nan);
  pie->sliceAngleStep = nan;
  pie->intAnnotDistance = nan;
  EXPECT_TRUE(Soup::of(pie.get()).isFinite());
  // A very long name, and ten thousand slices.
  pie->sliceText.set1Value(0, std::string(10000, 'x').c_str());
  for (int i = 0; i < 10000; ++i) pie->sliceValue.set1Value(i, 1);
  EXPECT_TRUE(Soup::of(pie.get()).isFinite());
}

TEST_F(PieChart, AMeshIsDrawnAsARing) {
  NodePtr<SoSeparator> root(new SoSeparator);
  auto* node = new PoRegularMesh1D;
  root->addChild(node);
  const float values[] = {1, -2, 1, 2};
  const SbString names[] = {"a", "b", "c", "d"};
  PbRegularMesh1D mesh(4, 0, 3);
  mesh.addValuesSet(0, values, "share");
  mesh.addStringsSet(0, names, "name");
  node->mesh.setValue(mesh);
  auto* material = new SoMaterial;
  for (int i = 0; i < 4; ++i) material->diffuseColor.set1Value(i, SbColor(static_cast<float>(i) / 4, 0, 0));
  auto* pie = new PoPieChartRep;
  root->addChild(pie);
  pie->radiusMin = 1;
  pie->radiusMax = 2;
  pie->colorBinding = PoChart::PER_VERTEX;
  pie->colorSource = PoChart::COLOR_MATERIAL_SOURCE;
  pie->material = material;
  Soup soup = Soup::of(root.get());
  EXPECT_NEAR(soup.area(), 3.14159 * 3, 0.01);
  EXPECT_FALSE(soup.triangleAt(0.5f, 0));
  EXPECT_NEAR(soup.colorAt(1, 1)[0], 0, 1e-4);
  EXPECT_NEAR(soup.colorAt(-1, 1)[0], 0.5, 1e-4);
  EXPECT_NEAR(soup.colorAt(0, -1.5f)[0], 0.75, 1e-4);

  pie->isNameVisible = TRUE;
  pie->isPercentageVisible = TRUE;
  pie->isAnnoSliceColor = TRUE;
  pie->height = 1;
  soup = Soup::of(root.get());
  EXPECT_TRUE(soup.isFinite());
  EXPECT_EQ(textsIn(*pie, "annotation").size(), 6u);
  EXPECT_NE(pie->getPart("annotationLine", FALSE), nullptr);

  pie->yValuesIndex = 7;
  EXPECT_EQ(Soup::of(root.get()).area(), 0);
}

TEST_F(PieChart, WritesFieldsAndReadsThemBack) {
  NodePtr<PoPieChart3D> pie(new PoPieChart3D);
  setValues(*pie, {3, 1});
  pie->zMax = 0.4f;
  pie->extAnnotPosition = PoPieChart::SQUARE_ALIGNED_EXT_POS;
  pie->extAnnotTextVisibility = PoAxis::VISIBILITY_ON;
  Soup::of(pie.get());
  const std::string text = textOf(pie.get());
  EXPECT_EQ(text.find("FaceSet"), std::string::npos) << text;
  EXPECT_NE(text.find("SQUARE_ALIGNED_EXT_POS"), std::string::npos);
  EXPECT_NE(text.find("VISIBILITY_ON"), std::string::npos);
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_TRUE(scene);
  EXPECT_EQ(textOf(scene->getChild(0)), text);
  EXPECT_NEAR(Soup::of(scene.get()).area(), Soup::of(pie.get()).area(), 1e-6);
}

}  // namespace
