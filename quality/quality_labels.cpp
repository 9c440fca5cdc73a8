// Labels of isolines on smooth random fields. Everything is read out of the finished scene: the lines from their line
// sets, the labels from their text nodes, whose boxes are measured where they stand.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoMeshContouring.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <numbers>

#include "Quality.h"

namespace {

constexpr int kNumNodes = 101;
constexpr int kNumLevels = 10;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Point {
  double x, y;
};
Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
double dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }

double distanceTo(Point p, Point a, Point b) {
  const Point step = b - a;
  const double square = dot(step, step);
  const double t = square > 0 ? std::clamp(dot(p - a, step) / square, 0.0, 1.0) : 0;
  return std::hypot(a.x + t * step.x - p.x, a.y + t * step.y - p.y);
}

using Polygon = std::vector<Point>;

/// Whether two convex polygons have a point in common, by the axes that could part them. A segment is one of two
/// corners.
bool overlap(std::span<const Point> a, std::span<const Point> b) {
  for (const auto& sides : {a, b}) {
    for (std::size_t i = 0; i < sides.size(); ++i) {
      const Point side = sides[(i + 1) % sides.size()] - sides[i];
      const Point axis = {-side.y, side.x};
      double minA = kInfinity, maxA = -kInfinity, minB = kInfinity, maxB = -kInfinity;
      for (const Point& p : a) minA = std::min(minA, dot(p, axis)), maxA = std::max(maxA, dot(p, axis));
      for (const Point& p : b) minB = std::min(minB, dot(p, axis)), maxB = std::max(maxB, dot(p, axis));
      if (maxA < minB || maxB < minA) return false;
    }
  }
  return true;
}

bool isInside(Point p, const Polygon& polygon) {
  bool inside = false;
  for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
    const Point a = polygon[i], b = polygon[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
}

/// A sum of 9 sines of random direction and wavelength, from a quarter of the domain to twice that.
struct Field {
  struct Wave {
    double x, y, phase;
  };
  std::array<Wave, 9> waves;

  explicit Field(QualityRandom& random) {
    for (Wave& wave : waves) {
      const double angle = random.uniform(0, 2 * std::numbers::pi), length = random.uniform(0.25, 2);
      wave = {2 * std::numbers::pi * std::cos(angle) / length, 2 * std::numbers::pi * std::sin(angle) / length,
              random.uniform(0, 2 * std::numbers::pi)};
    }
  }
  double at(double x, double y) const {
    double sum = 0;
    for (const Wave& wave : waves) sum += std::sin(wave.x * x + wave.y * y + wave.phase);
    return sum;
  }
};

/// A polygon with notches all round.
Polygon concavePolygon(QualityRandom& random) {
  Polygon polygon;
  const int num = 5 + random.index(6);
  for (int i = 0; i < 2 * num; ++i) {
    const double angle = std::numbers::pi * i / num;
    const double radius = i % 2 ? random.uniform(0.12, 0.35) : random.uniform(0.4, 0.7);
    polygon.push_back({0.5 + radius * std::cos(angle), 0.5 + radius * std::sin(angle)});
  }
  return polygon;
}

/// A label as it is drawn.
struct Label {
  std::string text;
  std::array<Point, 4> box;
  Point middle;
  double width, height;
};

struct Line {
  std::vector<Point> points;
  double level = 0;

  double distanceTo(Point p) const {
    double least = kInfinity;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
      least = std::min(least, ::distanceTo(p, points[i], points[i + 1]));
    return least;
  }
  bool touches(const Label& label) const {
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      const Point segment[] = {points[i], points[i + 1]};
      if (overlap(label.box, segment)) return true;
    }
    return false;
  }
  /// Of the box of the line; in a polygon, of its largest part in there.
  double diagonalSquare(const Polygon& polygon) const {
    double greatest = 0, minX = kInfinity, minY = kInfinity, maxX = -kInfinity, maxY = -kInfinity;
    for (const Point& p : points) {
      if (!polygon.empty() && !isInside(p, polygon)) {
        minX = minY = kInfinity, maxX = maxY = -kInfinity;
        continue;
      }
      minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
      minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
      greatest = std::max(greatest, (maxX - minX) * (maxX - minX) + (maxY - minY) * (maxY - minY));
    }
    return greatest;
  }
};

std::vector<Label> readLabels(PoMeshContouring* kit) {
  std::vector<Label> labels;
  auto* group = static_cast<SoGroup*>(kit->getPart("annotText", FALSE));
  SoGetBoundingBoxAction measure(SbViewportRegion(100, 100));
  for (int i = 0; group && i < group->getNumChildren(); ++i) {
    auto* separator = static_cast<SoGroup*>(group->getChild(i));
    Label label{};
    SbMatrix matrix = SbMatrix::identity();
    auto* upright = new SoSeparator;
    upright->ref();
    for (int c = 0; c < separator->getNumChildren(); ++c) {
      SoNode* node = separator->getChild(c);
      if (node->isOfType(SoMatrixTransform::getClassTypeId()))
        matrix = static_cast<SoMatrixTransform*>(node)->matrix.getValue();
      else
        upright->addChild(node);
      if (node->isOfType(SoText3::getClassTypeId())) label.text = static_cast<SoText3*>(node)->string[0].getString();
    }
    measure.apply(upright);
    const SbBox3f box = measure.getBoundingBox();
    upright->unref();
    const SbVec3f& min = box.getMin();
    const SbVec3f& max = box.getMax();
    const float xs[] = {min[0], min[0], max[0], max[0]}, ys[] = {min[1], max[1], max[1], min[1]};
    for (std::size_t k = 0; k < 4; ++k) {
      SbVec3f corner;
      matrix.multVecMatrix(SbVec3f(xs[k], ys[k], 0), corner);
      label.box[k] = {corner[0], corner[1]};
      label.middle.x += corner[0] / 4;
      label.middle.y += corner[1] / 4;
    }
    label.width = max[0] - min[0];
    label.height = max[1] - min[1];
    labels.push_back(label);
  }
  return labels;
}

std::vector<Line> readLines(PoMeshContouring* kit, const char* part, const Field& field,
                            const std::vector<float>& levels) {
  std::vector<Line> lines;
  auto* group = static_cast<SoGroup*>(kit->getPart(part, FALSE));
  const SoCoordinate3* coordinate = nullptr;
  for (int c = 0; group && c < group->getNumChildren(); ++c) {
    SoNode* node = group->getChild(c);
    if (node->isOfType(SoCoordinate3::getClassTypeId())) coordinate = static_cast<SoCoordinate3*>(node);
    if (!node->isOfType(SoLineSet::getClassTypeId())) continue;
    const SoMFInt32& numbers = static_cast<SoLineSet*>(node)->numVertices;
    int first = 0;
    for (int n = 0; n < numbers.getNum(); first += numbers[n++]) {
      Line line;
      for (int i = first; i < first + numbers[n]; ++i)
        line.points.push_back({coordinate->point[i][0], coordinate->point[i][1]});
      const double value = field.at(line.points[0].x, line.points[0].y);
      line.level = *std::min_element(levels.begin(), levels.end(),
                                     [&](float a, float b) { return std::abs(a - value) < std::abs(b - value); });
      lines.push_back(line);
    }
  }
  return lines;
}

/// Half a unit of the last digit of a text like "-1.25" or "3.5E3".
double halfDigit(const std::string& text) {
  const std::size_t exponent = text.find('E');
  const std::string digits = text.substr(0, exponent);
  const std::size_t point = digits.find('.');
  const int decimals = point == std::string::npos ? 0 : static_cast<int>(digits.size() - point) - 1;
  const int power = exponent == std::string::npos ? 0 : std::atoi(text.c_str() + exponent + 1);
  return 0.5 * std::pow(10, power - decimals);
}

struct Counts {
  int labels = 0, overlaps = 0, boundaryTouches = 0, polygonLeaves = 0, offLine = 0, misread = 0, forbidden = 0;
  int longLines = 0, labelledLines = 0;
  bool isClean() const {
    return labels > 0 && overlaps + boundaryTouches + polygonLeaves + offLine + misread + forbidden == 0;
  }
  double share() const { return longLines > 0 ? static_cast<double>(labelledLines) / longLines : 0; }
};

void toJson(nlohmann::json& json, const Counts& counts) {
  json = {{"labels", counts.labels},
          {"label_overlaps", counts.overlaps},
          {"boundary_touches", counts.boundaryTouches},
          {"polygon_leaves", counts.polygonLeaves},
          {"off_their_line", counts.offLine},
          {"misread", counts.misread},
          {"forbidden_lines_touched", counts.forbidden},
          {"long_major_lines", counts.longLines},
          {"labelled_share", counts.share()}};
}

/// The field, its levels, and the kit that shows it.
struct Case {
  Case(int index, int majorPeriod) : random(4, index), field(random), grid(kNumNodes, kNumNodes, 0, 0, 1, 1, 1) {
    std::vector<float> values;
    for (int i = 0; i < kNumNodes; ++i)
      for (int j = 0; j < kNumNodes; ++j)
        values.push_back(static_cast<float>(field.at(i / (kNumNodes - 1.0), j / (kNumNodes - 1.0))));
    const auto [min, max] = std::minmax_element(values.begin(), values.end());
    const float step = (*max - *min) / kNumLevels;
    list.setRegularIsoList(kNumLevels, *min + step / 2, step);
    int num = 0, isRegular = 0;
    float first = 0, last = 0, gap = 0;
    const float* isovalues = list.getIsoList(num, first, last, gap, isRegular);
    levels.assign(isovalues, isovalues + num);
    grid.addValuesSet(0, values.data(), "sines");
    kit->ref();
    kit->setMesh(&grid);
    kit->setIsovaluesList(&list);
    kit->setDomain(&domain);
    kit->valuesIndex = 0;
    kit->majorPeriod = static_cast<unsigned short>(majorPeriod);
    kit->annotIsVisible = TRUE;
  }
  /// Labels stay in the polygon from now on.
  void clip() {
    polygon = concavePolygon(random);
    std::vector<SbVec2f> corners;
    for (const Point& p : polygon) corners.emplace_back(static_cast<float>(p.x), static_cast<float>(p.y));
    kit->annotClippingPolygon.setValues(0, static_cast<int>(corners.size()), corners.data());
  }
  ~Case() { kit->unref(); }
  Case(const Case&) = delete;
  Case& operator=(const Case&) = delete;

  void count(PoMeshContouring::AnnotCrossStatus status, Counts& counts) {
    kit->annotCrossStatus = status;
    SoCallbackAction frame;
    frame.apply(kit);
    const std::vector<Label> labels = readLabels(kit);
    const std::vector<Line> major = readLines(kit, "majorContourLine", field, levels);
    const std::vector<Line> minor = readLines(kit, "minorContourLine", field, levels);
    counts.labels += static_cast<int>(labels.size());
    std::vector<bool> isLabelled(major.size());
    std::map<double, double> sizes;
    for (std::size_t i = 0; i < labels.size(); ++i) {
      const Label& label = labels[i];
      for (std::size_t j = 0; j < i; ++j) counts.overlaps += overlap(label.box, labels[j].box);
      counts.boundaryTouches += std::any_of(label.box.begin(), label.box.end(),
                                            [](Point p) { return p.x <= 0 || p.y <= 0 || p.x >= 1 || p.y >= 1; });
      if (!polygon.empty()) counts.polygonLeaves += leavesPolygon(label);

      std::size_t own = 0;
      double least = kInfinity;
      for (std::size_t l = 0; l < major.size(); ++l) {
        const double distance = major[l].distanceTo(label.middle);
        if (distance < least) least = distance, own = l;
      }
      counts.offLine += least > label.height / 2;
      if (major.empty()) continue;
      isLabelled[own] = true;
      counts.misread += !(std::abs(std::strtod(label.text.c_str(), nullptr) - major[own].level) <=
                          halfDigit(label.text) * (1 + 1e-6));
      sizes[major[own].level] = label.width * label.width + label.height * label.height;
      if (status != PoMeshContouring::CROSS_CONTOUR)
        for (std::size_t l = 0; l < major.size(); ++l) counts.forbidden += l != own && major[l].touches(label);
      if (status == PoMeshContouring::DONT_CROSS_CONTOUR)
        for (const Line& line : minor) counts.forbidden += line.touches(label);
    }
    for (std::size_t l = 0; l < major.size(); ++l) {
      // The labels of a level are all of one size; those of a level without any have that of another.
      const auto size = sizes.count(major[l].level) ? sizes.find(major[l].level) : sizes.begin();
      if (size == sizes.end() || 1.5 * size->second >= major[l].diagonalSquare(polygon)) continue;
      ++counts.longLines;
      counts.labelledLines += isLabelled[l];
    }
  }

  bool leavesPolygon(const Label& label) const {
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      const Point side[] = {polygon[i], polygon[(i + 1) % polygon.size()]};
      if (overlap(label.box, side)) return true;
    }
    return !isInside(label.middle, polygon);
  }

  QualityRandom random;
  Field field;
  PbRegularCartesianGrid2D grid;
  PbIsovaluesList list;
  std::vector<float> levels;
  Polygon polygon;
  PbDomain domain;
  PoMeshContouring* kit = new PoMeshContouring;
};

bool runLabels(const QualityOptions& options, nlohmann::json& summary) {
  const int numCases = options.cases(1000);
  Counts free, clipped, allMajor, notMajor, none;
  for (int index = 0; index < numCases; ++index) {
    Case shown(index, 3);
    shown.count(PoMeshContouring::CROSS_CONTOUR, free);
    shown.count(PoMeshContouring::CROSS_MINOR_CONTOUR, notMajor);
    shown.count(PoMeshContouring::DONT_CROSS_CONTOUR, none);
    if (index % 3 == 2) {
      shown.clip();
      shown.count(PoMeshContouring::CROSS_CONTOUR, clipped);
    }
    Case dense(index, 1);
    dense.count(PoMeshContouring::CROSS_CONTOUR, allMajor);
  }
  summary["fields"] = numCases;
  toJson(summary["cross_contour"], free);
  toJson(summary["cross_contour_in_polygon"], clipped);
  toJson(summary["cross_minor_contour"], notMajor);
  toJson(summary["dont_cross_contour"], none);
  toJson(summary["cross_contour_all_major"], allMajor);
  bool isClean = free.isClean() && clipped.isClean() && free.share() >= 0.9;
  for (const Counts& counts : {allMajor, notMajor, none}) isClean = isClean && counts.isClean();
  return isClean;
}

const QualityRun run("labels", "labels of isolines on smooth random fields", runLabels);

}  // namespace
