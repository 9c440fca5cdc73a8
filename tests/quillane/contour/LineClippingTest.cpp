#include "quillane/contour/PiLineClipping.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using Points = std::vector<SbVec3f>;

PiLabelBox squareAt(double x, double y) { return {x, y, 1, 0, 1, 1}; }

std::vector<Points> piecesOf(std::vector<PiLabelBox> boxes, const Points& line) {
  const PiPolyline lines[] = {line};
  const PiLinePieces cut = PiLineClipping(std::move(boxes)).clip(lines);
  std::vector<Points> pieces;
  std::size_t first = 0;
  for (const PiLinePieces::Piece& piece : cut.pieces) {
    pieces.emplace_back(cut.points.begin() + static_cast<std::ptrdiff_t>(first),
                        cut.points.begin() + static_cast<std::ptrdiff_t>(first + piece.numPoints));
    first += piece.numPoints;
  }
  EXPECT_EQ(first, cut.points.size());
  return pieces;
}

TEST(LineClippingTest, CutsAtTheSidesOfTheBoxes) {
  const Points line = {{0, 0, 0}, {10, 0, 10}};
  EXPECT_EQ(piecesOf({}, line), std::vector<Points>{line});
  EXPECT_EQ(piecesOf({squareAt(2, 0), squareAt(6, 0.5)}, line),
            (std::vector<Points>{{{0, 0, 0}, {1, 0, 1}}, {{3, 0, 3}, {5, 0, 5}}, {{7, 0, 7}, {10, 0, 10}}}));
  EXPECT_EQ(piecesOf({squareAt(0, 0), squareAt(10, 0)}, line), (std::vector<Points>{{{1, 0, 1}, {9, 0, 9}}}));
  EXPECT_TRUE(piecesOf({{5, 0, 1, 0, 6, 1}}, line).empty()) << "all of it lies within";
  EXPECT_EQ(piecesOf({squareAt(5, 2)}, line).size(), 1U) << "passes by";

  const Points bent = {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}, {4, 4, 0}};  // a point within, one at a side
  EXPECT_EQ(piecesOf({squareAt(2.5, 0)}, bent),
            (std::vector<Points>{{{0, 0, 0}, {1.5F, 0, 0}}, {{3.5F, 0, 0}, {4, 0, 0}, {4, 4, 0}}}));
  EXPECT_EQ(piecesOf({squareAt(3, 0)}, bent), (std::vector<Points>{{{0, 0, 0}, {2, 0, 0}}, {{4, 1, 0}, {4, 4, 0}}}));
}

TEST(LineClippingTest, WhatIsLeftLiesOutsideAndNothingElseIsLost) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> place(0, 100), angles(0, 6), steps(0.1F, 3);
  std::vector<PiLabelBox> boxes;
  for (int i = 0; i < 60; ++i) {
    const double angle = angles(random);
    boxes.push_back({place(random), place(random), std::cos(angle), std::sin(angle), 4, 1.5});
  }
  const auto isWithin = [&](const SbVec3f& p, double margin) {
    for (const PiLabelBox& box : boxes) {
      const double x = p[0] - box.x, y = p[1] - box.y;
      if (std::abs(x * box.ux + y * box.uy) < box.halfWidth - margin &&
          std::abs(y * box.ux - x * box.uy) < box.halfHeight - margin)
        return true;
    }
    return false;
  };
  for (int run = 0; run < 20; ++run) {
    Points line = {{place(random), place(random), 0}};
    float angle = angles(random);
    for (int i = 0; i < 300; ++i) {
      angle += (place(random) - 50) / 100;
      line.push_back(line.back() + SbVec3f(std::cos(angle), std::sin(angle), 0) * steps(random));
    }
    double outside = 0, left = 0;
    for (std::size_t i = 0; i + 1 < line.size(); ++i)
      for (int k = 0; k < 200; ++k)
        if (!isWithin(line[i] + (line[i + 1] - line[i]) * ((static_cast<float>(k) + 0.5F) / 200), 0))
          outside += (line[i + 1] - line[i]).length() / 200;
    for (const Points& piece : piecesOf(boxes, line)) {
      EXPECT_GE(piece.size(), 2U);
      for (std::size_t i = 0; i + 1 < piece.size(); ++i) {
        left += (piece[i + 1] - piece[i]).length();
        EXPECT_FALSE(isWithin((piece[i] + piece[i + 1]) / 2, 1e-3));
      }
    }
    EXPECT_NEAR(left, outside, 0.02 * outside) << "run " << run;
  }
}

}  // namespace
