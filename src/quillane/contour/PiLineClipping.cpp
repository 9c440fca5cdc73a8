#include "quillane/contour/PiLineClipping.h"

#include <algorithm>

namespace {

/// So many segments are looked up in one go.
constexpr std::size_t kRunLength = 16;

}  // namespace

PiLineClipping::PiLineClipping(std::vector<PiLabelBox> boxes) : m_boxes(std::move(boxes)) {
  std::vector<PiRect> limits;
  limits.reserve(m_boxes.size());
  for (const PiLabelBox& box : m_boxes) limits.push_back(box.limit());
  m_tree = PiRectTree(limits);
}

PiLinePieces PiLineClipping::clip(std::span<const PiPolyline> lines) {
  m_result = PiLinePieces();
  for (std::size_t number = 0; number < lines.size(); ++number)
    if (lines[number].size() >= 2) clipLine(number, lines[number]);
  return std::move(m_result);
}

void PiLineClipping::clipLine(std::size_t number, PiPolyline points) {
  m_line = number;
  m_pieceStart = m_result.points.size();
  m_result.points.push_back(points.front());
  for (std::size_t first = 0; first + 1 < points.size(); first += kRunLength) {
    const std::size_t last = std::min(first + kRunLength, points.size() - 1);
    PiRect rect;
    for (std::size_t i = first; i <= last; ++i) rect.extendBy(points[i]);
    if (m_tree.any(rect, [](std::size_t) { return true; })) {
      for (std::size_t i = first; i < last; ++i) clipSegment(points[i], points[i + 1]);
    } else {
      m_result.points.insert(m_result.points.end(), points.begin() + static_cast<std::ptrdiff_t>(first) + 1,
                             points.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    }
  }
  finishPiece(number);
}

// Goes on from `from`, where the piece under way ends unless that lies in a box.
void PiLineClipping::clipSegment(const SbVec3f& from, const SbVec3f& to) {
  PiRect rect;
  rect.extendBy(from);
  rect.extendBy(to);
  m_gaps.clear();
  m_tree.any(rect, [&](std::size_t number) {
    Gap gap;
    if (m_boxes[number].clip(from, to, gap.enter, gap.leave) && gap.enter < gap.leave) m_gaps.push_back(gap);
    return false;
  });
  std::sort(m_gaps.begin(), m_gaps.end(), [](const Gap& a, const Gap& b) { return a.enter < b.enter; });
  double reached = 0;
  const auto pointAt = [&](double share) { return from + (to - from) * static_cast<float>(share); };
  for (const Gap& gap : m_gaps) {
    if (gap.leave <= reached) continue;
    if (gap.enter > reached) m_result.points.push_back(pointAt(gap.enter));
    finishPiece(m_line);
    reached = gap.leave;
    m_result.points.push_back(reached < 1 ? pointAt(reached) : to);
  }
  if (reached < 1) m_result.points.push_back(to);
}

// A single point is no piece.
void PiLineClipping::finishPiece(std::size_t line) {
  const std::size_t num = m_result.points.size() - m_pieceStart;
  if (num >= 2)
    m_result.pieces.push_back({line, num});
  else
    m_result.points.resize(m_pieceStart);
  m_pieceStart = m_result.points.size();
}
