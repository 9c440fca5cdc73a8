#include "quillane/contour/PiLabelPlacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using Points = std::vector<SbVec3f>;

Points straight(float fromX, float y, float toX, int numSegments) {
  Points points;
  for (int i = 0; i <= numSegments; ++i)
    points.emplace_back(fromX + (toX - fromX) * static_cast<float>(i) / static_cast<float>(numSegments), y, 0.0F);
  return points;
}

Points circle(float x, float y, float radius, int numSegments) {
  Points points;
  for (int i = 0; i < numSegments; ++i) {
    const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(i) / static_cast<float>(numSegments);
    points.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle), 0.0F);
  }
  points.push_back(SbVec3f(points.front()));
  return points;
}

std::vector<PiPlacedLabel> place(const std::vector<PiLabelLine>& lines, double gap,
                                 PiLabelPlacement::Path path = PiLabelPlacement::TANGENTIAL) {
  return PiLabelPlacement(path, gap, false).place(lines);
}

// --- a search without trees, skips and haste to compare with ---------------------------------------------------------

struct Rectangle {
  double x, y, ux, uy, w, h;  // half sides

  bool isApart(double ax, double ay, std::initializer_list<std::pair<double, double>> points) const {
    const double middle = ax * x + ay * y;
    const double reach = w * std::abs(ax * ux + ay * uy) + h * std::abs(ay * ux - ax * uy);
    double least = std::numeric_limits<double>::infinity(), greatest = -least;
    for (const auto& [px, py] : points) {
      least = std::min(least, ax * px + ay * py - middle);
      greatest = std::max(greatest, ax * px + ay * py - middle);
    }
    return least > reach || greatest < -reach;
  }
  bool touches(const SbVec3f& a, const SbVec3f& b) const {
    const std::initializer_list<std::pair<double, double>> ends = {{a[0], a[1]}, {b[0], b[1]}};
    return !isApart(ux, uy, ends) && !isApart(-uy, ux, ends) &&
           !isApart(double(a[1]) - b[1], double(b[0]) - a[0], ends);
  }
  bool touches(const Points& line) const {
    for (std::size_t i = 0; i + 1 < line.size(); ++i)
      if (touches(line[i], line[i + 1])) return true;
    return false;
  }
  double reachX() const { return std::abs(ux) * w + std::abs(uy) * h; }
  double reachY() const { return std::abs(uy) * w + std::abs(ux) * h; }
  bool overlapsLimit(const Rectangle& r) const {
    return std::abs(x - r.x) <= reachX() + r.reachX() && std::abs(y - r.y) <= reachY() + r.reachY();
  }
};

bool isInside(double x, double y, const std::vector<SbVec2f>& polygon) {
  bool inside = false;
  for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
    const SbVec2f &a = polygon[i], &b = polygon[j];
    if ((a[1] > y) != (b[1] > y) && x < a[0] + (y - a[1]) / (double(b[1]) - a[1]) * (double(b[0]) - a[0]))
      inside = !inside;
  }
  return inside;
}

struct Reference {
  const std::vector<Points>& lines;
  const std::vector<PiLabelLine>& asked;
  const std::vector<Points>& boundary;
  const std::vector<SbVec2f>& polygon;
  double gap;

  double distance(const SbVec3f& a, const SbVec3f& b) const { return (a - b).length(); }

  bool walk(const Points& line, std::size_t segment, int step, double radius, SbVec3f& end) const {
    const bool isClosed = line.front() == line.back();
    const std::size_t num = line.size() - 1;
    const SbVec3f middle = (line[segment] + line[segment + 1]) / 2;
    SbVec3f last = middle;
    std::size_t i = step > 0 ? segment + 1 : segment;
    for (std::size_t count = 0; count < num; ++count) {
      if (distance(line[i], middle) >= radius) {
        double in = 0, out = 1;
        for (int half = 0; half < 60; ++half) {
          const double t = (in + out) / 2;
          (distance(last + (line[i] - last) * static_cast<float>(t), middle) < radius ? in : out) = t;
        }
        end = last + (line[i] - last) * static_cast<float>(out);
        return true;
      }
      last = line[i];
      if (step > 0 ? i == num : i == 0) {
        if (!isClosed) return false;
        i = step > 0 ? 0 : num;
      }
      step > 0 ? ++i : --i;
    }
    return false;
  }

  bool isAllowed(const Rectangle& room, std::size_t number, const std::vector<Rectangle>& placed) const {
    for (const Rectangle& other : placed)
      if (other.overlapsLimit(room)) return false;
    for (const Points& line : boundary)
      if (room.touches(line)) return false;
    for (std::size_t i = 0; i < lines.size(); ++i)
      if (i != number && asked[i].isForbidden && room.touches(lines[i])) return false;
    if (polygon.size() < 3) return true;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++)
      if (room.touches({polygon[i][0], polygon[i][1], 0}, {polygon[j][0], polygon[j][1], 0})) return false;
    return isInside(room.x, room.y, polygon);
  }

  std::vector<SbVec3f> positions() const {
    std::vector<SbVec3f> found;
    std::vector<Rectangle> placed;
    double stagger = 0;
    for (std::size_t number = 0; number < lines.size(); ++number) {
      const Points& line = lines[number];
      const double w = asked[number].width, h = asked[number].height;
      double minX = 1e30, minY = 1e30, maxX = -1e30, maxY = -1e30, length = 0;
      std::vector<double> runs;
      for (std::size_t i = 0; i < line.size(); ++i) {
        minX = std::min<double>(minX, line[i][0]), maxX = std::max<double>(maxX, line[i][0]);
        minY = std::min<double>(minY, line[i][1]), maxY = std::max<double>(maxY, line[i][1]);
        if (i > 0) length += distance(line[i], line[i - 1]);
        runs.push_back(length);
      }
      if (w == 0 || 1.5 * (w * w + h * h) >= std::pow(maxX - minX, 2) + std::pow(maxY - minY, 2)) continue;
      const std::size_t num = line.size() - 1;
      if (length < stagger) stagger = 0;
      std::size_t start = 0;
      while (runs[start] < stagger && start + 2 < num) ++start;
      std::size_t s = start;
      bool isFirst = true;
      while (true) {
        SbVec3f a, b;
        const SbVec3f p = (line[s] + line[s + 1]) / 2;
        bool isPlaced = walk(line, s, -1, w / 2, a) && walk(line, s, 1, w / 2, b);
        if (isPlaced) {
          const double dx = double(b[0]) - a[0], dy = double(b[1]) - a[1], d = std::hypot(dx, dy);
          const Rectangle room{p[0], p[1], dx / d, dy / d, 1.1 * w / 2, h / 2 + 0.1 * w / 2};
          isPlaced = isAllowed(room, number, placed);
          if (isPlaced) placed.push_back(room), found.push_back(p);
        }
        if (isPlaced) {
          if (isFirst) stagger = stagger + 1.5 * w >= gap ? 0 : stagger + 1.5 * w;
          isFirst = false;
          if (s < start) break;
          const double target = runs[s] + gap;
          do ++s;
          while (s < num && runs[s] < target);
          if (s >= num) break;
        } else {
          s = (s + 1) % num;
          if (s == start) break;
        }
      }
    }
    return found;
  }
};

TEST(LabelPlacementTest, FindsWhatASearchWithoutShortcutsFinds) {
  std::mt19937 random(7);
  const auto uniform = [&](double low, double high) {
    return static_cast<float>(std::uniform_real_distribution<double>(low, high)(random));
  };
  std::size_t numLabels = 0;
  for (int run = 0; run < 60; ++run) {
    std::vector<Points> lines, boundary = {circle(5, 5, 6, 50)};
    for (int i = 0; i < 14; ++i) {
      if (i % 3 == 0) {
        lines.push_back(circle(uniform(1, 9), uniform(1, 9), uniform(0.2, 3), 5 + run));
        continue;
      }
      Points line = {SbVec3f(uniform(0, 10), uniform(0, 10), 0)};
      float angle = uniform(0, 6);
      for (int k = 0; k < 20 * (1 + run % 4); ++k) {
        angle += uniform(-0.6, 0.6);
        const float step = uniform(0.01, 0.3);
        line.push_back(line.back() + SbVec3f(step * std::cos(angle), step * std::sin(angle), 0));
      }
      lines.push_back(line);
    }
    std::vector<PiLabelLine> asked;
    for (std::size_t i = 0; i < lines.size(); ++i)
      asked.push_back({lines[i], i % 4 ? 0.5F + 0.1F * static_cast<float>(i % 3) : 0, 0.25F, run % 3 == 1 || i < 3});
    std::vector<SbVec2f> polygon;
    if (run % 2) polygon = {{1, 1}, {9, 0.5}, {5.2F, 5}, {9.5F, 9}, {0.5F, 9}, {4, 5}};
    const double gap = run % 5 ? 2 : 0.3;

    PiLabelPlacement placement(PiLabelPlacement::TANGENTIAL, gap, false);
    std::vector<PiPolyline> limits(boundary.begin(), boundary.end());
    placement.setBoundary(limits);
    placement.setClippingPolygon(polygon);
    const std::vector<PiPlacedLabel> labels = placement.place(asked);
    const std::vector<SbVec3f> expected = Reference{lines, asked, boundary, polygon, gap}.positions();
    ASSERT_EQ(labels.size(), expected.size()) << "run " << run;
    for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_EQ(labels[i].position, expected[i]) << "run " << run;
    numLabels += labels.size();
  }
  EXPECT_GT(numLabels, 300U);
}

TEST(LabelPlacementTest, LabelsStandOnTheirLineAtTheGapAndNeverUpsideDown) {
  const Points line = straight(10, 3, 0, 10);  // runs to the left
  const std::vector<PiPlacedLabel> labels = place({{line, 2, 0.5F}}, 4);
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].position, SbVec3f(8.5F, 3, 0)) << "the first place with room on both sides";
  EXPECT_EQ(labels[1].position, SbVec3f(4.5F, 3, 0));
  EXPECT_EQ(labels[0].direction, SbVec3f(1, 0, 0));
  EXPECT_EQ(labels[0].corners[0], SbVec3f(7.5F, 2.75F, 0)) << "lower left";
  EXPECT_EQ(labels[0].corners[2], SbVec3f(9.5F, 3.25F, 0)) << "upper right";

  const Points other = straight(10, 8, 0, 10);
  const std::vector<PiPlacedLabel> both = place({{line, 2, 0.5F}, {other, 2, 0.5F}}, 4);
  ASSERT_EQ(both.size(), 4U);
  EXPECT_EQ(both[2].position, SbVec3f(6.5F, 8, 0)) << "the search starts 1.5 widths further on";
}

TEST(LabelPlacementTest, PathsAlongTheAxes) {
  const Points line = straight(0, 3, 10, 10);
  const PiPlacedLabel across = place({{line, 2, 0.5F}}, 20, PiLabelPlacement::HORIZONTAL).at(0);
  EXPECT_EQ(across.position, SbVec3f(0.5F, 3, 0)) << "needs no ends on the line";
  const PiPlacedLabel upright = place({{line, 2, 0.5F}}, 20, PiLabelPlacement::VERTICAL).at(0);
  EXPECT_EQ(upright.direction, SbVec3f(0, 1, 0));
  EXPECT_EQ(upright.box.limit().height(), 2);
}

TEST(LabelPlacementTest, ShortClosedAndHostileLines) {
  const Points ring = circle(0, 0, 1, 40);
  EXPECT_EQ(place({{ring, 1, 0.3F}}, 100).size(), 1U);
  const Points shortLine = straight(0, 0, 1, 20);
  EXPECT_TRUE(place({{shortLine, 1, 0.3F}}, 1).empty());
  const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
  for (const float size : {0.0F, -1.0F, nan, infinity}) {
    EXPECT_TRUE(place({{ring, size, 0.3F}}, 1).empty()) << size;
    EXPECT_TRUE(place({{ring, 0.3F, size}}, 1).empty()) << size;
  }
  for (const double gap : {0.0, -1.0, double(nan)}) EXPECT_GE(place({{ring, 0.3F, 0.1F}}, gap).size(), 1U) << gap;
  const Points far = straight(1e30F, 0, 2e30F, 5), point(3, SbVec3f(1, 1, 1)), empty;
  EXPECT_TRUE(place({{point, 1, 1}, {empty, 1, 1}}, 1).empty());
  EXPECT_EQ(place({{far, 1e29F, 1e28F}}, 1e31).size(), 1U);
  EXPECT_TRUE(place({{ring, 1e-20F, 1e-20F}}, 1).empty()) << "too small to have a direction";
}

TEST(LabelPlacementTest, WhatLiesWithinTheRoomOfALabelKeepsItOff) {
  // The only place is the middle of the middle segment; the obstacle lies within the room, away from its sides.
  const Points line = {{-5, 0, 0}, {-1, 0, 0}, {1, 0, 0}, {5, 0, 0}};
  const Points speck = circle(0.3F, 0.1F, 0.05F, 8);
  const auto numPlaced = [&](const std::vector<PiPolyline>& boundary, const std::vector<SbVec2f>& polygon,
                             bool isForbidden) {
    PiLabelPlacement placement(PiLabelPlacement::TANGENTIAL, 100, false);
    placement.setBoundary(boundary);
    placement.setClippingPolygon(polygon);
    const std::vector<PiLabelLine> lines = {{line, 6, 1}, {speck, 0, 0, isForbidden}};
    return placement.place(lines).size();
  };
  EXPECT_EQ(numPlaced({}, {}, false), 1U);
  EXPECT_EQ(numPlaced({}, {}, true), 0U) << "a line within";
  EXPECT_EQ(numPlaced({speck}, {}, false), 0U) << "an island within";
  const std::vector<SbVec2f> square = {{-9, -9}, {9, -9}, {9, 9}, {-9, 9}};
  EXPECT_EQ(numPlaced({}, square, false), 1U);
  EXPECT_EQ(numPlaced({}, {{-9, -9}, {9, -9}, {9, 9}, {0.1F, 9}, {0, -0.2F}, {-0.1F, 9}, {-9, 9}}, false), 0U)
      << "a notch that reaches into the room between its corners";
  EXPECT_EQ(numPlaced({}, {{20, 20}, {30, 20}, {30, 30}}, false), 0U);
  EXPECT_EQ(numPlaced({}, {{20, 20}, {30, 20}}, false), 1U) << "two points bound nothing";
}

TEST(LabelPlacementTest, ATiltedLabelRisesWithItsLine) {
  const Points line = {{0, 0, 0}, {4, 0, 3}, {8, 0, 6}, {12, 0, 9}};
  const std::vector<PiLabelLine> lines = {{line, 2.5F, 1}};
  const PiPlacedLabel label = PiLabelPlacement(PiLabelPlacement::TANGENTIAL, 100, true).place(lines).at(0);
  EXPECT_TRUE(label.direction.equals(SbVec3f(0.8F, 0, 0.6F), 1e-6F));
  EXPECT_TRUE(label.up.equals(SbVec3f(0, 1, 0), 1e-6F));
  EXPECT_TRUE(label.corners[2].equals(label.position + SbVec3f(1, 0.5F, 0.75F), 1e-5F));
}

}  // namespace
