#include "graph/axis/PiLinearGradations.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "graph/axis/PiGradations.h"

namespace {

/// The part of a step within which a value counts as another: far above the rounding of floats over ten steps, far
/// below what can be seen.
constexpr double kNear = 1e-4;
/// A little more than the rounding of the floats that steps are worked out from.
constexpr double kRounding = 1 + 1e-6;

bool hasEqualNeighbours(const std::vector<float>& values) {
  return std::adjacent_find(values.begin(), values.end()) != values.end();
}

/// The smallest of the round steps that isn't below `least`.
double roundUp(double least) {
  const double unit = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 3.0, 4.0, 5.0})
    if (factor * unit >= least) return factor * unit;
  return 10 * unit;
}

}  // namespace

void PiLinearGradations::chooseStep(float delta, float& step) {
  if (delta == 0 || !std::isfinite(delta)) return;
  double size = std::abs(static_cast<double>(step));
  if (size == 0) {
    const double wanted = std::abs(static_cast<double>(delta)) / 10;
    double exponent = std::floor(std::log10(wanted * kRounding));
    if (wanted <= kRounding) exponent = std::min(exponent, -1.0);
    const double decade = std::pow(10.0, exponent + 1);
    const double ratio = wanted / decade;
    double factor = 0.2;
    for (const auto& [above, choice] : {std::pair{0.49, 1.0}, {0.39, 0.5}, {0.29, 0.4}, {0.19, 0.3}}) {
      if (ratio <= above * kRounding) continue;
      factor = choice;
      break;
    }
    size = decade * factor;
    if (static_cast<float>(size) == 0) size = std::abs(static_cast<double>(delta));
  }
  step = static_cast<float>(std::copysign(size, delta));
}

void PiLinearGradations::findFirst(bool isOnMultiples, float start, float end, float step, float& first, int& num) {
  first = start;
  num = 0;
  const double from = start, to = end, by = step;
  if (!std::isfinite(from) || !std::isfinite(to) || !std::isfinite(by) || (to - from) * by <= 0) return;
  double a = from;
  if (isOnMultiples) {
    double multiple = std::trunc(from / by);
    while ((multiple * by - from) / by < -kNear && multiple * by != (multiple + 1) * by) ++multiple;
    a = multiple * by;
    const auto rounded = static_cast<float>(a);
    first = by > 0 ? std::max(rounded, start) : std::min(rounded, start);
  }
  const double count = std::floor((to - a) / by + kNear) + 1;
  num = count < 1 ? 0 : count > INT_MAX ? INT_MAX : static_cast<int>(count);
}

PiLinearGradations PiLinearGradations::make(bool isOnMultiples, float start, float end, float wantedStep) {
  PiLinearGradations grads;
  grads.isOnMultiples = isOnMultiples;
  grads.step = wantedStep;
  chooseStep(end - start, grads.step);
  findFirst(isOnMultiples, start, end, grads.step, grads.first, grads.num);
  while (grads.num > PiGradations::MAX_GRADATIONS) {
    const float former = grads.step;
    grads.step *= std::ceil(static_cast<float>(grads.num) / PiGradations::MAX_GRADATIONS);
    if (grads.step == former) grads.step *= 2;
    findFirst(isOnMultiples, start, end, grads.step, grads.first, grads.num);
  }
  return grads;
}

PiLinearGradations PiLinearGradations::makeResolved(bool isOnMultiples, float start, float end) {
  PiLinearGradations grads = make(isOnMultiples, start, end, 0);
  std::vector<float> values;
  grads.values(end, values);
  if (start == end || !std::isfinite(end - start)) return grads;
  if (values.size() >= 2 && !hasEqualNeighbours(values)) return grads;

  // Four floats apart, the gaps between gradations still look alike.
  const float greatest = std::max(std::abs(start), std::abs(end));
  const double unit = static_cast<double>(std::nextafter(greatest, INFINITY)) - greatest;
  grads = make(isOnMultiples, start, end, static_cast<float>(roundUp(4 * unit)));
  grads.values(end, values);
  if (values.size() >= 2 && !hasEqualNeighbours(values)) return grads;
  grads = make(false, start, end, end - start);
  grads.num = 2;
  return grads;
}

void PiLinearGradations::values(float end, std::vector<float>& out) const {
  out.clear();
  for (int i = 0; i < num; ++i) {
    const double exact = static_cast<double>(i) * step + first;
    auto value = static_cast<float>(std::abs(exact) < kNear * std::abs(static_cast<double>(step)) ? 0 : exact);
    if (step > 0 ? value > end : value < end) value = end;
    out.push_back(value);
  }
}

long PiLinearGradations::firstMultiple() const {
  const double multiple = isOnMultiples && step != 0 ? std::round(static_cast<double>(first) / step) : 0;
  return std::abs(multiple) < 1e9 ? static_cast<long>(multiple) : 0;
}
