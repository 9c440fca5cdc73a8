#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoStreamLine.h>
#include <Ormelle/PoStreamSurface.h>

#include "quillane/stream/PiStreamPath.h"
#include "quillane/stream/PiStreamStrip.h"
#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

/// A flow of speed 2 along x through the box from 0 0 0 to 8 4 4, whose values are x.
class StreamKits : public ::testing::Test {
 protected:
  void SetUp() override {
    PoOrmelle::init();
    m_mesh = std::make_unique<PbRegularCartesianGrid3D>(17, 9, 9, 0.0f, 0.0f, 0.0f, 8.0f, 4.0f, 4.0f, 1);
    setFlow([](const SbVec3f&) { return SbVec3f(2, 0, 0); });
    std::vector<float> x;
    for (int i = 0; i < m_mesh->getNumNodes(); ++i) x.push_back(m_mesh->getNodeCoord(i)[0]);
    m_mesh->addValuesSet(0, x.data(), "x");
    m_mapping.setValues(0, SbColor(0, 0, 0), 8, SbColor(1, 1, 1));
  }
  void TearDown() override {
    m_mesh.reset();
    PoOrmelle::finish();
  }

  template <class Flow>
  void setFlow(Flow&& flow) {
    std::vector<SbVec3f> vectors;
    for (int i = 0; i < m_mesh->getNumNodes(); ++i) vectors.push_back(flow(m_mesh->getNodeCoord(i)));
    m_mesh->addVecsSet(0, vectors.data(), "flow");
  }
  template <class Kit>
  NodePtr<Kit> make(const std::vector<SbVec3f>& starts) {
    NodePtr<Kit> kit(new Kit);
    kit->startPoints.setValues(0, static_cast<int>(starts.size()), starts.data());
    kit->setMesh(m_mesh.get());
    kit->vecsIndex = 0;
    kit->integrationStepLengthFactor = 0.2f;
    return kit;
  }

  std::unique_ptr<PbRegularCartesianGrid3D> m_mesh;
  PbLinearDataMapping m_mapping;
};

const SbVec3f kStart(0.1f, 2.1f, 2.3f);

TEST_F(StreamKits, LinesFollowTheFlowInTheirColors) {
  auto kit = make<PoStreamLine>({kStart, SbVec3f(1.1f, 1.2f, 1.3f), SbVec3f(99, 0, 0)});
  kit->colors.set1Value(0, SbColor(1, 0, 0));
  kit->colors.set1Value(1, SbColor(0, 1, 0));
  const Soup soup = Soup::of(kit.get());
  EXPECT_NEAR(soup.length(), 7.9 + 6.9, 0.4);  // the last step of each is not drawn
  for (const SoupSegment& segment : soup.segments) {
    const bool isFirst = std::abs(segment[0].point[1] - 2.1f) < 1e-4f;
    EXPECT_EQ(segment[0].color, isFirst ? SbColor(1, 0, 0) : SbColor(0, 1, 0));
    EXPECT_NEAR(segment[1].point[2], isFirst ? 2.3f : 1.3f, 1e-5f);
  }
}

TEST_F(StreamKits, MappedLinesHaveTheColorOfTheirValuesAndGapsWithoutOne) {
  auto kit = make<PoStreamLine>({kStart});
  m_mapping.setMinThreshold(2);
  m_mapping.enableThresholds(1, 0);
  kit->setDataMapping(&m_mapping);
  kit->valuesIndex = 0;
  const Soup soup = Soup::of(kit.get());
  ASSERT_GT(soup.segments.size(), 10u);
  for (const SoupSegment& segment : soup.segments)
    for (const SoupVertex& vertex : segment) {
      EXPECT_GT(vertex.point[0], 2);
      EXPECT_NEAR(vertex.color[0], vertex.point[0] / 8, 1e-3f);
    }
}

TEST_F(StreamKits, ChangesOfLookNeverIntegrateAgain) {
  auto kit = make<PoStreamLine>({kStart});
  kit->setDataMapping(&m_mapping);
  kit->valuesIndex = 0;
  Soup::of(kit.get());
  const unsigned int id = kit->getPathsId();
  ASSERT_GT(id, 0u);
  kit->lineWidth = 5;
  kit->colors.setValue(1, 0, 0);
  m_mapping.setValues(0, SbColor(1, 0, 0), 8, SbColor(0, 0, 1));
  EXPECT_NEAR(Soup::of(kit.get()).segments.back()[1].color[2], 0.95f, 0.06f);
  EXPECT_EQ(kit->getPathsId(), id);
  kit->maxLength = 3;
  EXPECT_NEAR(Soup::of(kit.get()).length(), 3, 0.2);
  EXPECT_EQ(kit->getPathsId(), id + 1);
}

TEST_F(StreamKits, SurfaceIsAFlatStripInAnEvenFlow) {
  auto kit = make<PoStreamSurface>({kStart});
  kit->rakeOrientation.setValue(0, 7, 0);
  kit->numLinesPerRake = 5;
  kit->rakeLength = 2;
  const Soup soup = Soup::of(kit.get());
  EXPECT_NEAR(soup.area(), 2 * 7.9, 0.3);
  EXPECT_NEAR(soup.box().getMin()[1], 1.1f, 1e-5f);
  EXPECT_NEAR(soup.box().getMax()[1], 3.1f, 1e-5f);
  for (const SoupTriangle& triangle : soup.triangles) {
    const SbVec3f facet = (triangle[1].point - triangle[0].point).cross(triangle[2].point - triangle[0].point);
    for (const SoupVertex& vertex : triangle) EXPECT_GT(vertex.normal.dot(facet), 0);
  }
}

TEST_F(StreamKits, SurfaceOfATurningFlowIsWhole) {
  setFlow([](const SbVec3f& p) { return SbVec3f(2 - p[1], p[0] - 4, 0); });
  auto kit = make<PoStreamSurface>({SbVec3f(5, 2, 2)});
  kit->rakeOrientation.setValue(1, 0, 0);
  kit->numLinesPerRake = 9;
  kit->rakeLength = 1;
  kit->maxLifetime = 3.1415927f;  // half a turn: the outer lines are three times as long as the inner ones
  const double area = 0.5 * 3.14159265 * (1.5 * 1.5 - 0.5 * 0.5);
  EXPECT_NEAR(Soup::of(kit.get()).area(), area, 0.05 * area);
}

TEST_F(StreamKits, SurfaceHasTheColorsOfRakesOrValues) {
  auto kit = make<PoStreamSurface>({kStart, SbVec3f(0.1f, 2.1f, 1.2f)});
  kit->colors.set1Value(0, SbColor(1, 0, 0));
  kit->colors.set1Value(1, SbColor(0, 1, 0));
  for (const SoupTriangle& triangle : Soup::of(kit.get()).triangles)
    EXPECT_EQ(triangle[0].color, triangle[0].point[2] > 2 ? SbColor(1, 0, 0) : SbColor(0, 1, 0));
  m_mapping.setMaxThreshold(5);
  m_mapping.enableThresholds(0, 1);
  kit->setDataMapping(&m_mapping);
  kit->valuesIndex = 0;
  const Soup soup = Soup::of(kit.get());
  EXPECT_LT(soup.box().getMax()[0], 5);
  EXPECT_GT(soup.box().getMax()[0], 4.7f);
  for (const SoupTriangle& triangle : soup.triangles)
    EXPECT_NEAR(triangle[2].color[1], triangle[2].point[0] / 8, 1e-3f);
}

TEST_F(StreamKits, WhatMakesNoPathMakesAnEmptyKit) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  auto line = make<PoStreamLine>({SbVec3f(-1, 0, 0), SbVec3f(nan, 0, 0)});
  auto surface = make<PoStreamSurface>({kStart});
  const auto areEmpty = [&] {
    const Soup lines = Soup::of(line.get()), faces = Soup::of(surface.get());
    return lines.segments.empty() && faces.triangles.empty();
  };
  surface->numLinesPerRake = 1;
  EXPECT_TRUE(areEmpty());
  surface->numLinesPerRake = 3;
  surface->rakeOrientation.setValue(0, 0, 0);
  EXPECT_TRUE(areEmpty());
  surface->rakeOrientation.setValue(nan, 1, 0);
  EXPECT_TRUE(areEmpty());
  surface->rakeOrientation.setValue(0, 1, 0);
  EXPECT_FALSE(areEmpty());
  line->startPoints.setValue(kStart);
  setFlow([](const SbVec3f&) { return SbVec3f(0, 0, 0); });
  EXPECT_TRUE(areEmpty());
  setFlow([nan](const SbVec3f&) { return SbVec3f(nan, 0, 0); });
  EXPECT_TRUE(areEmpty());
  m_mesh.reset();
  EXPECT_TRUE(areEmpty());
}

class NoCells : public PoCellFilter {
 public:
  int acceptCell(int, float) const override { return 0; }
};

TEST_F(StreamKits, AFilterThatRefusesAllLeavesAnEmptyKit) {
  auto kit = make<PoStreamLine>({kStart});
  NodePtr<SoSeparator> root(new SoSeparator);
  root->addChild(new NoCells);
  root->addChild(kit.get());
  EXPECT_TRUE(Soup::of(root.get()).segments.empty());
  root->removeChild(0);
  EXPECT_FALSE(Soup::of(root.get()).segments.empty());
}

TEST_F(StreamKits, IntegrationFromAPointAndFromItsCellAreAlike) {
  auto kit = make<PoStreamLine>({kStart});
  PiStreamPath path, known;
  EXPECT_EQ(path.getNumPoints(), -1);
  float length = 0, time = 0;
  kit->integrateStreamLine(kStart, path, length, time);
  EXPECT_GT(path.getNumPoints(), 10);
  EXPECT_NEAR(length, 7.9f, 0.2f);
  EXPECT_NEAR(time, length / 2, 0.01f);
  EXPECT_EQ(path.getTimes(), nullptr);
  EXPECT_TRUE(path.endsAtSkin());
  SbVec3f pcoord;
  const PbCell* cell = m_mesh->findContainingCell(kStart, 0, pcoord);
  kit->integrateStreamLine(cell, pcoord, kStart, known, length, time, nullptr, nullptr);
  ASSERT_EQ(known.getNumPoints(), path.getNumPoints());
  EXPECT_EQ(known.getPoints()[5], path.getPoints()[5]);
}

TEST_F(StreamKits, FieldsAreTheSameReadBack) {
  auto kit = make<PoStreamSurface>({kStart});
  kit->numLinesPerRake = 7;
  kit->rakeLength = 2.5f;
  const std::string text = textOf(kit.get());
  const auto scene = sceneOf(text);
  ASSERT_TRUE(scene.get());
  EXPECT_EQ(textOf(scene->getChild(0)), text);
}

/// A line of `num` points from `start` by `step`.
std::vector<SbVec3f> lineOf(int num, const SbVec3f& start, const SbVec3f& step) {
  std::vector<SbVec3f> line;
  for (int i = 0; i < num; ++i) line.push_back(start + step * static_cast<float>(i));
  return line;
}

TEST(StreamStrip, KeepsTrianglesWellShapedWhereOneLineIsFaster) {
  const auto slow = lineOf(31, SbVec3f(0, 0, 0), SbVec3f(0, 0.1f, 0));
  const auto fast = lineOf(11, SbVec3f(0.2f, 0, 0), SbVec3f(0, 0.3f, 0));
  std::vector<int> triangles;
  PiStreamStrip::join(slow, 0, fast, 100, triangles);
  EXPECT_EQ(triangles.size(), 3u * 40);
  for (std::size_t t = 0; t < triangles.size(); t += 3) {
    const auto height = [&](int i) { return i < 100 ? slow[std::size_t(i)][1] : fast[std::size_t(i - 100)][1]; };
    const auto [low, high] = std::minmax({height(triangles[t]), height(triangles[t + 1]), height(triangles[t + 2])});
    EXPECT_LE(high - low, 0.301f);
  }
}

TEST(StreamStrip, EndsWhereLinesEndPartOrTurnBack) {
  const auto line = lineOf(21, SbVec3f(0, 0, 0), SbVec3f(0, 0.1f, 0));
  std::vector<int> triangles;
  PiStreamStrip::join(line, 0, lineOf(6, SbVec3f(0.2f, 0, 0), SbVec3f(0, 0.1f, 0)), 100, triangles);
  EXPECT_NEAR(static_cast<double>(triangles.size()) / 3, 10, 1.1);
  triangles.clear();
  PiStreamStrip::join(line, 0, lineOf(21, SbVec3f(0.2f, 0, 0), SbVec3f(0.1f, 0.1f, 0)), 100, triangles);
  EXPECT_GT(triangles.size(), 3u * 5);
  EXPECT_LT(triangles.size(), 3u * 25);  // 0.8 apart, four times 0.2, after six of twenty steps
  triangles.clear();
  PiStreamStrip::join(line, 0, lineOf(21, SbVec3f(0.2f, 0, 0), SbVec3f(0, -0.1f, 0)), 100, triangles);
  EXPECT_TRUE(triangles.empty());
}

}  // namespace
