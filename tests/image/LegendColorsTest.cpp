// A legend's colours are those that a mesh shows, as pixels.

#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoLinearValueLegend.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoNonLinearValueLegend2.h>
#include <Ormelle/PoNonLinearValueLegend3.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

constexpr int kNumRows = 401;

// The greatest difference of a channel between a strip of mesh, whose values rise from `low` to `high` upwards, and a
// legend of the same height beside it.
int greatestDifference(PbDataMapping& mapping, PoAutoValueLegend* legend, float low, float high) {
  const NodePtr<PoAutoValueLegend> keep(legend);
  PbIsovaluesList range(low, high, 2);
  PbRegularCartesianGrid2D mesh(2, kNumRows, 0, 0, 0.4F, 1, 1);
  std::vector<float> values;
  for (int i = 0; i < 2; ++i)
    for (int j = 0; j < kNumRows; ++j)
      values.push_back(low + (high - low) * static_cast<float>(j) / static_cast<float>(kNumRows - 1));
  mesh.addValuesSet(0, values.data(), "value");
  NodePtr<PoMeshFilled> filled(new PoMeshFilled);
  filled->setMesh(&mesh);
  filled->setDataMapping(&mapping);
  filled->valuesIndex = 0;
  filled->coloringType = PoMesh::COLOR_MAPPING;

  legend->start.setValue(0.6F, 0);
  legend->end.setValue(1, 1);
  legend->valueVisibility = PoLegend::VISIBILITY_OFF;
  for (SoSFFloat* margin : {&legend->marginLeft, &legend->marginRight, &legend->marginBottom, &legend->marginTop})
    *margin = 0;
  legend->setDataMapping(&mapping);
  legend->setIsovaluesList(&range);

  NodePtr<SoSeparator> root(new SoSeparator);
  auto* light = new SoLightModel;
  root->addChild(light);
  light->model = SoLightModel::BASE_COLOR;
  root->addChild(filled.get());
  root->addChild(legend);
  PiOffscreen offscreen(200, 200);
  PiViewpoint viewpoint;
  viewpoint.direction = SbVec3f(0, 0, -1);
  offscreen.setViewpoint(viewpoint);
  EXPECT_TRUE(offscreen.draw(root.get())) << offscreen.error();
  const auto& picture = offscreen.picture();
  // Rows of the strip, but for the last ones, where the lines round the legend are.
  std::vector<int> rows;
  for (int y = 0; y < 200; ++y)
    if (std::min({picture.pixel(60, y)[0], picture.pixel(60, y)[1], picture.pixel(60, y)[2]}) < 255) rows.push_back(y);
  EXPECT_GT(rows.size(), 80U);
  int greatest = 0;
  for (size_t i = 5; i + 5 < rows.size(); ++i)
    for (int channel = 0; channel < 3; ++channel)
      greatest =
          std::max(greatest, std::abs(picture.pixel(60, rows[i])[channel] - picture.pixel(140, rows[i])[channel]));
  legend->setIsovaluesList(nullptr);
  legend->setDataMapping(nullptr);
  return greatest;
}

}  // namespace

TEST(LegendColors, BoxesOfValuesMatchBands) {
  PbLinearDataMapping mapping;
  mapping.setValues(0, SbColor(0.1F, 0.2F, 0.7F), 10, SbColor(0.9F, 0.8F, 0.3F));
  const float levels[] = {0, 2, 3, 6, 8};
  PbIsovaluesList isovalues;
  isovalues.setIrregularIsoList(5, levels);
  PbRegularCartesianGrid2D mesh(2, 11, 0, 0, 1, 1, 1);
  std::vector<float> values;
  for (int i = 0; i < 2; ++i)
    for (int j = 0; j < 11; ++j) values.push_back(static_cast<float>(j));
  mesh.addValuesSet(0, values.data(), "value");
  NodePtr<PoMeshFilled> filled(new PoMeshFilled);
  filled->setMesh(&mesh);
  filled->setDataMapping(&mapping);
  filled->setIsovaluesList(&isovalues);
  filled->valuesIndex = 0;
  filled->coloringType = PoMesh::COLOR_CONTOURING;
  NodePtr<SoSeparator> root(new SoSeparator);
  auto* light = new SoLightModel;
  root->addChild(light);
  light->model = SoLightModel::BASE_COLOR;
  root->addChild(filled.get());
  PiOffscreen offscreen(200, 200);
  PiViewpoint viewpoint;
  viewpoint.direction = SbVec3f(0, 0, -1);
  offscreen.setViewpoint(viewpoint);
  ASSERT_TRUE(offscreen.draw(root.get())) << offscreen.error();
  std::vector<int> rows;  // of the mesh, from below
  for (int y = 199; y >= 0; --y)
    if (std::min({offscreen.picture().pixel(100, y)[0], offscreen.picture().pixel(100, y)[1],
                  offscreen.picture().pixel(100, y)[2]}) < 255)
      rows.push_back(y);
  ASSERT_GT(rows.size(), 80U);

  NodePtr<PoNonLinearValueLegend2> legend(new PoNonLinearValueLegend2);
  legend->setDataMapping(&mapping);
  legend->setIsovaluesList(&isovalues);
  legend->rebuild();
  const Soup boxes = Soup::of(legend->getPart("box", FALSE));
  ASSERT_EQ(boxes.triangles.size(), 10U);
  for (size_t i = 0; i < 5; ++i) {
    const float middle = (levels[i] + (i < 4 ? levels[i + 1] : 10)) / 20;
    const auto* pixel =
        offscreen.picture().pixel(100, rows[static_cast<size_t>(middle * static_cast<float>(rows.size()))]);
    for (int channel = 0; channel < 3; ++channel)
      EXPECT_NEAR(pixel[channel] / 255.0, boxes.triangles[2 * i][0].color[channel], 0.01) << i;
  }
  filled->setIsovaluesList(nullptr);
  legend->setIsovaluesList(nullptr);
}

TEST(LegendColors, LongBoxesMatchTheMesh) {
  PbLinearDataMapping linear;
  linear.setValues(2, SbColor(0.1F, 0.2F, 0.7F), 8, SbColor(0.9F, 0.8F, 0.3F));
  const float levels[] = {1, 4, 5, 9};
  const SbColor colors[] = {SbColor(0.8F, 0.1F, 0.1F), SbColor(0.2F, 0.7F, 0.2F), SbColor(0.1F, 0.3F, 0.8F),
                            SbColor(0.8F, 0.7F, 0.1F)};
  PbNonLinearDataMapping2 table;
  table.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 4, levels, colors);
  for (PbDataMapping* mapping : std::initializer_list<PbDataMapping*>{&linear, &table}) {
    auto* first = new PoLinearValueLegend;
    first->lowerUpperBoxes = FALSE;
    EXPECT_LE(greatestDifference(*mapping, first, 0, 10), 4);
    auto* third = new PoNonLinearValueLegend3;
    third->lowerUpperBoxes = FALSE;
    EXPECT_LE(greatestDifference(*mapping, third, 0, 10), 4);
  }
}
