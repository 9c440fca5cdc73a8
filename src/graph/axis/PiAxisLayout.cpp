#include "graph/axis/PiAxisLayout.h"

#include <algorithm>
#include <cmath>

namespace PiAxisLayout {

void resolveTickLengths(PiAxisAttributes& attributes, int numMainGrads) {
  if (!(attributes.tickMainLength > 0))
    attributes.tickMainLength = numMainGrads < 12 ? 0.025F : numMainGrads < 25 ? 0.016F : 0.012F;
  if (!(attributes.tickSubLength > 0)) attributes.tickSubLength = attributes.tickMainLength / 2;
}

Reach tickReach(PoAxis::TickPosition position, bool isAbove) {
  if (position == PoAxis::TICK_ACROSS_AXIS) return {-0.5F, 0.5F};
  return {0, isAbove == (position == PoAxis::TICK_GRAD_SIDE) ? 1.0F : -1.0F};
}

float fitGradSize(PoAxis::TextPath path, float maxWidth, int maxLetters, float interval, float along) {
  const float size = AUTO_GRAD_SIZE * along;
  const float room = TEXT_ROOM * std::abs(interval);
  if (!PiAxisText::isVertical(path)) {
    const float width = maxWidth * size;
    return width > room ? size * room / width : size;
  }
  const auto letters = static_cast<float>(std::max(1, maxLetters));
  const float height = size * TEXT_GAP + size * (letters - 1);
  return height > room ? room / letters : size;
}

float gradLine(PiAxisAttributes& attributes, const Plimit& limits, float size, float along) {
  if (attributes.gradDistAxis != 0) return attributes.gradDistAxis * along * attributes.side();
  const float y = attributes.isAbove() ? size * TEXT_GAP + limits.ymax : limits.ymin - size * TEXT_GAP;
  attributes.gradDistAxis = std::abs(y) / along;
  return y;
}

TitlePlace placeTitle(PiAxisAttributes& attributes, const Plimit& limits, float start, float end, float along) {
  if (!(attributes.titleFontSize > 0)) attributes.titleFontSize = AUTO_TITLE_SIZE;
  const float size = attributes.titleFontSize * along;
  const PoAxis::TextPath path = attributes.effective(attributes.titlePath);
  float& distance = attributes.titleDistAxis;
  TitlePlace title;
  if (attributes.titlePosition != PoAxis::TITLE_END) {
    title.alignment = PiTextAlignment::beside(path, attributes.isAbove());
    title.place.x = (start + end) / 2;
    if (distance != 0) {
      title.place.y = distance * along * attributes.side();
    } else {
      title.place.y = attributes.isAbove() ? limits.ymax + size : limits.ymin - size;
      distance = std::abs(title.place.y) / along;
    }
    return title;
  }
  const bool isIncreasing = end > start;
  const float outwards = isIncreasing ? 1.0F : -1.0F;
  title.alignment = PiTextAlignment::beyond(path, isIncreasing);
  if (distance != 0) {
    title.place.x = end + outwards * distance * along;
  } else {
    title.place.x = (isIncreasing ? limits.xmax : limits.xmin) + outwards * size * TEXT_GAP;
    distance = std::abs(title.place.x - end) / along;
  }
  return title;
}

Place placeMultiplier(const Plimit& limits, float start, float end, float size, float along, float& distance) {
  const float outwards = end > start ? 1.0F : -1.0F;
  if (distance != 0) return {end + outwards * distance * along, 0};
  const float x = (end > start ? limits.xmax : limits.xmin) + outwards * size * TEXT_GAP;
  distance = std::abs(x - end) / along;
  return {x, 0};
}

void growByText(Plimit& limits, const PiTextBox& box, float x, float y, float size) {
  if (box.isEmpty()) return;
  limits.xmin = std::min(limits.xmin, x + box.xmin * size);
  limits.xmax = std::max(limits.xmax, x + box.xmax * size);
  limits.ymin = std::min(limits.ymin, y + box.ymin * size);
  limits.ymax = std::max(limits.ymax, y + box.ymax * size);
}

}  // namespace PiAxisLayout
