#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoOrmelle.h>

#include "quillane/stream/PiStreamIntegrator.h"
#include "support/MeshFamily.h"

namespace {

using Flow = std::function<SbVec3f(const SbVec3f&)>;

const Flow kRotation = [](const SbVec3f& p) { return SbVec3f(-p[1], p[0], 0); };
const Flow kSaddle = [](const SbVec3f& p) { return SbVec3f(p[0], -p[1], 0); };
const Flow kAlongX = [](const SbVec3f&) { return SbVec3f(2, 0, 0); };

void setFlow(PbMesh& mesh, const Flow& flow) {
  std::vector<SbVec3f> vectors;
  for (int node = 0; node < mesh.getNumNodes(); ++node) vectors.push_back(flow(mesh.getNodeCoord(node)));
  mesh.addVecsSet(0, vectors.data(), "flow");
}

std::unique_ptr<PbRegularCartesianGrid3D> cube(int num, const Flow& flow) {
  auto mesh = std::make_unique<PbRegularCartesianGrid3D>(num, num, num, -1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F, 1);
  setFlow(*mesh, flow);
  return mesh;
}

PiStreamTrack follow(const PbMesh& mesh, const SbVec3f& start, const PiStreamLimits& limits = {}) {
  PiStreamField field;
  field.mesh = &mesh;
  field.vectors = mesh.getVecsSet(0);
  std::vector<PiStreamTrack> tracks;
  PiStreamIntegrator::integrate(field, limits, 1, &start, tracks);
  return tracks[0];
}

class StreamPaths : public ::testing::Test {
 protected:
  void SetUp() override { PoOrmelle::init(); }
  void TearDown() override { PoOrmelle::finish(); }
};

TEST_F(StreamPaths, ErrorFallsWithTheSquareOfTheStep) {
  // Linear flows are exact inside cells, so all the error is the method's.
  const auto rotation = cube(9, kRotation), saddle = cube(9, kSaddle);
  double errors[2][2];
  for (int i = 0; i < 2; ++i) {
    PiStreamLimits limits;
    limits.stepFactor = i == 0 ? 0.2F : 0.1F;
    limits.length = 3;
    const PiStreamTrack round = follow(*rotation, SbVec3f(0.5F, 0, 0.1F), limits);
    const PiStreamStep& last = round.steps.back();
    errors[0][i] = std::fabs(std::hypot(last.point[0], last.point[1]) - 0.5);
    EXPECT_NEAR(last.time, std::atan2(last.point[1], last.point[0]) + 2 * std::numbers::pi * (last.point[1] < 0), 0.01);
    limits.length = 1.1F;
    // On a path of the saddle x * y stays the same.
    const PiStreamStep far = follow(*saddle, SbVec3f(0.1F, 0.9F, 0), limits).steps.back();
    errors[1][i] = std::fabs(far.point[0] * far.point[1] - 0.09);
  }
  for (const auto& error : errors) {
    EXPECT_GT(error[0], 3 * error[1]);
    EXPECT_LT(error[0], 0.01);
    EXPECT_GT(error[0], 0);
  }
}

TEST_F(StreamPaths, ForwardThenBackwardReturnsWhileTimeRises) {
  const auto mesh = cube(17, [](const SbVec3f& p) {
    return SbVec3f(std::sin(3 * p[2]) + std::cos(2 * p[1]), std::sin(2 * p[0]) + 0.3F, std::cos(p[0]) * p[1]);
  });
  PiStreamLimits limits;
  limits.stepFactor = 0.05F;
  limits.length = 0.8F;
  const SbVec3f start(-0.4F, -0.3F, 0.2F);
  const PiStreamTrack there = follow(*mesh, start, limits);
  limits.length = there.length + 0.05F;
  limits.isBackward = true;
  const PiStreamTrack back = follow(*mesh, there.steps.back().point, limits);
  // How far the way back passes by the start: its points needn't be those of the way there.
  float nearest = 1;
  for (std::size_t i = 1; i < back.steps.size(); ++i) {
    const SbVec3f& a = back.steps[i - 1].point;
    const SbVec3f along = back.steps[i].point - a;
    const float share = std::clamp((start - a).dot(along) / along.dot(along), 0.0F, 1.0F);
    nearest = std::min(nearest, (a + along * share - start).length());
  }
  EXPECT_LT(nearest, 5e-4F);
  for (std::size_t i = 1; i < back.steps.size(); ++i) EXPECT_GT(back.steps[i].time, back.steps[i - 1].time);
}

TEST_F(StreamPaths, LimitsEndPathsInsideAndOnlyTheMeshEndsThemAtTheSkin) {
  const auto mesh = cube(11, kAlongX);
  const SbVec3f start(-0.9F, 0.05F, 0.05F);
  const PiStreamTrack whole = follow(*mesh, start);
  EXPECT_TRUE(whole.endsAtSkin);
  EXPECT_GT(whole.steps.back().point[0], 1 - 0.3F * 0.2F - 1e-4F);
  EXPECT_NEAR(whole.time, whole.length / 2, 1e-4F);

  PiStreamLimits limits;
  limits.numSteps = 7;
  const PiStreamTrack few = follow(*mesh, start, limits);
  EXPECT_EQ(few.steps.size(), 7U);
  EXPECT_FALSE(few.endsAtSkin);
  limits = {};
  limits.time = 0.25F;
  EXPECT_NEAR(follow(*mesh, start, limits).time, 0.25F, 0.03F + 1e-4F);
  limits = {};
  limits.length = 1;
  EXPECT_FALSE(follow(*mesh, start, limits).endsAtSkin);
  limits = {};
  limits.minSpeed = 2;
  EXPECT_TRUE(follow(*mesh, start, limits).steps.empty());
}

TEST_F(StreamPaths, SmallerCellsShortenTheSteps) {
  const float x[] = {0, 1, 2, 2.2F, 2.4F, 2.6F, 2.8F, 3}, y[] = {0, 0.2F};
  PbParalCartesianGrid3D mesh(8, 2, 2, x, y, y, 1);
  setFlow(mesh, kAlongX);
  const PiStreamTrack path = follow(mesh, SbVec3f(0.1F, 0.1F, 0.1F));
  bool sawShort = false;
  for (std::size_t i = 1; i < path.steps.size(); ++i) {
    const float step = path.steps[i].point[0] - path.steps[i - 1].point[0];
    EXPECT_NEAR(step, path.steps[i - 1].point[0] < 2 ? 0.3F : 0.06F, 1e-4F);
    sawShort = sawShort || step < 0.1F;
  }
  EXPECT_TRUE(sawShort);
}

TEST_F(StreamPaths, EveryMeshClassGivesTheSamePath) {
  const Flow flow = [](const SbVec3f& p) { return SbVec3f(1, 0.1F * p[0], 0); };
  const auto endOf = [](const PbMesh& mesh, const SbVec3f& start) {
    PiStreamLimits limits;
    limits.stepFactor = 0.02F;
    const PiStreamTrack track = follow(mesh, start, limits);
    EXPECT_TRUE(track.endsAtSkin);
    return track.steps.empty() ? SbVec3f(0, 0, 0) : track.steps.back().point;
  };
  for (const MeshKind3D& kind : meshKinds3D()) {
    SCOPED_TRACE(kind.name);
    auto sample = kind.make(BoxSpec(), 1);
    setFlow(*sample.mesh, flow);
    const SbVec3f end = endOf(*sample.mesh, SbVec3f(1.1F, 0.2F, 2.3F));
    EXPECT_NEAR(end[0], 3, 0.1F);
    EXPECT_NEAR(end[1], 0.2F + 0.05F * (end[0] * end[0] - 1.21F), 0.01F);
  }
  for (const MeshKind2D& kind : meshKinds2D()) {
    SCOPED_TRACE(kind.name);
    auto sample = kind.make(RectangleSpec(), 1);
    setFlow(*sample.mesh, kAlongX);
    const SbBox2f box = sample.mesh->getBoundingBox();
    const SbVec2f middle = box.getCenter();
    const PiStreamTrack track = follow(*sample.mesh, SbVec3f(middle[0], middle[1], 0));
    EXPECT_FALSE(track.steps.empty());
    EXPECT_TRUE(track.endsAtSkin);
  }
}

TEST_F(StreamPaths, NothingIsEndless) {
  const auto orbit = cube(9, kRotation);
  PiStreamLimits limits;
  limits.stepFactor = 1e-6F;
  const PiStreamTrack slow = follow(*orbit, SbVec3f(0.5F, 0, 0), limits);
  EXPECT_LE(slow.steps.size(), static_cast<std::size_t>(PiStreamIntegrator::boundOfSteps(1)));
  limits.stepFactor = 1e-30F;
  EXPECT_EQ(follow(*orbit, SbVec3f(0.5F, 0, 0), limits).steps.size(), 1U);
  limits.stepFactor = std::numeric_limits<float>::infinity();
  EXPECT_LE(follow(*orbit, SbVec3f(0.5F, 0, 0), limits).steps.size(), 1U);
  for (const float factor : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
    limits.stepFactor = factor;
    EXPECT_TRUE(follow(*orbit, SbVec3f(0.5F, 0, 0), limits).steps.empty());
  }
  EXPECT_EQ(PiStreamIntegrator::boundOfSteps(1000000), 1000);
}

TEST_F(StreamPaths, WhatIsUndefinedMakesNoPath) {
  const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
  for (const float number : {0.0F, nan, inf}) {
    const auto mesh = cube(5, [number](const SbVec3f&) { return SbVec3f(number, 0, 0); });
    EXPECT_TRUE(follow(*mesh, SbVec3f(0.1F, 0.1F, 0.1F)).steps.empty());
  }
  const auto mesh = cube(5, kAlongX);
  for (const SbVec3f& start : {SbVec3f(2, 0, 0), SbVec3f(nan, 0, 0), SbVec3f(0, inf, 0)})
    EXPECT_TRUE(follow(*mesh, start).steps.empty());
  // A path that runs into undefined vectors stops before them.
  const auto half = cube(9, [nan](const SbVec3f& p) { return SbVec3f(p[0] > 0.4F ? nan : 1.0F, 0, 0); });
  const PiStreamTrack track = follow(*half, SbVec3f(-0.9F, 0.1F, 0.1F));
  EXPECT_GT(track.steps.size(), 3U);
  EXPECT_FALSE(track.endsAtSkin);
  for (const PiStreamStep& step : track.steps) EXPECT_LT(step.point[0], 0.5F);
}

TEST_F(StreamPaths, AreTheSameForAnyNumberOfThreads) {
  const auto mesh = cube(9, kSaddle);
  std::vector<SbVec3f> starts;
  for (int i = 0; i < 100; ++i) starts.emplace_back(0.01F * static_cast<float>(i) - 0.5F, 0.4F, 0.1F);
  PiStreamField field;
  field.mesh = mesh.get();
  field.vectors = mesh->getVecsSet(0);
  std::vector<PiStreamTrack> tracks[2];
  for (int run = 0; run < 2; ++run) {
    PoBase::setNumThreads(run == 0 ? 1 : 4);
    PiStreamIntegrator::integrate(field, {}, 100, starts.data(), tracks[run]);
  }
  PoBase::setNumThreads(0);
  for (std::size_t i = 0; i < 100; ++i) {
    ASSERT_EQ(tracks[0][i].steps.size(), tracks[1][i].steps.size());
    EXPECT_EQ(tracks[0][i].length, tracks[1][i].length);
    if (!tracks[0][i].steps.empty()) {
      EXPECT_EQ(tracks[0][i].steps.back().point, tracks[1][i].steps.back().point);
    }
  }
}

TEST_F(StreamPaths, ClosedOrbitsStayClosed) {
  const auto mesh = cube(9, kRotation);
  float gaps[2];
  for (int run = 0; run < 2; ++run) {
    PiStreamLimits limits;
    limits.stepFactor = run == 0 ? 0.2F : 0.1F;
    limits.time = 2 * std::numbers::pi_v<float>;
    const PiStreamTrack track = follow(*mesh, SbVec3f(0.5F, 0, 0), limits);
    // The last point kept is a step before the end; the circle tells how far off it is.
    gaps[run] = std::fabs(track.steps.back().point.length() - 0.5F);
    EXPECT_NEAR(track.length, std::numbers::pi_v<float>, 0.03F);
  }
  EXPECT_LT(gaps[1], 0.005F);
  EXPECT_LT(gaps[1], gaps[0] / 3);
}

}  // namespace
