#include "quillane/emit/PiDrawnNodes.h"

#include <bit>
#include <cmath>

namespace {

constexpr std::uint32_t kExponent = 0x7F800000;

/// Whether all floats are finite. By their bits, which the compiler turns into wide operations.
bool areAllFinite(const float* floats, std::size_t num) {
  std::uint32_t areSomeNot = 0;
  for (std::size_t i = 0; i < num; ++i)
    areSomeNot |= (std::bit_cast<std::uint32_t>(floats[i]) & kExponent) == kExponent ? 1U : 0U;
  return areSomeNot == 0;
}

bool isAnyNaN(const float* floats, std::size_t num) {
  std::uint32_t areSome = 0;
  for (std::size_t i = 0; i < num; ++i) areSome |= floats[i] != floats[i] ? 1U : 0U;
  return areSome != 0;
}

}  // namespace

PiDrawnNodes::PiDrawnNodes(SbVec3f* points, const float* values, int num) {
  const auto numNodes = static_cast<std::size_t>(num);
  if (numNodes == 0) return;
  const bool areFinite = areAllFinite(points[0].getValue(), 3 * numNodes);
  if (areFinite && !(values && isAnyNaN(values, numNodes))) return;

  m_isDrawn.resize(numNodes);
  for (std::size_t i = 0; i < numNodes; ++i) {
    const bool isFinite = areFinite || areAllFinite(points[i].getValue(), 3);
    if (!isFinite) points[i].setValue(0, 0, 0);
    m_isDrawn[i] = isFinite && !(values && std::isnan(values[i]));
  }
}
