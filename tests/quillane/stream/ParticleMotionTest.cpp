#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include <Inventor/SbTime.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoBlinker.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/sensors/SoSensorManager.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoStreamLineMotion.h>
#include <Ormelle/PoStreamPointMotion.h>
#include <Ormelle/PoStreamSphereMotion.h>
#include <Ormelle/PoStreamTadpoleMotion.h>

#include "support/NodePtr.h"
#include "support/SceneText.h"
#include "support/Soup.h"

namespace {

/// A flow of speed 2 along x through a strip from 0 to 20, from three starts: so all times and places are known.
class ParticleMotion : public ::testing::Test {
 protected:
  void SetUp() override {
    PoOrmelle::init();
    m_mesh = std::make_unique<PbRegularCartesianGrid2D>(41, 5, 0.0f, 0.0f, 20.0f, 4.0f, 1);
    m_vectors.assign(205, SbVec3f(2, 0, 0));
    m_mesh->addVecsSet(0, m_vectors.data(), "v");
    std::vector<float> x;
    for (int i = 0; i < 205; ++i) x.push_back(m_mesh->getNodeCoord(i)[0]);
    m_mesh->addValuesSet(0, x.data(), "x");
  }
  void TearDown() override {
    m_mesh.reset();
    PoOrmelle::finish();
  }

  template <class Kit>
  NodePtr<Kit> make() {
    NodePtr<Kit> kit(new Kit);
    const SbVec3f starts[] = {SbVec3f(0.25f, 1.1f, 0), SbVec3f(0.25f, 2.2f, 0), SbVec3f(0.25f, 3.3f, 0)};
    kit->startPoints.setValues(0, 3, starts);
    kit->setMesh(m_mesh.get());
    kit->vecsIndex = 0;
    kit->isBlinking = FALSE;
    kit->isStartRandomized = FALSE;
    return kit;
  }

  std::unique_ptr<PbRegularCartesianGrid2D> m_mesh;
  std::vector<SbVec3f> m_vectors;
};

SoBlinker* blinkerOf(SoBaseKit* kit, const char* part) {
  auto* group = static_cast<SoGroup*>(kit->getPart(part, FALSE));
  if (!group) return nullptr;
  for (int i = 0; i < group->getNumChildren(); ++i)
    if (group->getChild(i)->isOfType(SoBlinker::getClassTypeId())) return static_cast<SoBlinker*>(group->getChild(i));
  return nullptr;
}

const char* const kPoints = "groupStreamPointMotion";

/// The points of a frame of an up-to-date kit.
std::vector<SbVec3f> pointsOf(PoStreamPointMotion* kit, int frame) {
  std::vector<SbVec3f> points;
  const SoBlinker* blinker = blinkerOf(kit, kPoints);
  if (!blinker) return points;
  auto* group = static_cast<SoGroup*>(blinker->getChild(frame));
  for (int i = 0; i < group->getNumChildren(); ++i)
    if (group->getChild(i)->isOfType(SoCoordinate3::getClassTypeId())) {
      const SoMFVec3f& field = static_cast<SoCoordinate3*>(group->getChild(i))->point;
      points.assign(field.getValues(0), field.getValues(0) + field.getNum());
    }
  return points;
}

void traverse(SoNode* node) { Soup::of(node); }

TEST_F(ParticleMotion, EachFrameMovesTheParticlesByATimeStep) {
  auto kit = make<PoStreamPointMotion>();
  kit->timeStep = 0.5f;
  kit->shiftStart = 0.25f;
  kit->pulseFrequency = 4;
  traverse(kit.get());
  ASSERT_NE(blinkerOf(kit.get(), kPoints), nullptr);
  ASSERT_EQ(blinkerOf(kit.get(), kPoints)->getNumChildren(), 4);
  std::size_t num = 0;
  for (int frame = 0; frame < 4; ++frame) {
    const std::vector<SbVec3f> points = pointsOf(kit.get(), frame);
    num += points.size();
    ASSERT_EQ(points.size() % 3, 0u);
    for (std::size_t p = 0; p < points.size(); ++p) {
      const auto onLine = static_cast<int>(p % (points.size() / 3));
      const float time = 0.25f + 0.5f * static_cast<float>(frame + 4 * onLine);
      EXPECT_NEAR(points[p][0], 0.25f + 2 * time, 1e-4) << frame;
      EXPECT_NEAR(points[p][1], 1.1f * static_cast<float>(p / (points.size() / 3) + 1), 1e-4);
    }
  }
  // The path is 19 and something long, so that all samples are in one frame each.
  EXPECT_GE(num, 3u * 19);
  EXPECT_LE(num, 3u * 20);
}

TEST_F(ParticleMotion, ViewFieldsNeitherIntegrateNorBuildFrames) {
  auto kit = make<PoStreamPointMotion>();
  kit->timeStep = 0.5f;
  traverse(kit.get());
  const unsigned int paths = kit->getPathsId();
  EXPECT_GT(paths, 0u);
  const SoBlinker* blinker = blinkerOf(kit.get(), kPoints);
  const NodePtr<SoNode> keepsTheAddress(const_cast<SoBlinker*>(blinker));
  const struct {
    int asked, shown;
  } frames[] = {{3, 3}, {7, 2}, {-1, 4}, {-5, 0}, {std::numeric_limits<int>::min(), 2}, {5, 0}};
  for (const auto& frame : frames) {
    kit->viewFrame = frame.asked;
    traverse(kit.get());
    EXPECT_EQ(blinker->whichChild.getValue(), frame.shown) << frame.asked;
  }
  kit->blinkSpeed = 7;
  kit->isBlinking = TRUE;
  traverse(kit.get());
  EXPECT_EQ(blinker->speed.getValue(), 7);
  EXPECT_TRUE(blinker->on.getValue());
  EXPECT_EQ(blinkerOf(kit.get(), kPoints), blinker);

  // With another field, or something that no field tells, the frames are made anew; paths only if they are others.
  kit->viewFrame = 1;
  kit->pointSize = 5;
  traverse(kit.get());
  EXPECT_NE(blinkerOf(kit.get(), kPoints), blinker);
  PbLinearDataMapping mapping;
  for (const auto& change : std::vector<std::function<void()>>{
           [&] { kit->setDataMapping(&mapping); },
           [&] { mapping.setValues(0, SbColor(0, 0, 0), 20, SbColor(1, 0, 0)); }, [&] { kit->touchKit(); },
           [&] { kit->timeStep = 0.25f; }, [&] { kit->shiftStart = 1; }}) {
    const NodePtr<SoNode> before(blinkerOf(kit.get(), kPoints));
    change();
    kit->viewFrame = kit->viewFrame.getValue() + 1;
    traverse(kit.get());
    EXPECT_NE(blinkerOf(kit.get(), kPoints), before.get());
    EXPECT_EQ(kit->getPathsId(), paths);
  }
  kit->maxLength = 5;
  traverse(kit.get());
  EXPECT_EQ(kit->getPathsId(), paths + 1);
  m_mesh->addVecsSet(0, m_vectors.data(), "v");
  traverse(kit.get());
  EXPECT_EQ(kit->getPathsId(), paths + 2);
  kit->setDataMapping(nullptr);
}

TEST_F(ParticleMotion, RandomStartsAreThoseOfTheSeed) {
  const auto firstPoints = [](PoStreamPointMotion* kit) {
    traverse(kit);
    return pointsOf(kit, 0);
  };
  auto kit = make<PoStreamPointMotion>();
  kit->timeStep = 0.25f;
  kit->pulseFrequency = 16;
  std::srand(11);
  std::vector<int> draws;
  for (int i = 0; i < 3; ++i) draws.push_back(std::rand() % 16);
  std::srand(11);
  kit->isStartRandomized = TRUE;
  const std::vector<SbVec3f> points = firstPoints(kit.get());
  for (std::size_t line = 0; line < 3; ++line) {
    const auto ofLine = std::find_if(points.begin(), points.end(), [&](const SbVec3f& p) {
      return std::fabs(p[1] - 1.1f * static_cast<float>(line + 1)) < 0.1f;
    });
    ASSERT_NE(ofLine, points.end());
    EXPECT_NEAR((*ofLine)[0], 0.25f + 0.5f * static_cast<float>(draws[line]), 1e-4);
  }
  // What doesn't integrate doesn't draw either.
  kit->viewFrame = 3;
  EXPECT_EQ(firstPoints(kit.get()), points);
  kit->pointSize = 7;
  EXPECT_EQ(firstPoints(kit.get()), points);
  std::srand(11);
  auto other = make<PoStreamPointMotion>();
  other->timeStep = 0.25f;
  other->pulseFrequency = 16;
  other->isStartRandomized = TRUE;
  EXPECT_EQ(firstPoints(other.get()), points);
}

TEST_F(ParticleMotion, WhatMakesNoParticlesIsEmpty) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const struct {
    const char* name;
    std::function<void(PoStreamParticleMotion&)> change;
  } rows[] = {
      {"no time step", [](PoStreamParticleMotion& kit) { kit.timeStep = 0; }},
      {"a time step that is no number", [nan](PoStreamParticleMotion& kit) { kit.timeStep = nan; }},
      {"no frames", [](PoStreamParticleMotion& kit) { kit.pulseFrequency = 0; }},
      {"less than no frames", [](PoStreamParticleMotion& kit) { kit.pulseFrequency = -3; }},
      {"a shift behind the end", [](PoStreamParticleMotion& kit) { kit.shiftStart = 100; }},
      {"a shift that is no number", [nan](PoStreamParticleMotion& kit) { kit.shiftStart = nan; }},
      {"no vectors", [](PoStreamParticleMotion& kit) { kit.vecsIndex = 3; }},
      {"no index of vectors", [](PoStreamParticleMotion& kit) { kit.vecsIndex = -1; }},
      {"no mesh", [](PoStreamParticleMotion& kit) { kit.setMesh(nullptr); }},
      {"no starts", [](PoStreamParticleMotion& kit) { kit.startPoints.setNum(0); }},
  };
  for (const auto& row : rows) {
    auto tadpoles = make<PoStreamTadpoleMotion>();
    auto spheres = make<PoStreamSphereMotion>();
    auto pulses = make<PoStreamLineMotion>();
    auto points = make<PoStreamPointMotion>();
    for (PoStreamParticleMotion* kit :
         std::initializer_list<PoStreamParticleMotion*>{tadpoles.get(), spheres.get(), pulses.get(), points.get()}) {
      row.change(*kit);
      const Soup soup = Soup::of(kit);
      EXPECT_TRUE(soup.triangles.empty() && soup.segments.empty()) << row.name;
      kit->viewFrame = 2;
      traverse(kit);
    }
    EXPECT_EQ(blinkerOf(points.get(), kPoints), nullptr) << row.name;
  }
  // As many frames as one asks for would never end.
  auto kit = make<PoStreamPointMotion>();
  kit->pulseFrequency = std::numeric_limits<int>::max();
  kit->timeStep = 0.5f;
  traverse(kit.get());
  EXPECT_EQ(blinkerOf(kit.get(), kPoints)->getNumChildren(), 10000);
  EXPECT_EQ(pointsOf(kit.get(), 1).size(), 3u);
}

TEST_F(ParticleMotion, PulsesLieOnTheirPaths) {
  auto kit = make<PoStreamLineMotion>();
  kit->pulseFrequency = 3;
  kit->lineColor.setValue(0, 0, 1);
  kit->particleColor.setValue(1, 0, 0);
  double lit[3];
  for (int frame = 0; frame < 3; ++frame) {
    kit->viewFrame = frame;
    lit[frame] = 0;
    double dark = 0;
    for (const SoupSegment& segment : Soup::of(kit.get()).segments) {
      const bool isPulse = segment[0].color == SbColor(1, 0, 0);
      (isPulse ? lit[frame] : dark) += lengthOf(segment);
      if (!isPulse) {
        EXPECT_EQ(segment[0].color, SbColor(0, 0, 1));
        continue;
      }
      // 2 to the second, from 0.25 on: each pulse is the way of a whole second.
      const float second = (std::min(segment[0].point[0], segment[1].point[0]) - 0.25f) / 2;
      EXPECT_EQ(static_cast<int>(second + 1e-3f) % 3, frame) << second;
    }
    EXPECT_NEAR(dark, 3 * 19.5, 1.5);
  }
  // One frame takes up where the other ends: together they are the paths.
  EXPECT_NEAR(lit[0] + lit[1] + lit[2], Soup::of(kit.get()).length() - lit[2], 1e-2);
}

TEST_F(ParticleMotion, TadpolesLieAlongTheVelocity) {
  auto kit = make<PoStreamTadpoleMotion>();
  kit->lengthFactor = 0.5f;
  kit->backColor.setValue(0, 1, 0);
  kit->particleColor.setValue(1, 0, 0);
  const SbColor given[] = {SbColor(0, 0, 0.25f), SbColor(0, 0, 0.5f)};
  for (const bool hasColors : {false, true}) {
    if (hasColors) kit->colors.setValues(0, 2, given);
    const Soup soup = Soup::of(kit.get());
    ASSERT_EQ(soup.segments.size() % 6, 0u);
    ASSERT_GT(soup.segments.size(), 0u);
    for (std::size_t s = 0; s < soup.segments.size(); s += 2) {
      const SoupVertex &tail = soup.segments[s][0], &spot = soup.segments[s][1], &head = soup.segments[s + 1][1];
      EXPECT_LT((spot.point - tail.point - SbVec3f(0.75f, 0, 0)).length(), 1e-4);
      EXPECT_LT((head.point - spot.point - SbVec3f(0.25f, 0, 0)).length(), 1e-4);
      EXPECT_EQ(tail.color, SbColor(0, 1, 0));
      EXPECT_EQ(head.color, SbColor(0, 1, 0));
      const int line = static_cast<int>(spot.point[1] / 1.1f + 0.5f) - 1;
      EXPECT_EQ(spot.color, hasColors ? given[std::min(line, 1)] : SbColor(1, 0, 0));
    }
  }
}

TEST_F(ParticleMotion, SpheresStandWhereParticlesAreAndCanBePicked) {
  PbLinearDataMapping mapping;
  mapping.setValues(0, SbColor(0, 0, 0), 20, SbColor(1, 0, 0));
  mapping.setMaxThreshold(15);
  mapping.enableThresholds(0, 1);
  auto kit = make<PoStreamSphereMotion>();
  kit->sphereRadius = 0.25f;
  kit->pulseFrequency = 2;
  kit->valuesIndex = 0;
  kit->setDataMapping(&mapping);
  const Soup soup = Soup::of(kit.get());
  ASSERT_FALSE(soup.triangles.empty());
  std::set<int> places;
  for (const SoupTriangle& triangle : soup.triangles) {
    const int place = static_cast<int>(std::lround((triangle[0].point[0] - 0.25f) / 2));
    places.insert(place);
    const float x = 0.25f + 2 * static_cast<float>(place);
    EXPECT_EQ(place % 2, 0);
    EXPECT_NEAR(triangle[0].color[0], x / 20, 1e-3);
    for (const SoupVertex& vertex : triangle) {
      SbVec3f from = vertex.point;
      from[0] -= x;
      from[1] -= 1.1f * std::round(from[1] / 1.1f);
      EXPECT_NEAR(from.length(), 0.25f, 1e-4);
      EXPECT_GT(from.dot(vertex.normal), 0.24f);
    }
  }
  EXPECT_EQ(places, (std::set<int>{0, 2, 4, 6})) << "beyond 15 there is no colour";

  SoRayPickAction pick(SbViewportRegion(100, 100));
  pick.setRay(SbVec3f(8.3f, 2.2f, 5), SbVec3f(0, 0, -1));
  pick.apply(kit.get());
  ASSERT_NE(pick.getPickedPoint(), nullptr);
  kit->sphereRadius = 0;
  EXPECT_TRUE(Soup::of(kit.get()).triangles.empty());
  kit->setDataMapping(nullptr);
}

void letTimePass(double seconds) {
  const SbTime end = SbTime::getTimeOfDay() + SbTime(seconds);
  while (SbTime::getTimeOfDay() < end) {
    SoDB::getSensorManager()->processTimerQueue();
    SoDB::getSensorManager()->processDelayQueue(TRUE);
  }
}

TEST_F(ParticleMotion, BlinksByTheClockFromTheViewFrameOnAndRebuildsNothing) {
  auto kit = make<PoStreamPointMotion>();
  kit->isBlinking = TRUE;
  kit->viewFrame = 3;
  kit->blinkSpeed = 20;
  int rebuilds = 0;
  kit->addPostRebuildCallback([](void* count, PoBase*) { ++*static_cast<int*>(count); }, &rebuilds);
  traverse(kit.get());
  const SoBlinker* blinker = blinkerOf(kit.get(), kPoints);
  EXPECT_EQ(blinker->whichChild.getValue(), 3) << "without an event loop there is no clock";
  std::set<int> seen;
  for (int i = 0; i < 100 && seen.size() < 3; ++i) {
    letTimePass(0.02);
    traverse(kit.get());
    seen.insert(blinker->whichChild.getValue());
  }
  EXPECT_GE(seen.size(), 3u);
  EXPECT_EQ(rebuilds, 1);
  kit->isBlinking = FALSE;
  traverse(kit.get());
  EXPECT_EQ(blinker->whichChild.getValue(), 3);
  letTimePass(0.1);
  EXPECT_EQ(blinker->whichChild.getValue(), 3);
  EXPECT_EQ(blinkerOf(kit.get(), kPoints), blinker);

  for (const float speed :
       {0.0f, -2.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    kit->isBlinking = TRUE;
    kit->blinkSpeed = speed;
    traverse(kit.get());
    letTimePass(0.05);
    EXPECT_EQ(blinker->whichChild.getValue(), 3) << speed;
  }
  // A kit that dies while its blinker waits for the clock, or blinks.
  kit->blinkSpeed = 20;
  traverse(kit.get());
  kit.reset();
  auto blinking = make<PoStreamSphereMotion>();
  blinking->isBlinking = TRUE;
  traverse(blinking.get());
  letTimePass(0.1);
  blinking.reset();
  letTimePass(0.1);
}

TEST_F(ParticleMotion, SurvivesItsData) {
  auto kit = make<PoStreamTadpoleMotion>();
  EXPECT_FALSE(Soup::of(kit.get()).segments.empty());
  m_mesh.reset();
  EXPECT_TRUE(Soup::of(kit.get()).segments.empty());
}

TEST_F(ParticleMotion, WritesFieldsAndReadsThemBack) {
  auto kit = make<PoStreamTadpoleMotion>();
  kit->pulseFrequency = 9;
  kit->viewFrame = -2;
  kit->backColor.setValue(0, 0, 1);
  kit->lengthFactor = 0.5f;
  traverse(kit.get());
  const std::string text = textOf(kit.get());
  EXPECT_EQ(text.find("Blinker"), std::string::npos) << text;
  EXPECT_NE(text.find("pulseFrequency 9"), std::string::npos);
  EXPECT_NE(text.find("backColor 0 0 1"), std::string::npos);
  const NodePtr<SoSeparator> scene = sceneOf(text);
  ASSERT_TRUE(scene);
  EXPECT_EQ(textOf(scene->getChild(0)), text);
  auto* read = static_cast<PoStreamTadpoleMotion*>(scene->getChild(0));
  read->setMesh(m_mesh.get());
  EXPECT_EQ(Soup::of(read).segments.size(), Soup::of(kit.get()).segments.size());
  const NodePtr<SoNode> copy(kit->copy());
  EXPECT_EQ(Soup::of(copy.get()).segments.size(), Soup::of(kit.get()).segments.size());
}

}  // namespace
