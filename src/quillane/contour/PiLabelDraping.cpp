#include "quillane/contour/PiLabelDraping.h"

#include <algorithm>
#include <cmath>

namespace {

/// Where the surface is looked at: in columns along the label, of three places each.
constexpr int kNumColumns = 9;
constexpr std::size_t kNumPlaces = std::size_t{3} * kNumColumns;
/// How far a label is kept off the surface, and how far it is lifted at most, in heights of the label.
constexpr float kLeastLift = 0.03F, kMaxLift = 1;

void addPlaces(const PiLabelBox& box, std::vector<SbVec2f>& places) {
  for (int column = 0; column < kNumColumns; ++column) {
    const double along = box.halfWidth * (2.0 * column / (kNumColumns - 1) - 1);
    for (int row = -1; row <= 1; ++row) {
      const double across = box.halfHeight * row;
      places.emplace_back(static_cast<float>(box.x + along * box.ux - across * box.uy),
                          static_cast<float>(box.y + along * box.uy + across * box.ux));
    }
  }
}

/// How steeply the surface rises across the label.
float slopeAcross(const PiLabelBox& box, const float* heights) {
  float sum = 0;
  int num = 0;
  for (int column = 0; column < kNumColumns; ++column) {
    const float rise = heights[3 * column + 2] - heights[3 * column];
    if (!std::isfinite(rise)) continue;
    sum += rise;
    ++num;
  }
  const float slope = num > 0 ? sum / static_cast<float>(num) / static_cast<float>(2 * box.halfHeight) : 0;
  return std::isfinite(slope) ? slope : 0;
}

void drape(PiPlacedLabel& label, const SbVec2f* places, const float* heights) {
  const auto height = static_cast<float>(2 * label.box.halfHeight);
  SbVec3f up = label.up + SbVec3f(0, 0, slopeAcross(label.box, heights));
  up -= label.direction * label.direction.dot(up);
  if (up.normalize() > 0) label.up = up;

  const SbVec3f normal = label.direction.cross(label.up);
  float lift = 0;
  for (std::size_t i = 0; i < kNumPlaces && normal[2] > 0; ++i) {
    const float x = places[i][0] - label.position[0], y = places[i][1] - label.position[1];
    const float own = label.position[2] - (normal[0] * x + normal[1] * y) / normal[2];
    if (heights[i] - own > lift) lift = heights[i] - own;
  }
  label.position[2] += std::min(lift, kMaxLift * height) + kLeastLift * height;
  label.placeCorners();
}

}  // namespace

void drapeLabels(std::span<PiPlacedLabel> labels, const PiHeightsAt& heightsAt) {
  std::vector<SbVec2f> places;
  for (const PiPlacedLabel& label : labels) addPlaces(label.box, places);
  const std::vector<float> heights = heightsAt(places);
  for (std::size_t i = 0; i < labels.size(); ++i)
    drape(labels[i], places.data() + kNumPlaces * i, heights.data() + kNumPlaces * i);
}
