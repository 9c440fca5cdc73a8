#include <Inventor/SbColor.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "quillane/contour/CutSurface.h"
#include "quillane/contour/PiContouringFilled.h"
#include "quillane/contour/PiContouringLines.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Band {
  std::vector<int> corners;
  int lower;
};

class BandsTest : public testing::Test {
 protected:
  BandsTest() { list.setRegularIsoList(-9.0F, 9.0F, 10); }

  std::vector<Band> cut(const CutSurface& surface) {
    worker.setIsovaluesList(&list);
    surface.setOn(worker);
    worker.cut(surface.values.data());
    std::vector<Band> bands(1);
    for (const int corner : worker.coordIndex()) {
      if (corner >= 0)
        bands.back().corners.push_back(corner);
      else
        bands.emplace_back();
    }
    bands.pop_back();
    EXPECT_EQ(bands.size(), worker.lowerIsovalues().size());
    for (std::size_t b = 0; b < bands.size(); ++b) bands[b].lower = worker.lowerIsovalues()[b];
    points.assign(surface.points.begin(), surface.points.end());
    points.insert(points.end(), worker.cutPoints().begin(), worker.cutPoints().end());
    return bands;
  }
  const SbVec3f& point(int corner) const { return points[std::size_t(corner)]; }

  double flatArea(const Band& band) const {
    double area = 0;
    const SbVec3f& first = point(band.corners[0]);
    for (std::size_t c = 1; c + 1 < band.corners.size(); ++c) {
      const SbVec3f &a = point(band.corners[c]), &b = point(band.corners[c + 1]);
      area += ((double(a[0]) - first[0]) * (double(b[1]) - first[1]) -
               (double(b[0]) - first[0]) * (double(a[1]) - first[1])) /
              2;
    }
    return area;
  }
  double flatArea(const std::vector<Band>& bands) const {
    double area = 0;
    for (const Band& band : bands) area += flatArea(band);
    return area;
  }

  /// Bands tile the cells that are drawn: no crack, no overlap, no sliver.
  void checkTiling(const CutSurface& surface, const std::vector<Band>& bands) {
    const double area = ::flatArea(surface, drawnCells(surface));
    EXPECT_NEAR(flatArea(bands), area, 1e-5 * area);
    std::map<std::pair<int, int>, int> numPassed;
    for (const Band& band : bands) {
      ASSERT_GE(band.corners.size(), 3U);
      EXPECT_GT(flatArea(band), 0) << "cells run counter-clockwise, and so must bands";
      for (std::size_t c = 0; c < band.corners.size(); ++c)
        ++numPassed[{band.corners[c], band.corners[(c + 1) % band.corners.size()]}];
    }
    const EdgeValues edges(surface, {});
    for (const auto& [ends, num] : numPassed) {
      EXPECT_EQ(num, 1) << "two bands on one side of an edge";
      if (numPassed.count({ends.second, ends.first})) continue;
      EXPECT_TRUE(edges.isOnBorder(point(ends.first)) && edges.isOnBorder(point(ends.second)))
          << "a crack between " << ends.first << " and " << ends.second;
    }
  }
  /// Each band lies between two neighbouring levels and has the isovalue below it.
  void checkLevels(const CutSurface& surface, const std::vector<Band>& bands) {
    const std::vector<float> levels = levelsFor(list, surface.values);
    const EdgeValues values(surface, levels);
    std::vector<double> cutValues;
    for (const SbVec3f& cutPoint : worker.cutPoints()) {
      cutValues.push_back(values.at(cutPoint));
      const double nearest = *std::min_element(levels.begin(), levels.end(), [&](float a, float b) {
        return std::fabs(a - cutValues.back()) < std::fabs(b - cutValues.back());
      });
      EXPECT_NEAR(cutValues.back(), nearest, 2e-4);
    }
    for (const Band& band : bands) {
      double sum = 0, min = 1e30, max = -1e30;
      for (const int corner : band.corners) {
        const int cut = corner - int(surface.points.size());
        const double value = cut < 0 ? surface.values[std::size_t(corner)] : cutValues[std::size_t(cut)];
        sum += value;
        min = std::min(min, value);
        max = std::max(max, value);
      }
      const double mean = sum / double(band.corners.size());
      const auto above = std::upper_bound(levels.begin(), levels.end(), mean);
      EXPECT_LE(max, above == levels.end() ? max : *above + 2e-4);
      EXPECT_GE(min, above == levels.begin() ? min : *(above - 1) - 2e-4);
      int num, isRegular;
      float first, last, step;
      const float* isovalues = list.getIsoList(num, first, last, step, isRegular);
      EXPECT_EQ(band.lower, int(std::upper_bound(isovalues, isovalues + num, mean) - isovalues) - 1) << mean;
    }
  }
  /// The edges between bands are the isolines.
  void checkLines(const CutSurface& surface, const std::vector<Band>& bands) {
    std::map<Segment, int> between;
    for (const Band& band : bands)
      for (std::size_t c = 0; c < band.corners.size(); ++c) {
        // Of two neighbours each adds its own number, of which different ones leave a rest.
        const int from = band.corners[c], to = band.corners[(c + 1) % band.corners.size()];
        between[segmentOf(point(from), point(to))] += from < to ? band.lower : -band.lower;
      }
    PiContouringLines lines;
    lines.setIsovaluesList(&list);
    surface.setOn(lines);
    std::set<Segment> onLines;
    for (const PiIsoline& line : lines.extract(surface.values.data()))
      for (std::size_t p = 1; p < line.points.size(); ++p)
        onLines.insert(segmentOf(line.points[p - 1], line.points[p]));
    const EdgeValues edges(surface, {});
    for (const Segment& segment : onLines) {
      const auto found = between.find(segment);
      ASSERT_NE(found, between.end());
      EXPECT_EQ(std::abs(found->second), 1);
      between.erase(found);
    }
    for (const auto& [segment, rest] : between) {
      const bool isOnBorder = edges.isOnBorder(SbVec3f(segment[0], segment[1], segment[2])) &&
                              edges.isOnBorder(SbVec3f(segment[3], segment[4], segment[5]));
      EXPECT_TRUE(rest == 0 || isOnBorder);
    }
  }

  PbIsovaluesList list;
  PiContouringFilled worker;
  std::vector<SbVec3f> points;  // of the last surface, and behind them the cut points
};

TEST_F(BandsTest, TileEveryMeshClassBetweenTheIsolines) {
  for (unsigned seed = 1; seed <= 2; ++seed)
    for (const Field& field : {smoothField(seed), noiseField(seed)})
      for (const CutSurface& surface : surfacesOfAllClasses(field)) {
        SCOPED_TRACE(surface.name);
        const std::vector<Band> bands = cut(surface);
        checkTiling(surface, bands);
        checkLevels(surface, bands);
        checkLines(surface, bands);
      }
}

TEST_F(BandsTest, TileValuesThatAreEqualToIsovalues) {
  for (const CutSurface& surface : surfacesOfAllClasses(steppedField(3))) {
    SCOPED_TRACE(surface.name);
    const std::vector<Band> bands = cut(surface);
    checkTiling(surface, bands);
    checkLevels(surface, bands);
  }
}

TEST_F(BandsTest, OfManyLevelsInACellLoseNothing) {
  list.setRegularIsoList(-9.7F, 9.6F, 60);
  for (const CutSurface& surface : surfacesOfAllClasses(noiseField(11))) {
    SCOPED_TRACE(surface.name);
    const std::vector<Band> bands = cut(surface);
    checkTiling(surface, bands);
    checkLines(surface, bands);
  }
}

TEST_F(BandsTest, LeaveACleanHoleWhereValuesOrPointsAreUndefined) {
  for (CutSurface surface : surfacesOfAllClasses(smoothField(4))) {
    SCOPED_TRACE(surface.name);
    for (const std::size_t node : {40U, 41U, 77U, 190U}) surface.values[node] = kNaN;
    const std::vector<Band> bands = cut(surface);
    checkTiling(surface, bands);
    checkLines(surface, bands);
  }
  RectangleSpec spec;
  spec.numX = spec.numY = 12;
  spec.z = [](float x, float y) { return std::hypot(x - 2, y - 1) < 0.7F ? kNaN : 0.0F; };
  for (const MeshKind2D& kind : meshKinds2D()) {
    const CutSurface surface = rectangleOf(kind, spec, smoothField(5));
    ASSERT_LT(drawnCells(surface).size(), surface.cells.size());
    checkTiling(surface, cut(surface));
  }
}

TEST_F(BandsTest, EndBeforeAThresholdBehindWhichNothingIsShown) {
  PbLinearDataMapping mapping;
  mapping.setMaxThreshold(3.5F);  // without a colour
  mapping.setMinThreshold(-4, SbColor(0, 0, 1), 0.97F);
  worker.setDataMapping(&mapping);
  for (const CutSurface& surface : surfacesOfAllClasses(smoothField(6))) {
    SCOPED_TRACE(surface.name);
    for (const bool isMinLeftOut : {false, true}) {
      mapping.enableTransparency(isMinLeftOut);
      mapping.enableThresholds(1, 1);
      // What is left of each cell: all of it, or three of four nodes.
      CutSurface rest = surface;
      rest.cells.clear();
      for (const std::vector<int>& cell : surface.cells) {
        std::vector<int> inside;
        for (const int node : cell) {
          const float value = surface.values[std::size_t(node)];
          if (value < 3.5F && (value > -4 || !isMinLeftOut)) inside.push_back(node);
        }
        if (inside.size() >= 3) rest.cells.push_back(inside);
      }
      ASSERT_LT(rest.cells.size(), surface.cells.size());
      checkTiling(rest, cut(surface));
      mapping.enableThresholds(0, 0);
      checkTiling(surface, cut(surface));
    }
  }
}

TEST_F(BandsTest, TilePolygonsAndStripsThatAreHandedIn) {
  std::mt19937 random(1);
  std::uniform_real_distribution<float> value(-10, 10);
  for (int num = 3; num <= 100; ++num) {
    CutSurface polygon{"polygon", {}, {}, {}, {}, {}};
    std::vector<int> corners;
    for (int c = 0; c < num; ++c) {
      const float angle = 6.2831853F * float(c) / float(num);
      polygon.points.emplace_back(3 * std::cos(angle), std::sin(angle), 0.0F);
      polygon.values.push_back(value(random));
      corners.push_back(c);
    }
    polygon.cells = {corners};
    polygon.setOn = [&](PiContouring& filled) {
      filled.initGeometry();
      filled.setPoints(polygon.points);
      if (num % 2)
        filled.addElems(corners);
      else
        filled.addPolygons(corners);
    };
    checkTiling(polygon, cut(polygon));
  }
  CutSurface strip{"strip", {}, {}, {}, {}, {}};
  std::vector<int> nodes;
  for (int n = 0; n < 9; ++n) {
    strip.points.emplace_back(float(n / 2), float(1 - n % 2), 0.0F);
    strip.values.push_back(value(random));
    nodes.push_back(n);
    if (n >= 2) strip.cells.push_back(n % 2 ? std::vector{n - 1, n - 2, n} : std::vector{n - 2, n - 1, n});
  }
  strip.setOn = [&](PiContouring& filled) {
    filled.initGeometry();
    filled.addStripElems(nodes);
    filled.setPoints(strip.points);
  };
  checkTiling(strip, cut(strip));
}

TEST_F(BandsTest, AGridHandedInIsThatOfAMesh) {
  const CutSurface mesh = rectangleOf(meshKinds2D()[0], RectangleSpec(), noiseField(2));
  const auto meshBands = cut(mesh);
  CutSurface handed = mesh;
  handed.setOn = [&](PiContouring& filled) {
    filled.setGeometryGrid(RectangleSpec().numX, RectangleSpec().numY);
    filled.setPoints(mesh.points);
  };
  const auto handedBands = cut(handed);
  ASSERT_EQ(meshBands.size(), handedBands.size());
  for (std::size_t b = 0; b < meshBands.size(); ++b) {
    EXPECT_EQ(meshBands[b].corners, handedBands[b].corners);
    EXPECT_EQ(meshBands[b].lower, handedBands[b].lower);
  }
  worker.setGeometryGrid(1 << 20, 1 << 20);
  worker.setPoints(mesh.points);
  worker.cut(mesh.values.data());
  EXPECT_TRUE(worker.coordIndex().empty()) << "less points than nodes";
}

TEST_F(BandsTest, AreNoSliversWhereALevelHardlyMissesANode) {
  // The nearest other value is so near that the level moves by less than a coordinate can tell.
  for (CutSurface surface : surfacesOfAllClasses(smoothField(8))) {
    SCOPED_TRACE(surface.name);
    for (std::size_t node = 0; node < surface.values.size(); node += 3) surface.values[node] = node % 2 ? 3 : -1;
    surface.values[1] = std::nextafter(3.0F, 4.0F);
    surface.values[2] = std::nextafter(-1.0F, 4.0F);
    const std::vector<Band> bands = cut(surface);
    checkTiling(surface, bands);
    checkLevels(surface, bands);
  }
}

TEST_F(BandsTest, OfFlatPartsHaveTheColourOfTheirValue) {
  const float x[] = {0, 1, 2, 3, 0, 1, 2, 3}, y[] = {0, 0, 0, 0, 1, 1, 1, 1};
  const float values[] = {3, 3, 3, 9, 3, 3, 3, 9};  // a lake, and a bank
  list.setRegularIsoList(1.0F, 5.0F, 5);
  worker.setIsovaluesList(&list);
  worker.initGeometry();
  worker.setPoints(8, x, y, nullptr);
  for (int c = 0; c < 3; ++c) worker.addElems({c, c + 1, c + 5, c + 4});
  worker.cut(values);
  const std::vector<int> lower(worker.lowerIsovalues().begin(), worker.lowerIsovalues().end());
  ASSERT_EQ(lower.size(), 2U + 4);
  EXPECT_EQ(lower[0], 2) << "the greatest isovalue not above 3, although the level was moved up";
  EXPECT_EQ(lower[1], 2);
}

}  // namespace
