#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include <Ormelle/PoBase.h>

#include "quillane/stream/PiParticleSamples.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Along x, at these times; the velocity doubles x, and the value is x too.
struct TimedLine {
  std::vector<SbVec3f> points, velocities;
  std::vector<float> times, values;

  TimedLine(const std::vector<float>& x, const std::vector<float>& t) : times(t), values(x) {
    for (const float coordinate : x) {
      points.emplace_back(coordinate, 1.0f, 0.0f);
      velocities.emplace_back(2 * coordinate, 0.0f, 0.0f);
    }
  }
  PiTimedPath path() const {
    return {static_cast<int>(points.size()), points.data(), times.data(), velocities.data(), values.data()};
  }
};

std::vector<float> xOf(const PiParticleSamples& samples, int path) {
  std::vector<float> x;
  for (const PiParticleSamples::Sample& sample : samples.samplesOf(path)) x.push_back(sample.point[0]);
  return x;
}

TEST(ParticleSamples, StandAtEqualTimesBelowThatOfTheEnd) {
  const TimedLine line({0, 4, 5, 9}, {0, 1, 3, 4});
  PiParticleSamples samples;
  samples.sample({line.path()}, 0.5f, 0.5f);
  // 4 itself is out.
  EXPECT_EQ(xOf(samples, 0), (std::vector<float>{2, 4, 4.25f, 4.5f, 4.75f, 5, 7}));
  for (const PiParticleSamples::Sample& sample : samples.samplesOf(0)) {
    EXPECT_EQ(sample.velocity[0], 2 * sample.point[0]);
    EXPECT_EQ(sample.value, sample.point[0]);
    EXPECT_EQ(sample.point[1], 1);
    EXPECT_EQ(samples.vertices()[static_cast<std::size_t>(sample.vertex)], sample.point);
  }
  ASSERT_EQ(samples.vertices().size(), 11u);
  for (std::size_t v = 1; v < 11; ++v) EXPECT_GE(samples.vertices()[v][0], samples.vertices()[v - 1][0]);
  EXPECT_EQ(samples.vertices().front()[0], 0);
  EXPECT_EQ(samples.endOf(0)[0], 9);
}

/// Each answer in a moment, however small the step is beside the time.
TEST(ParticleSamples, OddTimesHaveAnAnswer) {
  const TimedLine line({0, 1, 2}, {0, 1, 2});
  const struct {
    const char* name;
    float start, step;
    std::vector<float> x;
  } rows[] = {
      {"no step", 0, 0, {}},
      {"a step back", 0, -1, {}},
      {"a step that is no number", 0, kNan, {}},
      {"an endless step", 0.5f, kInfinity, {0.5f}},
      {"a start that is no number", kNan, 1, {}},
      {"an endless start", kInfinity, 1, {}},
      {"an endless time ago", -kInfinity, 1, {}},
      {"a start behind the end", 2, 1, {}},
      {"a start before the beginning keeps its beat", -1.75f, 0.5f, {0.25f, 0.75f, 1.25f, 1.75f}},
      {"long before", -16777216, 1, {0, 1}},
  };
  PiParticleSamples samples;
  for (const auto& row : rows) {
    samples.sample({line.path()}, row.start, row.step);
    EXPECT_EQ(xOf(samples, 0), row.x) << row.name;
  }
  samples.sample({line.path()}, -3e38f, 1e-38f, 1000);
  EXPECT_LE(samples.numSamples(), 1000u);
}

TEST(ParticleSamples, TooManyAreSharedOut) {
  const TimedLine shortLine({0, 1}, {0, 1});
  const TimedLine longLine({0, 1}, {0, 3e38f});
  PiParticleSamples samples;
  samples.sample({longLine.path(), shortLine.path(), longLine.path()}, 0, 0.1f, 90);
  EXPECT_EQ(samples.samplesOf(0).size(), 30u);
  EXPECT_EQ(samples.samplesOf(1).size(), 10u);
  EXPECT_EQ(samples.samplesOf(2).size(), 30u);
  samples.sample({longLine.path()}, 0, 1e-38f, 1000);
  EXPECT_EQ(samples.numSamples(), 1000u);
}

TEST(ParticleSamples, APathCountsUpToWhatIsNoPlaceInTime) {
  const TimedLine times({0, 1, 2, 3}, {0, 1, kNan, 3});
  const TimedLine back({0, 1, 2, 3}, {0, 1, 0.5f, 3});
  const TimedLine points({0, 1, kInfinity, 3}, {0, 1, 2, 3});
  const TimedLine alone({5}, {0});
  const TimedLine still({0, 1, 2, 3}, {0, 0, 2, 2});
  PiParticleSamples samples;
  samples.sample({times.path(), back.path(), points.path(), alone.path(), PiTimedPath(), still.path()}, 0, 0.5f);
  for (const int path : {0, 1, 2}) {
    EXPECT_EQ(xOf(samples, path), (std::vector<float>{0, 0.5f})) << path;
    EXPECT_EQ(samples.numVerticesOf(path), 4) << path;
  }
  for (const int path : {3, 4}) {
    EXPECT_TRUE(xOf(samples, path).empty()) << path;
    EXPECT_EQ(samples.numVerticesOf(path), 0) << path;
  }
  EXPECT_EQ(xOf(samples, 5), (std::vector<float>{1, 1.25f, 1.5f, 1.75f}));
}

TEST(ParticleSamples, AreTheSameForAnyNumberOfThreads) {
  std::vector<TimedLine> lines;
  std::vector<PiTimedPath> paths;
  for (int i = 0; i < 300; ++i)
    lines.push_back(TimedLine({0, 1, 2, 3}, {0, 0.1f * static_cast<float>(i % 7), 1, 1 + static_cast<float>(i % 13)}));
  for (const TimedLine& line : lines) paths.push_back(line.path());
  PiParticleSamples one, three;
  PoBase::setNumThreads(1);
  one.sample(paths, 0.05f, 0.01f);
  PoBase::setNumThreads(3);
  three.sample(paths, 0.05f, 0.01f);
  PoBase::setNumThreads(0);
  EXPECT_GT(one.numSamples(), 100000u);
  EXPECT_EQ(one.vertices(), three.vertices());
}

}  // namespace
