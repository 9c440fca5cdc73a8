// Random linear, logarithmic and generalized axes: whether their texts can be read, and say their coordinates. Each
// axis is built twice, by its formulas alone and with the last pass over the texts.

#include <Inventor/SbVec3f.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoGenAxis.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLogAxis.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "AxisTexts.h"
#include "Quality.h"

namespace {

constexpr int kCases = 10000;
constexpr int kMaxExamples = 3;
constexpr double kMinSize = 0.007;  // of legible texts, in reference lengths

/// A gradation text, put together of its pieces, and what it says.
struct Grad {
  AxisText box;
  std::string text;
  double value = 0;     ///< what it reads as
  double halfUnit = 0;  ///< half of its last digit
  bool isMain = true;
  double x = 0;  ///< where it stands along the axis
  bool isNumber = false;
};

/// A random axis and what it must show.
struct Case {
  PoCartesianAxis* axis = nullptr;
  std::unique_ptr<PbDomain> domain;
  std::unique_ptr<PbNumericDisplayFormat> format;
  bool isAutomatic = true;  ///< all sizes and formats are
  bool isRoomLeft = true;   ///< margins leave room for two gradations
  bool canRepeat = false;   ///< texts are digits, or the application's
  float along = 1;          ///< the reference length
  std::string description;

  ~Case() {
    if (axis) axis->unref();
  }
};

struct Faults {
  int overlapping = 0, equalNeighbours = 0, misread = 0, scarce = 0, far = 0, illegible = 0;

  int all() const { return overlapping + equalNeighbours + misread + scarce + far; }
};

enum Kind { LINEAR, LOG, GENERALIZED };

// --- making ---------------------------------------------------------------------------------------------------------

int directionOf(const PoCartesianAxis& axis) { return axis.type.getValue() / 2; }

double magnitude(QualityRandom& random, double low, double high) { return std::pow(10.0, random.uniform(low, high)); }

/// The ends of a linear axis: near 0, about 0, or far away.
void makeEnds(QualityRandom& random, Kind kind, float& start, float& end) {
  double from, length;
  if (kind == LOG) {
    length = random.chance(0.3) ? magnitude(random, -2, 0) : magnitude(random, -0.5, 1.6);
    from = random.uniform(-12, 12);
    if (random.chance(0.3)) from = std::round(from);
  } else {
    length = magnitude(random, -8, 8);
    from = random.uniform(-1.5, 0.5) * length;
    if (random.chance(0.2)) from = 0;
    if (random.chance(0.2)) from = (random.chance(0.5) ? 1 : -1) * length * magnitude(random, 1, 7);
  }
  const bool isFalling = random.chance(0.25);
  start = static_cast<float>(isFalling ? from + length : from);
  end = static_cast<float>(isFalling ? from : from + length);
}

void makeDomain(QualityRandom& random, float start, float end, Case& c, int direction) {
  double deltas[3];
  const double length = std::abs(static_cast<double>(end) - start);
  // Most axes run along their domain; a few are much shorter or longer.
  deltas[direction] = length * (random.chance(0.85) ? random.uniform(0.7, 2) : magnitude(random, -1.5, 1.5));
  for (int d = 0; d < 3; ++d)
    if (d != direction) deltas[d] = deltas[direction] * magnitude(random, -2, 2);
  c.domain = std::make_unique<PbDomain>();
  c.domain->setDomain(0, 0, 0, static_cast<float>(deltas[0]), static_cast<float>(deltas[1]),
                      static_cast<float>(deltas[2]), PbDomain::BOX_AS_GIVEN);
  c.axis->setDomain(c.domain.get());
  const float sides[] = {c.domain->getDeltaX(), c.domain->getDeltaY(), c.domain->getDeltaZ()};
  c.along = sides[direction];
}

void makeCommon(QualityRandom& random, Case& c, float start, float end) {
  PoCartesianAxis& axis = *c.axis;
  const int type = random.index(6);
  axis.type = type;
  SbVec3f place(0, 0, 0);
  place[directionOf(axis)] = start;
  axis.start = place;
  axis.end = end;
  makeDomain(random, start, end, c, directionOf(axis));
  if (random.chance(0.3)) {
    axis.gradPosition = random.index(2);
    axis.gradPath = random.index(4);
    axis.tickPosition = random.index(3);
    axis.reverseFlag = random.index(2);
  }
  if (random.chance(0.5)) {
    axis.titleVisibility = PoAxis::VISIBILITY_ON;
    axis.titleString = random.chance(0.5) ? "Depth (m)" : "A title that is longer than most";
    axis.titlePosition = random.index(2);
  }
  float margins[] = {0, 0};
  if (random.chance(0.5)) {
    const double length = std::abs(static_cast<double>(end) - start);
    const bool isRelative = random.chance(0.5);
    const double atStart = random.uniform(0, random.chance(0.1) ? 1.2 : 0.3), atEnd = random.uniform(0, 0.3);
    axis.marginType = isRelative ? PoAxis::REL_MARGIN : PoAxis::FIXED_MARGIN;
    axis.marginStart = static_cast<float>(isRelative ? atStart : atStart * length);
    axis.marginEnd = static_cast<float>(isRelative ? atEnd : atEnd * length);
    margins[0] = isRelative ? axis.marginStart.getValue() * std::abs(end - start) : axis.marginStart.getValue();
    margins[1] = isRelative ? axis.marginEnd.getValue() * std::abs(end - start) : axis.marginEnd.getValue();
  }
  c.isRoomLeft = start < end ? start + margins[0] < end - margins[1] : start - margins[0] > end + margins[1];
  if (random.chance(0.2)) {
    axis.gradAddString = random.chance(0.5) ? "%" : " km/h";
    axis.gradAddStringVisibility = TRUE;
  }
  c.description = std::string(axis.getTypeId().getName().getString()) + " type " + std::to_string(type) + " from " +
                  std::to_string(start) + " to " + std::to_string(end) + ", domain side " + std::to_string(c.along);
}

void makeLinear(QualityRandom& random, Case& c) {
  auto* axis = new PoLinearAxis;
  axis->ref();
  c.axis = axis;
  float start, end;
  makeEnds(random, LINEAR, start, end);
  makeCommon(random, c, start, end);
  axis->gradFit = random.index(2);
  axis->multFactorPosition = random.index(4);
  if (random.chance(0.6)) return;
  const int decimals = random.index(5), power = 3 * (random.index(3) - 1);
  const bool isInteger = random.chance(0.4);
  c.format = std::make_unique<PbNumericDisplayFormat>();
  c.format->setFormat(isInteger ? PbNumericDisplayFormat::INTEGER_FORMAT : PbNumericDisplayFormat::FLOAT_FORMAT, power,
                      decimals);
  axis->setFormat(c.format.get());
  c.isAutomatic = false;
}

void makeLog(QualityRandom& random, Case& c) {
  auto* axis = new PoLogAxis;
  axis->ref();
  c.axis = axis;
  float start, end;
  makeEnds(random, LOG, start, end);
  makeCommon(random, c, start, end);
  axis->multFactorPosition = random.index(3);
  if (random.chance(0.4)) axis->decadeRep = PoLogAxis::DECADE_AUTO;
  if (random.chance(0.3)) axis->tenPowerRep = PoLogAxis::TEN_POWER_AUTO;
  if (random.chance(0.6)) return;
  c.isAutomatic = false;
  axis->tenPowerRep = random.index(3);
  axis->decadeRep = random.index(5);
  if (random.chance(0.3)) {
    const unsigned short digits[] = {2, 5, 3};
    axis->decadeListDef = PoLogAxis::DECADE_LIST_NON_AUTO;
    axis->decadeList.setValues(0, 1 + random.index(3), digits);
  }
}

void makeGeneralized(QualityRandom& random, Case& c) {
  auto* axis = new PoGenAxis;
  axis->ref();
  c.axis = axis;
  c.canRepeat = true;
  float start, end;
  makeEnds(random, GENERALIZED, start, end);
  makeCommon(random, c, start, end);
  const int num = 2 + random.index(random.chance(0.2) ? 100 : 20);
  const int longest = random.chance(0.2) ? 40 : 12;
  for (int i = 0; i < num; ++i) {
    std::string text;
    for (int k = 1 + random.index(longest); k > 0; --k) text += static_cast<char>('a' + random.index(26));
    axis->gradList.set1Value(i, text.c_str());
  }
}

// --- judging --------------------------------------------------------------------------------------------------------

/// Reads a number and the unit of its last digit. Takes what follows it, too: an exponent, the string that was added.
void read(Grad& grad) {
  const char* text = grad.text.c_str();
  char* end;
  grad.value = std::strtod(text, &end);
  grad.isNumber = end != text;
  const std::string number(text, static_cast<size_t>(end - text));
  const size_t mark = number.find_first_of("eE"), point = number.find('.');
  const int exponent = mark == number.npos ? 0 : std::atoi(number.c_str() + mark + 1);
  const auto mantissaEnd = mark == number.npos ? number.size() : mark;
  const int decimals = point == number.npos ? 0 : static_cast<int>(mantissaEnd - point) - 1;
  grad.halfUnit = 0.5 * std::pow(10.0, exponent - decimals);
}

/// Joins what a logarithmic axis writes in pieces: "10" or "2.10", a raised exponent, the string that was added.
std::vector<Grad> gradsOf(Kind kind, const std::vector<AxisText>& pieces, const std::string& added) {
  std::vector<Grad> grads;
  for (size_t i = 0; i < pieces.size(); ++i) {
    Grad grad{pieces[i], pieces[i].text};
    grad.x = grad.box.x;
    const std::string base = grad.text;
    const bool isPower = kind == LOG && (base == "10" || base.ends_with(".10") || base.ends_with(" x 10"));
    if (isPower && i + 1 < pieces.size() && pieces[i + 1].size < 0.9 * grad.box.size) {
      const std::string exponent = pieces[i + 1].text;
      double digit = 1;
      if (base != "10") digit = std::atof(base.substr(0, base.size() - 3).c_str());  // of "2.10" or "2.5 x 10"
      grad.value = digit * std::pow(10.0, std::atoi(exponent.c_str()));
      grad.halfUnit = 0;
      grad.isNumber = true;
      grad.text += "^" + exponent;
      const bool isAlongAxis = std::abs(pieces[i + 1].y - grad.box.y) < 0.6 * grad.box.size;
      grad.box.extendBy(pieces[++i]);
      if (!added.empty() && i + 1 < pieces.size() && pieces[i + 1].text == added) {
        grad.text += added;
        grad.box.extendBy(pieces[++i]);
      }
      // Along the axis all pieces together are centred, across it the base is.
      if (isAlongAxis) grad.x = grad.box.center();
    } else {
      read(grad);
    }
    grads.push_back(grad);
  }
  return grads;
}

/// The power of ten that stands beyond an end of the axis; 0 without one.
int multiplierOf(PoCartesianAxis& axis) {
  const std::vector<AxisText> texts = axisTexts(axis, "multFactor", directionOf(axis));
  return texts.size() < 2 ? 0 : std::atoi(texts[1].text.c_str());
}

/// Whether a text says the coordinate that it stands at, within half of its last digit. What a float can't hold, no
/// text can say better.
bool readsAs(Kind kind, const Grad& grad, double multiplier, double coordinate) {
  const double value = grad.value * multiplier, half = grad.halfUnit * multiplier;
  const double rounding = 1e-6 * std::abs(coordinate);
  if (kind == LINEAR) return std::abs(value - coordinate) <= half * (1 + 1e-9) + 1e-12 * std::abs(coordinate);
  const double low = std::log10(std::max(value - half, 1e-300)), high = std::log10(value + half);
  return coordinate >= low - 1e-6 - rounding && coordinate <= high + 1e-6 + rounding;
}

/// The main or sub-gradation that stands nearest to a text.
double nearestCoordinate(PoCartesianAxis& axis, bool isMain, double x) {
  double nearest = NAN;
  const float* coords;
  const int num = isMain ? axis.getMainGradCoords(coords) : axis.getSubGradCoords(coords);
  for (int i = 0; i < num; ++i)
    if (!(std::abs(coords[i] - x) >= std::abs(nearest - x))) nearest = coords[i];
  return nearest;
}

Faults judge(Kind kind, const Case& c, std::string& shown) {
  PoCartesianAxis& axis = *c.axis;
  const std::string added =
      axis.gradAddStringVisibility.getValue() == 1 ? axis.gradAddString.getValue().getString() : "";
  std::vector<Grad> grads = gradsOf(kind, axisTexts(axis, "mainGradText", directionOf(axis)), added);
  bool areDigits = false;
  if (kind == LOG) {
    PoLogAxis::TenPowGradRep powerRep;
    PoLogAxis::DecadeRep digitRep;
    SbString font;
    float size;
    unsigned short num, list[PoLogAxis::MAX_DECADE_LIST];
    static_cast<PoLogAxis&>(axis).getLogGrad(num, list, powerRep, digitRep, font, size);
    const float* coords;
    // Digits beside a power are a list that repeats in each decade.
    areDigits = digitRep == PoLogAxis::DECADE_DIGIT && axis.getMainGradCoords(coords) > 0;
    std::vector<Grad> digits = gradsOf(kind, axisTexts(axis, "decadeText", directionOf(axis)), added);
    for (Grad& digit : digits) {
      digit.isMain = false;
      if (areDigits) digit.isNumber = false;
    }
    grads.insert(grads.end(), digits.begin(), digits.end());
  }
  std::sort(grads.begin(), grads.end(), [](const Grad& a, const Grad& b) { return a.box.center() < b.box.center(); });

  Faults faults;
  const double multiplier = kind == GENERALIZED ? 1 : std::pow(10.0, multiplierOf(axis));
  for (size_t i = 0; i < grads.size(); ++i) {
    const Grad& grad = grads[i];
    shown += (i > 0 ? " | " : "") + grad.text;
    // A millionth of the size of a letter is rounding.
    for (size_t k = 0; k < i; ++k) faults.overlapping += grad.box.overlaps(grads[k].box, 1e-6 * grad.box.size);
    if (i > 0 && !c.canRepeat && grad.text == grads[i - 1].text) ++faults.equalNeighbours;
    if (!c.canRepeat && !(areDigits && !grad.isNumber)) {
      const double x = kind == LOG ? nearestCoordinate(axis, grad.isMain, grad.x) : grad.x;
      if (!grad.isNumber || !readsAs(kind, grad, multiplier, x)) ++faults.misread;
    }
    const double reach = std::max(std::abs(grad.box.ymin), std::abs(grad.box.ymax));
    if (reach > 0.5 * c.along * (1 + 1e-6)) ++faults.far;
    if (grad.box.size < kMinSize * c.along * (1 - 1e-6)) ++faults.illegible;
  }
  if (multiplier != 1) shown += " | x 10^" + std::to_string(multiplierOf(axis));
  if (c.isRoomLeft && grads.size() < 2) ++faults.scarce;
  return faults;
}

// --- counting -------------------------------------------------------------------------------------------------------

struct Tally {
  int axes = 0, faulty = 0;
  int overlapping = 0, equalNeighbours = 0, misread = 0, scarce = 0, far = 0, illegible = 0;
  std::vector<std::string> examples;

  void add(const Faults& faults, int index, const std::string& description, const std::string& shown) {
    ++axes;
    overlapping += faults.overlapping > 0;
    equalNeighbours += faults.equalNeighbours > 0;
    misread += faults.misread > 0;
    scarce += faults.scarce > 0;
    far += faults.far > 0;
    illegible += faults.illegible > 0;
    if (faults.all() == 0) return;
    ++faulty;
    if (static_cast<int>(examples.size()) >= kMaxExamples) return;
    std::string kinds;
    const auto name = [&](int count, const char* kind) {
      if (count > 0) kinds += (kinds.empty() ? "" : ", ") + std::string(kind);
    };
    name(faults.overlapping, "overlapping");
    name(faults.equalNeighbours, "equal neighbours");
    name(faults.misread, "misread");
    name(faults.scarce, "scarce");
    name(faults.far, "far");
    examples.push_back("case " + std::to_string(index) + " (" + kinds + "): " + description + ": " +
                       shown.substr(0, 200));
  }

  nlohmann::json json() const {
    return {{"axes", axes},
            {"axesWithFaults", faulty},
            {"axesWithOverlappingTexts", overlapping},
            {"axesWithEqualNeighbours", equalNeighbours},
            {"axesWithMisreadTexts", misread},
            {"axesWithFewerThanTwoTexts", scarce},
            {"axesWithTextsFarAway", far},
            {"axesWithTextsBelowLegibleSize", illegible},
            {"examples", examples}};
  }
};

bool runKind(Kind kind, const std::function<void(QualityRandom&, Case&)>& make, const QualityOptions& options,
             nlohmann::json& summary) {
  Tally byFormulas[2], withPass[2];  // of axes with something given, of automatic ones
  const int cases = options.cases(kCases);
  for (int i = 0; i < cases; ++i) {
    QualityRandom random(0xA0 + kind, i);
    Case c;
    make(random, c);
    for (const bool isPassOn : {false, true}) {
      c.axis->setGradLegibility(isPassOn ? PoAxis::LEGIBILITY_DEPEND : PoAxis::LEGIBILITY_OFF);
      c.axis->rebuild();
      std::string shown;
      const Faults faults = judge(kind, c, shown);
      (isPassOn ? withPass : byFormulas)[c.isAutomatic].add(faults, i, c.description, shown);
    }
  }
  summary["cases"] = cases;
  summary["automatic"] = {{"byFormulas", byFormulas[1].json()}, {"withLastPass", withPass[1].json()}};
  if (byFormulas[0].axes > 0) summary["withGivenFormat"] = byFormulas[0].json();
  return withPass[1].faulty == 0;
}

bool runLinear(const QualityOptions& options, nlohmann::json& summary) {
  return runKind(LINEAR, makeLinear, options, summary);
}
bool runLog(const QualityOptions& options, nlohmann::json& summary) { return runKind(LOG, makeLog, options, summary); }
bool runGeneralized(const QualityOptions& options, nlohmann::json& summary) {
  return runKind(GENERALIZED, makeGeneralized, options, summary);
}

const QualityRun linear("linear_axes", "texts of linear axes", runLinear);
const QualityRun logarithmic("log_axes", "texts of logarithmic axes", runLog);
const QualityRun generalized("general_axes", "texts of axes with texts of the application", runGeneralized);

}  // namespace
