#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <Inventor/SbVec3d.h>

#include "graph/chart/PiPieGeometry.h"
#include "graph/chart/PiPieLayout.h"
#include "graph/chart/PiPieSlices.h"

namespace {

constexpr double kTurn = 6.283185307179586;

std::vector<int> numbers(const PiPieSlices& slices) {
  std::vector<int> result;
  for (const PiPieSlices::Slice& slice : slices.displayed()) result.push_back(slice.number);
  return result;
}

TEST(PieSlices, SmallSlicesBecomeOneIfThereAreTwo) {
  PiPieSlices slices;
  const float three[] = {1, 1, 98};
  slices.compute(3, three, {true, true, 5});
  EXPECT_EQ(numbers(slices), (std::vector<int>{3, -4}));
  EXPECT_DOUBLE_EQ(slices.displayed().back().percent, 2);

  const float two[] = {1, 98};
  slices.compute(2, two, {true, true, 5});
  EXPECT_EQ(numbers(slices), (std::vector<int>{1, 2}));

  const float atLimit[] = {5, 5, 90, 3, 2};
  slices.compute(5, atLimit, {true, false, 5});
  EXPECT_EQ(numbers(slices), (std::vector<int>{1, 2, 3, -6}));
}

TEST(PieSlices, WhatIsNotPositiveTakesNothing) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float infinity = std::numeric_limits<float>::infinity();
  PiPieSlices slices;
  const float values[] = {-5, 3, 0, nan, 1, infinity};
  slices.compute(6, values, {});
  EXPECT_EQ(numbers(slices), (std::vector<int>{2, 5}));
  EXPECT_DOUBLE_EQ(slices.displayed()[0].percent, 75);
  slices.compute(1, values, {});
  EXPECT_TRUE(slices.displayed().empty());
}

TEST(PieSlices, SlicesMakeAFullTurnAndPercentagesAHundred) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::vector<float> values(1 + random() % 40);
    for (float& value : values) value = static_cast<float>(random() % 1000) / 7 + 0.001f;
    PiPieSlices slices;
    slices.compute(static_cast<int>(values.size()), values.data(), {round % 2 == 0, true, 4});
    ASSERT_FALSE(slices.displayed().empty());
    EXPECT_EQ(slices.displayed().front().start, 0);
    EXPECT_EQ(slices.displayed().back().end, kTurn);
    for (std::size_t i = 1; i < slices.displayed().size(); ++i)
      EXPECT_EQ(slices.displayed()[i].start, slices.displayed()[i - 1].end);
    for (const int numDecimals : {0, 1, 3}) {
      double sum = 0;
      for (const std::string& text : slices.percentTexts(numDecimals)) sum += std::stod(text);
      EXPECT_NEAR(sum, 100, 1e-9);
    }
  }
}

double area(const PiPieGeometry::Faces& faces) {
  double sum = 0;
  std::size_t first = 0;
  for (const int size : faces.sizes) {
    SbVec3d twice(0, 0, 0);
    for (int i = 1; i + 1 < size; ++i) {
      const SbVec3d a(faces.points[first + static_cast<std::size_t>(i)] - faces.points[first]);
      const SbVec3d b(faces.points[first + static_cast<std::size_t>(i) + 1] - faces.points[first]);
      twice += a.cross(b);
    }
    sum += twice.length() / 2;
    first += static_cast<std::size_t>(size);
  }
  return sum;
}

/// Six times the volume that faces enclose, if they all face out.
double enclosed(const PiPieGeometry::Faces& faces) {
  double sum = 0;
  std::size_t first = 0;
  for (const int size : faces.sizes) {
    for (int i = 1; i + 1 < size; ++i) {
      const SbVec3d a(faces.points[first]);
      const SbVec3d b(faces.points[first + static_cast<std::size_t>(i)]);
      const SbVec3d c(faces.points[first + static_cast<std::size_t>(i) + 1]);
      sum += a.dot(b.cross(c));
    }
    first += static_cast<std::size_t>(size);
  }
  return sum;
}

TEST(PieGeometry, AreasAndVolumesAreThoseOfSectors) {
  for (const double sweep : {0.3, 2.0, 4.5, kTurn}) {
    for (const float inner : {0.0f, 0.4f}) {
      PiPieGeometry::Sector sector;
      sector.center = SbVec2f(3, -2);
      sector.innerRadius = inner;
      sector.start = 1;
      sector.end = 1 + sweep;
      sector.angleStep = 0.01f;
      const double expected = sweep / 2 * (1 - inner * inner);
      PiPieGeometry::Faces faces;
      PiPieGeometry::addDisc(sector, 0, faces);
      EXPECT_NEAR(area(faces), expected, 1e-4) << sweep << ' ' << inner;
      faces.clear();
      PiPieGeometry::addSolid(sector, 0.2f, -0.3f, faces);
      EXPECT_NEAR(enclosed(faces) / 6, expected * 0.5, 1e-4) << sweep << ' ' << inner;
      EXPECT_EQ(faces.normals.size(), faces.points.size());
    }
  }
}

TEST(PieGeometry, StepsOutOfReasonAreBounded) {
  PiPieGeometry::Sector sector;
  sector.end = kTurn;
  for (const float step : {0.0f, -1.0f, 1e-30f, std::numeric_limits<float>::quiet_NaN(), 100.0f}) {
    sector.angleStep = step;
    const std::size_t num = PiPieGeometry::arc(sector, 1).size();
    EXPECT_GE(num, 2u);
    EXPECT_LE(num, 4097u);
  }
}

TEST(PieLayout, SpreadingKeepsOrderAndMovesLeast) {
  EXPECT_EQ(PiPieLayout::spread({1, 5, 9}, {1, 1, 1}, 0, 10), (std::vector<double>{1, 5, 9}));
  // Three that want the same place stand round it.
  EXPECT_EQ(PiPieLayout::spread({5, 5, 5}, {1, 1, 1}, 0, 10), (std::vector<double>{4, 5, 6}));
  EXPECT_EQ(PiPieLayout::spread({0, 0}, {2, 2}, 0, 10), (std::vector<double>{1, 3}));
  EXPECT_EQ(PiPieLayout::spread({20, 20}, {2, 2}, 0, 10), (std::vector<double>{7, 9}));
}

class PieOuterLayout : public ::testing::TestWithParam<PiPieLayout::Outer> {};

TEST_P(PieOuterLayout, NothingOverlapsAndNothingLeavesTheFrame) {
  std::mt19937 random(11);
  const auto uniform = [&](double low, double high) {
    return low + (high - low) * static_cast<double>(random()) / 4294967296.0;
  };
  std::size_t numShown = 0;
  std::size_t numAll = 0;
  for (int round = 0; round < 200; ++round) {
    std::vector<float> values(1 + random() % 25);
    for (float& value : values) value = static_cast<float>(uniform(0.01, 10));
    PiPieSlices slices;
    slices.compute(static_cast<int>(values.size()), values.data(), {});
    PiPieLayout::Pie pie;
    pie.clearRadius = 1.1f;
    pie.frame = SbBox2f(-2.2f, -1.8f, 2.2f, 1.8f);
    std::vector<PiPieLayout::Annotation> annotations;
    for (const PiPieSlices::Slice& slice : slices.displayed())
      annotations.push_back(
          {slice.start, slice.end, slice.value, pie.center, static_cast<float>(uniform(0.1, 0.8)), 0.2f});
    const std::vector<PiPieLayout::Place> places =
        PiPieLayout::placeOuter(pie, annotations, GetParam(), 0.05f, 0.05f, 0.05f);
    ASSERT_EQ(places.size(), annotations.size());

    // Points of a fine grid on each box: none lies in another box, in the pie or outside the frame.
    struct Shown {
      SbVec2f center, along;
      float width, height;
    };
    std::vector<Shown> shown;
    for (std::size_t i = 0; i < places.size(); ++i)
      if (places[i].isShown)
        shown.push_back({places[i].center, SbVec2f(std::cos(places[i].angle), std::sin(places[i].angle)),
                         annotations[i].width, annotations[i].height});
    numShown += shown.size();
    numAll += places.size();
    for (const Shown& box : shown)
      for (int k = 0; k < 21 * 7; ++k) {
        const SbVec2f point =
            box.center + box.along * (box.width * (static_cast<float>(k % 21) / 20 - 0.5f)) +
            SbVec2f(-box.along[1], box.along[0]) * (box.height * (static_cast<float>(k / 21) / 6 - 0.5f));
        EXPECT_GE(point.length(), 1.1f - 1e-4f);
        EXPECT_TRUE(std::abs(point[0]) <= 2.2001f && std::abs(point[1]) <= 1.8001f);
        for (const Shown& other : shown) {
          if (&other == &box) continue;
          const SbVec2f d = point - other.center;
          const bool isInside = std::abs(d.dot(other.along)) < other.width / 2 - 1e-4f &&
                                std::abs(d[1] * other.along[0] - d[0] * other.along[1]) < other.height / 2 - 1e-4f;
          EXPECT_FALSE(isInside);
        }
      }
  }
  EXPECT_GT(numShown, numAll / 2);
}

INSTANTIATE_TEST_SUITE_P(Positions, PieOuterLayout,
                         ::testing::Values(PiPieLayout::RADIAL_EXT, PiPieLayout::HORIZONTAL_EXT,
                                           PiPieLayout::HORIZONTAL_ALIGNED, PiPieLayout::VERTICAL_ALIGNED,
                                           PiPieLayout::SQUARE_ALIGNED));

TEST(PieLayout, InnerAnnotationsStayInTheirSlices) {
  PiPieLayout::Pie pie;
  const std::vector<PiPieLayout::Annotation> annotations = {{0, 2, 2, SbVec2f(0, 0), 0.4f, 0.2f},
                                                            {2, 2.1, 0.1, SbVec2f(0, 0), 0.4f, 0.2f},
                                                            {2.1, kTurn, 4, SbVec2f(0, 0), 0.4f, 0.2f}};
  for (const bool isRadial : {false, true}) {
    const std::vector<PiPieLayout::Place> places = PiPieLayout::placeInner(pie, annotations, isRadial, 0);
    EXPECT_TRUE(places[0].isShown);
    EXPECT_FALSE(places[1].isShown);
    EXPECT_TRUE(places[2].isShown);
    EXPECT_NEAR(std::atan2(places[0].center[1], places[0].center[0]), 1, 1e-5);
  }
  // A whole disc has its annotation in the middle.
  const std::vector<PiPieLayout::Place> whole =
      PiPieLayout::placeInner(pie, {{0, kTurn, 1, SbVec2f(0, 0), 0.4f, 0.2f}}, false, 0);
  EXPECT_TRUE(whole[0].isShown);
  EXPECT_NEAR(whole[0].center.length(), 0, 1e-6);
}

}  // namespace
