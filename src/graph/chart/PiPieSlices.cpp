#include "graph/chart/PiPieSlices.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

namespace {

constexpr double kFullTurn = 6.283185307179586;

double countedValue(float value) { return std::isfinite(value) && value > 0 ? static_cast<double>(value) : 0.0; }

}  // namespace

void PiPieSlices::compute(int num, const float* values, const Grouping& grouping) {
  m_displayed.clear();
  m_total = 0;
  for (int i = 0; i < num; ++i) m_total += countedValue(values[i]);
  if (m_total <= 0) return;

  const double limit = grouping.isPercentage ? grouping.limit * (m_total / 100) : static_cast<double>(grouping.limit);
  const auto isSmall = [&](double value) { return value > 0 && value < limit; };
  int numSmall = 0;
  if (grouping.isActive)
    for (int i = 0; i < num; ++i) numSmall += isSmall(countedValue(values[i]));
  const bool isGrouped = numSmall > 1;

  double group = 0;
  const auto add = [&](int number, double value) {
    m_displayed.push_back({number, value, value / m_total * 100, 0, 0});
  };
  for (int i = 0; i < num; ++i) {
    const double value = countedValue(values[i]);
    if (isGrouped && isSmall(value))
      group += value;
    else if (value > 0)
      add(i + 1, value);
  }
  if (isGrouped) add(-1 - num, group);

  // Each angle from the sum so far, not from the angle before, so that the last slice ends where the first starts.
  double sum = 0;
  for (Slice& slice : m_displayed) {
    slice.start = kFullTurn * (sum / m_total);
    sum += slice.value;
    slice.end = kFullTurn * (sum / m_total);
  }
  m_displayed.back().end = kFullTurn;
}

std::vector<long long> PiPieSlices::apportion(const std::vector<double>& parts, double total, long long whole) {
  std::vector<long long> shares(parts.size(), 0);
  if (!(total > 0)) return shares;
  std::vector<double> remainders(parts.size());
  long long rest = whole;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const double share = parts[i] / total * static_cast<double>(whole);
    shares[i] = static_cast<long long>(std::floor(share));
    remainders[i] = share - std::floor(share);
    rest -= shares[i];
  }
  std::vector<std::size_t> order(parts.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return remainders[a] > remainders[b]; });
  for (std::size_t i = 0; i < order.size() && rest > 0; ++i, --rest) ++shares[order[i]];
  return shares;
}

std::vector<std::string> PiPieSlices::percentTexts(int numDecimals) const {
  numDecimals = std::clamp(numDecimals, 0, 9);
  long long unit = 1;
  for (int i = 0; i < numDecimals; ++i) unit *= 10;
  std::vector<double> parts;
  for (const Slice& slice : m_displayed) parts.push_back(slice.value);
  std::vector<std::string> texts;
  for (const long long share : apportion(parts, m_total, 100 * unit)) {
    char text[40];
    if (numDecimals == 0)
      std::snprintf(text, sizeof text, "%lld%%", share);
    else
      std::snprintf(text, sizeof text, "%lld.%0*lld%%", share / unit, numDecimals, share % unit);
    texts.emplace_back(text);
  }
  return texts;
}
