#include "graph/legend/PiLegendColors.h"

#include <algorithm>
#include <cmath>

#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>

namespace PiLegendColors {

namespace {

// Where colours may jump or turn, as parts of the interval.
std::vector<float> joints(const PbDataMapping& mapping, float value1, float value2) {
  std::vector<float> values;
  int hasMin = 0, hasMax = 0;
  mapping.thresholdsEnabled(hasMin, hasMax);
  float threshold = 0;
  if (hasMin) {
    mapping.getMinRGBThreshold(threshold);
    values.push_back(threshold);
  }
  if (hasMax) {
    mapping.getMaxRGBThreshold(threshold);
    values.push_back(threshold);
  }
  int numEven = 1;
  if (mapping.getClassType() == PbDataMapping::LINEAR) {
    SbColor color;
    float first = 0, last = 0;
    static_cast<const PbLinearDataMapping&>(mapping).getValues(first, color, last, color);
    values.insert(values.end(), {first, last});
    // Beyond these, each channel goes on until it is 0 or 1.
    numEven = 32;
  } else if (mapping.getClassType() == PbDataMapping::NON_LINEAR2) {
    int num = 0;
    const float* levels = static_cast<const PbNonLinearDataMapping2&>(mapping).getValuesList(num);
    values.insert(values.end(), levels, levels + num);
    numEven = 32;
  } else {
    numEven = 64;  // a function of the application can be anything
  }
  std::vector<float> parts = {0, 1};
  for (const float value : values) {
    const float part = (value - value1) / (value2 - value1);
    if (part > 0 && part < 1) parts.push_back(part);
  }
  for (int i = 1; i < numEven; ++i) parts.push_back(static_cast<float>(i) / static_cast<float>(numEven));
  std::sort(parts.begin(), parts.end());
  parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
  return parts;
}

bool colorAt(const PbDataMapping& mapping, float value, SbColor& color, float& transparency) {
  transparency = 0;
  const SbColor* found = mapping.getRGBColor(value, transparency);
  if (!found) return false;
  color = *found;
  if (!mapping.isTransparencyEnabled()) transparency = 0;
  transparency = std::clamp(transparency, 0.0F, 1.0F);
  // Meshes leave such parts out too.
  return !mapping.isTransparencyEnabled() || transparency < mapping.getTransparencyValueDeletedParts();
}

}  // namespace

std::vector<Piece> pieces(const PbDataMapping& mapping, float value1, float value2) {
  if (value1 == value2) return single(mapping, value1);
  const std::vector<float> parts = joints(mapping, value1, value2);
  std::vector<Piece> result;
  for (size_t i = 1; i < parts.size(); ++i) {
    Piece piece;
    piece.from = parts[i - 1];
    piece.to = parts[i];
    // Just inside: on the joint itself the colour is that of the one side or the other.
    const float inside = (piece.to - piece.from) * 1e-3F;
    const auto valueAt = [&](float part) { return value1 + (value2 - value1) * part; };
    if (colorAt(mapping, valueAt(piece.from + inside), piece.color1, piece.transparency1) &&
        colorAt(mapping, valueAt(piece.to - inside), piece.color2, piece.transparency2))
      result.push_back(piece);
  }
  return result;
}

std::vector<Piece> single(const PbDataMapping& mapping, float value) {
  Piece piece;
  if (!colorAt(mapping, value, piece.color1, piece.transparency1)) return {};
  piece.color2 = piece.color1;
  piece.transparency2 = piece.transparency1;
  return {piece};
}

}  // namespace PiLegendColors
