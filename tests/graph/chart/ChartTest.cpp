#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoMesh1DHints.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoPeriodIndexFilter.h>
#include <gtest/gtest.h>

#include "support/TestChart.h"

TEST(Chart, IsRebuiltForItsFieldsAndTheStateItReads) {
  PoOrmelle::init();
  TestChart::initClass();
  NodePtr<SoSeparator> scene(new SoSeparator);
  scene->boundingBoxCaching = SoSeparator::OFF;
  auto* hints = new PoMesh1DHints;
  auto* filter = new PoPeriodIndexFilter;
  auto* chart = new TestChart;
  auto* cached = new SoSeparator;  // its cache must know what the chart reads
  cached->boundingBoxCaching = SoSeparator::ON;
  cached->addChild(chart);
  for (SoNode* node : {static_cast<SoNode*>(hints), static_cast<SoNode*>(filter), static_cast<SoNode*>(cached)})
    scene->addChild(node);
  SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
  const auto rebuildsAfter = [&](auto change) {
    change();
    action.apply(scene.get());
    const int former = chart->rebuilds;
    action.apply(scene.get());
    EXPECT_EQ(chart->rebuilds, former) << "nothing changed";
    return chart->rebuilds;
  };
  int rebuilds = rebuildsAfter([] {});
  EXPECT_EQ(rebuilds, 1);
  EXPECT_EQ(rebuildsAfter([&] { chart->yValuesIndex = 1; }), ++rebuilds);
  EXPECT_EQ(rebuildsAfter([&] { chart->colorBinding = PoChart::PER_PART; }), ++rebuilds);
  auto* material = new SoMaterial;
  EXPECT_EQ(rebuildsAfter([&] { chart->material = material; }), ++rebuilds);
  EXPECT_EQ(rebuildsAfter([&] { material->shininess = 1; }), ++rebuilds) << "a change within the material";
  EXPECT_EQ(rebuildsAfter([&] { hints->geomInterpretation = PoMesh1DHints::SMOOTH; }), ++rebuilds);
  EXPECT_EQ(rebuildsAfter([&] { filter->period = 3; }), ++rebuilds);
}
