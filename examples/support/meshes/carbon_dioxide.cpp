// Carbon dioxide at Mauna Loa.

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoIrregularMesh1D.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "MeshFiles.h"

namespace gallery {

namespace {

// The points of a curve above a level (side 1) or below it (-1); in between it runs along the level. None if it is
// nowhere there.
std::vector<SbVec2f> pointsBeyond(const std::vector<SbVec2f>& points, float level, float side) {
  const auto isBeyond = [&](const SbVec2f& point) { return (point[1] - level) * side > 0; };
  std::vector<SbVec2f> beyond;
  if (points.size() < 2 || std::none_of(points.begin(), points.end(), isBeyond)) return beyond;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0 && isBeyond(points[i]) != isBeyond(points[i - 1])) {
      float x = 0;
      PoCurve::calculateInterpolation2(points[i - 1], points[i], level, x);
      beyond.emplace_back(x, level);
    }
    beyond.push_back(isBeyond(points[i]) ? points[i] : SbVec2f(points[i][0], level));
  }
  return beyond;
}

// The weeks from one date to another, `numDays` later, as curves, whose x are days: for each stretch without a missing
// week what is above a level and what is below it, filled, and the line.
void writeWeeks(const std::string& name, const char* from, const char* to, float numDays, float level) {
  const Table table = DataSet("mauna_loa_co2_weekly").table();
  const std::vector<std::string> dates = table.texts("date");
  const std::vector<float> parts = table.numbers("co2_ppmv");
  const PbDateFormatMapping days(from, to, 0, numDays, "Ymd");
  std::vector<std::vector<SbVec2f>> stretches;
  bool isMissing = true;
  for (std::size_t i = 0; i < dates.size(); ++i) {
    const bool wasMissing = std::exchange(isMissing, std::isnan(parts[i]) || dates[i] < from || dates[i] > to);
    if (isMissing) continue;
    if (wasMissing) stretches.emplace_back();
    float day = 0;
    days.getCoordinate(dates[i].c_str(), day);
    stretches.back().emplace_back(day, parts[i]);
  }

  auto* all = new SoSeparator;
  for (const std::vector<SbVec2f>& points : stretches) {
    for (const float side : {1.0F, -1.0F}) {
      const std::vector<SbVec2f> beyond = pointsBeyond(points, level, side);
      if (beyond.empty()) continue;
      auto* filled = new PoCurve(static_cast<int>(beyond.size()), beyond.data(), PoCurve::CURVE_NONE);
      all->addChild(filled);
      filled->isCurveFilled = TRUE;
      filled->fillingThreshold = level;
      filled->set("curveFillingApp.material",
                  side > 0 ? "diffuseColor 0.965 0.80 0.70" : "diffuseColor 0.745 0.84 0.92");
    }
    all->addChild(new PoCurve(static_cast<int>(points.size()), points.data()));
  }
  writeMesh(name, all);
}

// Means of `numWeeks` weeks each from one year up to another, without a value where no week has one. x is in years,
// counted from `origin`; set 0 in parts per million, set 1 what that is beyond the first of them.
void writeMeans(const std::string& name, int firstYear, int endYear, float origin, std::size_t numWeeks) {
  const Table table = DataSet("mauna_loa_co2_weekly").table();
  const std::vector<std::string> dates = table.texts("date");
  const std::vector<float> parts = table.numbers("co2_ppmv");
  const auto yearOf = [&](std::size_t week) { return std::stoi(dates[week].substr(0, 4)); };
  std::vector<float> years, values, beyond;
  for (std::size_t first = 0; first + numWeeks <= dates.size(); first += numWeeks) {
    while (first + numWeeks < dates.size() && yearOf(first) < firstYear) ++first;
    if (yearOf(first + numWeeks - 1) >= endYear) break;
    float sumOfYears = 0, sum = 0;
    int num = 0;
    for (std::size_t week = first; week < first + numWeeks; ++week) {
      constexpr int daysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
      const int month = std::stoi(dates[week].substr(5, 2)), day = std::stoi(dates[week].substr(8, 2));
      sumOfYears +=
          static_cast<float>(yearOf(week)) - origin + (static_cast<float>(daysBefore[month - 1] + day) - 0.5f) / 366;
      if (std::isnan(parts[week])) continue;
      sum += parts[week];
      ++num;
    }
    years.push_back(sumOfYears / static_cast<float>(numWeeks));
    values.push_back(sum / static_cast<float>(num));
    beyond.push_back(values.back() - *std::find_if(values.begin(), values.end(), [](float v) { return v == v; }));
  }
  auto* mesh = new PoIrregularMesh1D;
  mesh->setGeometry(sizeOf(years), years.data());
  mesh->addValuesSet(0, values.data(), "carbon dioxide in ppmv");
  mesh->addValuesSet(1, beyond.data(), "beyond the first, in ppmv");
  writeMesh(name, mesh);
}

}  // namespace

void writeCarbonDioxide() {
  writeWeeks("mauna_loa_1958", "1958-01-01", "2002-01-01", 16071, 340);
  writeWeeks("mauna_loa_1962", "1962-07-01", "1965-12-31", 1279, 320);
  writeMeans("co2_weeks", 1958, 2002, 0, 1);
  for (int year = 1966; year < 2002; year += 5)
    writeMeans("co2_" + std::to_string(year), year, year + 1, static_cast<float>(year), 4);
}

}  // namespace gallery
