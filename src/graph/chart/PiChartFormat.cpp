#include "graph/chart/PiChartFormat.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLargestWhole = 1e6f;  // of larger ones a power of ten reads better

bool isWhole(float value) { return std::abs(value) < kLargestWhole && value == std::floor(value); }

}  // namespace

PiChartFormat::PiChartFormat(const PbNumericDisplayFormat* format, const std::vector<float>& values) {
  if (!format && std::all_of(values.begin(), values.end(), isWhole))
    m_format.setFormatInteger(0);
  else
    m_format.setFormat(format, static_cast<int>(values.size()), values.data(), 1);
}

std::string PiChartFormat::text(double value) const {
  char text[PiNumericFormat::TEXT_SIZE];
  m_format.getString(static_cast<float>(value), text);
  std::string result(text);
  if (m_format.getTenPower() != 0) result.append("E").append(std::to_string(m_format.getTenPower()));
  return result;
}
