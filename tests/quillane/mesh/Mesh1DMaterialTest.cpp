#include <Inventor/nodes/SoCube.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PoCoordinateListFilter.h>
#include <Ormelle/PoIndexListFilter.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <gtest/gtest.h>

#include <cmath>

#include "support/TestChart.h"

namespace {

const float kNaN = std::nanf("");
using Floats = std::vector<float>;

/// A curve with colour values 0, 1, 0.25 in set 1, and a mapping of them to greys.
class CurveMaterial : public ::testing::Test {
 protected:
  CurveMaterial() {
    const float x[] = {0, 1, 4}, y[] = {0, 3, 3}, values[] = {0, 1, 0.25f};
    mesh.setGeometry(3, x);
    mesh.addValuesSet(0, y, "y");
    mesh.addValuesSet(1, values, "colours");
    asker.chart->colorValuesIndex = 1;
    asker.chart->colorBinding = PoChart::PER_VERTEX;
    asker.mapping.reset(new PoLinearDataMapping);  // black at 0, white at 1
  }

  static Floats greysOf(const TestCurve& curve) {
    Floats greys;
    for (int i = 0; curve.material && i < curve.material->diffuseColor.getNum(); ++i)
      greys.push_back(curve.material->diffuseColor[i][0]);
    return greys;
  }

  CurveAsker asker;
  PbIrregularMesh1D mesh;
};

}  // namespace

TEST_F(CurveMaterial, IsMixedByTheLengthOfTheWay) {
  EXPECT_EQ(greysOf(asker.drawn(mesh)), (Floats{0, 1, 0.25f}));
  // Along x 1, then along y 3. The second interval is level: its corner is the node.
  asker.hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  EXPECT_EQ(greysOf(asker.drawn(mesh)), (Floats{0, 0.25f, 1, 0.25f}));
  // The way from node to node is mixed as well where its ends aren't drawn: 1.5 up, 1 along, 1.5 up.
  asker.hints->geomInterpretation = PoMesh1DHints::HISTO_X;
  const Floats histo = greysOf(asker.drawn(mesh));
  ASSERT_EQ(histo.size(), 5u);
  EXPECT_FLOAT_EQ(histo[1], 1.5f / 4);
  EXPECT_FLOAT_EQ(histo[2], 2.5f / 4);
  EXPECT_FLOAT_EQ(histo[4], 0.25f);

  asker.hints->geomInterpretation = PoMesh1DHints::SMOOTH;
  const TestCurve smooth = asker.drawn(mesh);
  const Floats greys = greysOf(smooth);
  ASSERT_EQ(greys.size(), 21u);
  for (size_t p = 0; p < 10; ++p) EXPECT_LT(greys[p], greys[p + 1]);
  double length = 0, lengthTo3 = 0;
  for (size_t p = 1; p <= 10; ++p) {
    length += std::hypot(smooth.x[p] - smooth.x[p - 1], smooth.y[p] - smooth.y[p - 1]);
    if (p == 3) lengthTo3 = length;
  }
  EXPECT_NEAR(greys[3], lengthTo3 / length, 1e-5);
}

TEST_F(CurveMaterial, OfAPartIsThatOfItsFirstNode) {
  asker.chart->colorBinding = PoChart::PER_PART;
  asker.hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  EXPECT_EQ(greysOf(asker.drawn(mesh)), (Floats{0, 0, 1, 0.25f}));
  // The middle points of both intervals fall together, and the segment from there on belongs to the later.
  const float y[] = {0, 4, 0};
  mesh.addValuesSet(0, y, "y");
  asker.hints->geomInterpretation = PoMesh1DHints::HISTO_X;
  EXPECT_EQ(greysOf(asker.drawn(mesh)), (Floats{0, 0, 1, 1, 0.25f}));
  asker.hints->geomInterpretation = PoMesh1DHints::AS_IS;
  EXPECT_EQ(greysOf(asker.cut(mesh, 1, 1)), (Floats{0, 1, 1, 0.25f, 0.25f}));
  asker.hints->geomInterpretation = PoMesh1DHints::SMOOTH;
  EXPECT_EQ(greysOf(asker.drawn(mesh))[19], 1);
}

TEST_F(CurveMaterial, OfPickedPointsIsThatOfTheCurveThere) {
  EXPECT_EQ(greysOf(asker.filtered(mesh)), (Floats{0, 1, 0.25f}));
  auto* nodes = new PoIndexListFilter;
  asker.filter.reset(nodes);
  const int32_t wanted[] = {2, 0};
  nodes->index.setValues(0, 2, wanted);
  EXPECT_EQ(greysOf(asker.filtered(mesh)), (Floats{0.25f, 0}));
  nodes->index.setNum(0);
  EXPECT_FALSE(asker.filtered(mesh).material);

  auto* places = new PoCoordinateListFilter;
  asker.filter.reset(places);
  const float coordinates[] = {0.5f, 1};
  places->coord.setValues(0, 2, coordinates);
  EXPECT_EQ(greysOf(asker.filtered(mesh)), (Floats{0.5f, 1}));
  EXPECT_EQ(greysOf(asker.cut(mesh, 1, 0.75f)), (Floats{0, 0.25f, 1, 0.25f}));
}

TEST_F(CurveMaterial, HasTransparenciesWhereTheMappingWantsThem) {
  EXPECT_EQ(asker.drawn(mesh).material->transparency.getNum(), 1);
  auto* mapping = static_cast<PoLinearDataMapping*>(asker.mapping.get());
  mapping->transparencyEnabled = TRUE;
  mapping->transparency2 = 0.5f;
  asker.hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  TestCurve curve = asker.drawn(mesh);
  ASSERT_EQ(curve.material->transparency.getNum(), 4);
  EXPECT_EQ(curve.material->transparency[1], 0.125f);

  mapping->transparencyEnabled = FALSE;
  const float values[] = {0, kNaN, 1};
  mesh.addValuesSet(1, values, "with none");
  asker.hints->geomInterpretation = PoMesh1DHints::AS_IS;
  curve = asker.drawn(mesh);
  ASSERT_EQ(curve.material->transparency.getNum(), 3) << "a value without a colour is left out";
  EXPECT_EQ(curve.material->transparency[0], 0);
  EXPECT_EQ(curve.material->transparency[1], 1);
}

TEST_F(CurveMaterial, OfTheChartIsUsedOverAndOver) {
  auto* material = new SoMaterial;
  material->diffuseColor.set1Value(0, 1, 0, 0);
  material->diffuseColor.set1Value(1, 0, 1, 0);
  material->shininess = 0.75f;
  material->emissiveColor.setNum(0);
  asker.chart->material = material;
  asker.chart->colorSource = PoChart::COLOR_MATERIAL_SOURCE;
  asker.hints->geomInterpretation = PoMesh1DHints::STAIRS_X;
  const TestCurve curve = asker.drawn(mesh);
  EXPECT_NE(curve.material.get(), material);
  EXPECT_EQ(greysOf(curve), (Floats{1, 0.75f, 0, 1})) << "red, green, red";
  EXPECT_EQ(curve.material->shininess.getNum(), 1);
  EXPECT_EQ(curve.material->shininess[0], 0.75f);

  // A mapping source without a mapping, or without its values, falls back on it.
  asker.chart->colorSource = PoChart::COLOR_MAPPING_SOURCE;
  EXPECT_EQ(greysOf(asker.drawn(mesh))[1], 0.25f);
  asker.chart->colorValuesIndex = 5;
  EXPECT_EQ(greysOf(asker.drawn(mesh))[1], 0.75f);
  asker.mapping.reset();
  EXPECT_EQ(greysOf(asker.drawn(mesh))[1], 0.75f);
}

TEST_F(CurveMaterial, IsNoneWithoutABindingOrASource) {
  asker.chart->colorBinding = PoChart::INHERITED;
  EXPECT_FALSE(asker.drawn(mesh).material);
  asker.chart->colorBinding.setValue(99);
  EXPECT_FALSE(asker.drawn(mesh).material);
  asker.chart->colorBinding = PoChart::PER_PART;
  EXPECT_TRUE(asker.drawn(mesh).material);
  asker.chart->colorSource = PoChart::COLOR_NONE_SOURCE;
  EXPECT_FALSE(asker.drawn(mesh).material);
  for (const int source : {int(PoChart::COLOR_MATERIAL_SOURCE), 7}) {
    asker.chart->colorSource.setValue(source);
    asker.chart->material = nullptr;
    EXPECT_FALSE(asker.cut(mesh, 1, 1).material);
    asker.chart->material = new SoCube;
    EXPECT_FALSE(asker.filtered(mesh).material);
  }
}
