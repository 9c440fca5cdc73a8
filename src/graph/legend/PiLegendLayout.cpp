#include "graph/legend/PiLegendLayout.h"

#include <algorithm>
#include <cmath>

namespace PiLegendLayout {

Frame withoutMargins(const Margins& margins, const Frame& frame) {
  float left = margins.left, right = margins.right, bottom = margins.bottom, top = margins.top;
  if (margins.type == PoLegend::REL_MARGIN) {
    if (std::min({left, right, bottom, top}) < 0) {
      left = right = bottom = top = 0.05F * std::min(frame.width, frame.height);
    } else {
      const bool isWide = left + right < 1, isHigh = bottom + top < 1;
      left = isWide ? left * frame.width : 0;
      right = isWide ? right * frame.width : 0;
      bottom = isHigh ? bottom * frame.height : 0;
      top = isHigh ? top * frame.height : 0;
    }
  } else {
    if (!(left + right < frame.width)) left = right = 0;
    if (!(bottom + top < frame.height)) bottom = top = 0;
  }
  return {frame.origin + SbVec2f(left, bottom), frame.width - left - right, frame.height - bottom - top};
}

float fitTitle(PoLegend::Position position, float width, float height, const SbVec2f& extent, float size) {
  const bool aside = isAside(position);
  const float mostWidth = (aside ? 0.5F : 0.95F) * width, mostHeight = (aside ? 0.95F : 0.5F) * height;
  if (extent[0] * size < mostWidth && extent[1] * size < mostHeight) return size;
  float fitted = std::min(size, aside ? mostWidth : mostHeight);
  if (extent[0] > 0) fitted = std::min(fitted, mostWidth / extent[0]);
  if (extent[1] > 0) fitted = std::min(fitted, mostHeight / extent[1]);
  return std::max(0.0F, fitted);
}

SbVec2f takeStrip(Plimit& limits, PoLegend::Position side, float width, float height) {
  const float middleX = (limits.xmin + limits.xmax) / 2, middleY = (limits.ymin + limits.ymax) / 2;
  switch (side) {
    case PoLegend::POS_BOTTOM:
      limits.ymin += height;
      return {middleX, limits.ymin - height / 2};
    case PoLegend::POS_TOP:
      limits.ymax -= height;
      return {middleX, limits.ymax + height / 2};
    case PoLegend::POS_RIGHT:
      limits.xmax -= width;
      return {limits.xmax + width / 2, middleY};
    default:
      limits.xmin += width;
      return {limits.xmin - width / 2, middleY};
  }
}

void Grid::fit(float width, float height) {
  const auto columns = static_cast<float>(numColumns), rows = static_cast<float>(numRows);
  float across = COLUMN_GAP * (columns - 1) + moreAcross;
  float down = ROW_GAP * (rows - 1) + boxHeight * rows;
  if (isAside(valuePosition)) {
    across += (boxWidth + TEXT_GAP) * columns;
    for (const float text : columnWidths) across += text;
  } else {
    down += TEXT_LINE * rows;
    for (float& text : columnWidths) {
      if (text < boxWidth) text = 0;
      across += std::max(boxWidth, text);
    }
  }
  down += moreDown;
  float& other = isAside(valuePosition) ? across : down;
  other = std::max(other, least);
  size = std::max(0.0F, std::min(width / across, height / down));
  for (float& text : columnWidths) text *= size;
  const auto gap = [&](float count, float narrowest, float rest) {
    return count > 1 ? narrowest * size + rest / (count - 1) : rest;
  };
  gaps[0] = gap(columns, COLUMN_GAP, std::max(0.0F, width - across * size));
  gaps[1] = gap(rows, ROW_GAP, std::max(0.0F, height - down * size));
}

void Grid::forEachCell(const Plimit& limits, const std::function<void(const Cell&)>& visit) const {
  const float w = boxWidth * size, h = boxHeight * size;
  const float edgeX = numColumns == 1 ? gaps[0] / 2 : 0, edgeY = numRows == 1 ? gaps[1] / 2 : 0;
  const bool aside = isAside(valuePosition);
  const auto widthOf = [&](int column) {
    return column < static_cast<int>(columnWidths.size()) ? columnWidths[static_cast<size_t>(column)] : 0.0F;
  };
  // y is the upper side of a row of boxes.
  float y = isFromTop ? limits.ymax - edgeY - (valuePosition == PoLegend::POS_TOP ? TEXT_LINE * size : 0)
                      : limits.ymin + edgeY + h + (valuePosition == PoLegend::POS_BOTTOM ? TEXT_LINE * size : 0);
  const float rowStep = h + gaps[1] + (aside ? 0 : TEXT_LINE * size);
  for (int row = 0; row < numRows; ++row, y += isFromTop ? -rowStep : rowStep) {
    float x = limits.xmin + edgeX;
    if (valuePosition == PoLegend::POS_LEFT) x += widthOf(0) + TEXT_GAP * size;
    if (!aside) x += std::max(0.0F, (widthOf(0) - w) / 2);
    for (int column = 0; column < numColumns; ++column) {
      Cell cell;
      cell.box = increment == PoLegend::HORIZONTAL_INCREMENT ? row * numColumns + column : column * numRows + row;
      cell.origin.setValue(x, y - h);
      switch (valuePosition) {
        case PoLegend::POS_RIGHT:
          cell.text.setValue(x + w + TEXT_GAP * size, y - h / 2);
          break;
        case PoLegend::POS_LEFT:
          cell.text.setValue(x - TEXT_GAP * size, y - h / 2);
          break;
        case PoLegend::POS_TOP:
          cell.text.setValue(x + w / 2, y + TEXT_LINE * size / 2);
          break;
        default:
          cell.text.setValue(x + w / 2, y - h - TEXT_LINE * size / 2);
      }
      if (cell.box < numBoxes) visit(cell);
      if (valuePosition == PoLegend::POS_RIGHT)
        x += w + TEXT_GAP * size + widthOf(column) + gaps[0];
      else if (valuePosition == PoLegend::POS_LEFT)
        x += w + TEXT_GAP * size + widthOf(column + 1) + gaps[0];
      else
        x += (std::max(w, widthOf(column)) + std::max(w, widthOf(column + 1))) / 2 + gaps[0];
    }
  }
}

float OneBox::placeOf(const Text& text) const {
  if (text.place < 0) return (lowerStart + start) / 2;
  if (text.place > 1) return (end + upperEnd) / 2;
  return at(text.place);
}

// Lays the boxes out for a font size; false if the texts don't fit.
bool OneBox::place(float length, float fontSize) {
  const float available = length - reserve * fontSize;
  // Texts at the ends of the long box may need more than the boxes beyond it.
  float before = 0, behind = 0;
  for (int pass = 0; pass < 3; ++pass) {
    const float room = std::max(0.0F, available - before - behind);
    const float whole = isSingle ? 0 : hasEnds ? room / (1 + 2 * endLength) : room;
    const float ends = isSingle ? room / 2 : hasEnds ? whole * endLength : 0;
    lowerStart = before;
    start = before + ends;
    end = start + whole;
    upperEnd = end + ends;
    if (texts.empty()) break;
    before = std::max(before, texts.front().extent * fontSize / 2 - (placeOf(texts.front()) - before));
    behind = std::max(behind, texts.back().extent * fontSize / 2 - (upperEnd - placeOf(texts.back())));
  }
  if (!(available > 0) || before + behind > available / 2) return false;
  for (size_t i = 0; i < texts.size(); ++i) {
    const float half = texts[i].extent * fontSize / 2;
    const float middle = placeOf(texts[i]);
    if (i == 0 && middle - half < -1e-4F * length) return false;
    if (i + 1 == texts.size() && middle + half > available + 1e-4F * length) return false;
    if (i > 0 && middle - placeOf(texts[i - 1]) < half + texts[i - 1].extent * fontSize / 2) return false;
  }
  return true;
}

void OneBox::fit(float length) {
  // Fitting is monotone in the size: halve the interval.
  float low = 0, high = texts.empty() && reserve == 0 ? 0 : maxSize;
  if (place(length, high)) {
    low = high;
  } else {
    for (int i = 0; i < 40; ++i) {
      const float middle = (low + high) / 2;
      (place(length, middle) ? low : high) = middle;
    }
  }
  size = low;
  place(length, size);
}

}  // namespace PiLegendLayout
