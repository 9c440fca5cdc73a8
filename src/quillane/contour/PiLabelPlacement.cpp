#include "quillane/contour/PiLabelPlacement.h"

#include <Inventor/SbRotation.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unordered_map>

namespace {

/// How much longer a line must be across than the label, in squares.
constexpr double kLeastRoom = 1.5;
/// The room round a label, as a share of its width: half of it at each end, and as much above and below.
constexpr double kMargin = 0.1;

/// Whether floats can hold the corners.
bool isInRange(const PiRect& rect) {
  constexpr double kGreatest = std::numeric_limits<float>::max();
  return rect.minX >= -kGreatest && rect.minY >= -kGreatest && rect.maxX <= kGreatest && rect.maxY <= kGreatest;
}

PiLabelBox roomOf(PiLabelBox box) {
  const double margin = kMargin * box.halfWidth;
  box.halfWidth += margin;
  box.halfHeight += margin;
  return box;
}

bool hasSize(const PiLabelLine& line) {
  return line.points.size() >= 2 && line.width > 0 && line.height > 0 && std::isfinite(line.width) &&
         std::isfinite(line.height);
}

}  // namespace

/// The limits of the labels placed so far, in a grid of squares as large as the largest of them.
class PiLabelPlacement::PlacedLimits {
 public:
  explicit PlacedLimits(std::span<const PiLabelLine> lines) {
    for (const PiLabelLine& line : lines) {
      if (!hasSize(line)) continue;
      m_origin.extendBy(line.points.front());
      m_square = std::max(m_square, (1 + 2 * kMargin) * std::hypot(double(line.width), double(line.height)));
    }
  }

  bool isFree(const PiRect& limit) const {
    return !anySquare(limit, [&](std::uint64_t key) {
      const auto found = m_limits.find(key);
      return found != m_limits.end() && std::any_of(found->second.begin(), found->second.end(),
                                                    [&](const PiRect& other) { return other.overlaps(limit); });
    });
  }
  void add(const PiRect& limit) {
    anySquare(limit, [&](std::uint64_t key) {
      m_limits[key].push_back(limit);
      return false;
    });
  }

 private:
  // Far away many squares count as one, which is slower and just as right.
  static constexpr double kMaxSquare = 1 << 30;

  std::int64_t square(double place, double origin) const {
    return static_cast<std::int64_t>(std::clamp(std::floor((place - origin) / m_square), -kMaxSquare, kMaxSquare));
  }
  template <class Accept>
  bool anySquare(const PiRect& limit, Accept&& accept) const {
    const std::int64_t lastX = square(limit.maxX, m_origin.minX), lastY = square(limit.maxY, m_origin.minY);
    for (std::int64_t x = square(limit.minX, m_origin.minX); x <= lastX; ++x)
      for (std::int64_t y = square(limit.minY, m_origin.minY); y <= lastY; ++y)
        if (accept(static_cast<std::uint64_t>(x) << 32 ^ (static_cast<std::uint64_t>(y) & 0xFFFFFFFFU))) return true;
    return false;
  }

  PiRect m_origin;
  double m_square = 0;
  std::unordered_map<std::uint64_t, std::vector<PiRect>> m_limits;
};

/// A place that is tried.
struct PiLabelPlacement::Place {
  SbVec3f middle;
  SbVec3f from, to;  // the line at the ends of the label, if they were found
  bool hasEnds = false;
  PiLabelBox box;
};

void PiLabelPlacement::setClippingPolygon(std::span<const SbVec2f> corners) {
  m_polygonCorners.clear();
  m_polygonLimit = PiRect();
  m_polygon = PiSegmentIndex();
  for (const SbVec2f& corner : corners)
    if (std::isfinite(corner[0]) && std::isfinite(corner[1])) m_polygonCorners.emplace_back(corner[0], corner[1], 0.0F);
  if (m_polygonCorners.size() < 3) {
    m_polygonCorners.clear();
    return;
  }
  const SbVec3f first = m_polygonCorners.front();  // a copy: the list may move
  m_polygonCorners.push_back(first);
  for (const SbVec3f& corner : m_polygonCorners) m_polygonLimit.extendBy(corner);
  const PiPolyline outline(m_polygonCorners);
  m_polygon = PiSegmentIndex({&outline, 1});
}

std::vector<PiPlacedLabel> PiLabelPlacement::place(std::span<const PiLabelLine> lines) {
  m_lines = lines;
  m_stagger = 0;
  std::vector<PiPolyline> forbidden;
  m_forbiddenNumbers.clear();
  for (std::size_t number = 0; number < lines.size(); ++number) {
    if (!lines[number].isForbidden) continue;
    forbidden.push_back(lines[number].points);
    m_forbiddenNumbers.push_back(number);
  }
  m_forbidden = PiSegmentIndex(forbidden);

  PlacedLimits placed(lines);
  std::vector<PiPlacedLabel> labels;
  for (std::size_t number = 0; number < lines.size(); ++number)
    if (hasRoom(lines[number])) placeOn(number, placed, labels);
  return labels;
}

bool PiLabelPlacement::hasRoom(const PiLabelLine& line) const {
  if (!hasSize(line)) return false;
  PiRect limit;
  for (const SbVec3f& point : line.points) limit.extendBy(point);
  const auto square = [](double width, double height) { return width * width + height * height; };
  return kLeastRoom * square(line.width, line.height) < square(limit.width(), limit.height());
}

void PiLabelPlacement::placeOn(std::size_t number, PlacedLimits& placed, std::vector<PiPlacedLabel>& labels) {
  const PiLabelLine& line = m_lines[number];
  m_walk.start(line.points);
  const std::size_t start = startSegment();
  std::size_t segment = start;
  bool isFirst = true;
  while (true) {
    Place place;
    if (findPlace(segment, line, place)) {
      const PiLabelRegion room(roomOf(place.box));
      if (placed.isFree(room.limit) && isAllowed(room, number)) {
        placed.add(room.limit);
        labels.push_back(makeLabel(number, place));
        if (isFirst) {
          m_stagger += 1.5 * line.width;
          if (m_stagger >= m_gap) m_stagger = 0;
          isFirst = false;
        }
        if (segment < start) return;
        segment = m_walk.segmentBehind(segment, m_gap);
        if (segment >= m_walk.numSegments()) return;
        continue;
      }
    }
    segment = (segment + 1) % m_walk.numSegments();
    if (segment == start) return;
  }
}

// Where the search along the line that is walked begins.
std::size_t PiLabelPlacement::startSegment() {
  if (m_walk.length() < m_stagger) m_stagger = 0;
  const std::size_t numSegments = m_walk.numSegments();
  return std::min(m_walk.segmentAt(m_stagger), numSegments > 1 ? numSegments - 2 : 0);
}

bool PiLabelPlacement::findPlace(std::size_t segment, const PiLabelLine& line, Place& place) const {
  place.middle = m_walk.middleOf(segment);
  place.box = {place.middle[0], place.middle[1], 1, 0, line.width / 2.0, line.height / 2.0};
  if (m_path == TANGENTIAL || m_isTilted)
    place.hasEnds = m_walk.pointAtDistance(segment, false, place.box.halfWidth, place.from) &&
                    m_walk.pointAtDistance(segment, true, place.box.halfWidth, place.to);
  if (m_path == VERTICAL) {
    place.box.ux = 0;
    place.box.uy = 1;
  }
  if (m_path != TANGENTIAL) return true;

  if (!place.hasEnds) return false;
  // Never upside down; along y it reads upwards.
  const float dx = place.to[0] - place.from[0];
  if (dx < 0 || (dx == 0 && place.to[1] < place.from[1])) std::swap(place.from, place.to);
  place.box.ux = double(place.to[0]) - place.from[0];
  place.box.uy = double(place.to[1]) - place.from[1];
  const double length = std::hypot(place.box.ux, place.box.uy);
  if (!(length > 0)) return false;
  place.box.ux /= length;
  place.box.uy /= length;
  return true;
}

bool PiLabelPlacement::isAllowed(const PiLabelRegion& room, std::size_t line) const {
  if (!isInRange(room.limit) || !isInPolygon(room)) return false;
  const auto isHit = [&](std::size_t, const SbVec3f& from, const SbVec3f& to) { return room.box.touches(from, to); };
  if (m_boundary.any(room, isHit)) return false;
  return !m_forbidden.any(room, [&](std::size_t number, const SbVec3f& from, const SbVec3f& to) {
    return m_forbiddenNumbers[number] != line && room.box.touches(from, to);
  });
}

// No side comes into the room, so that all of it is on the same side of the outline.
bool PiLabelPlacement::isInPolygon(const PiLabelRegion& room) const {
  if (m_polygonCorners.empty()) return true;
  if (!room.limit.overlaps(m_polygonLimit)) return false;
  const auto isHit = [&](std::size_t, const SbVec3f& from, const SbVec3f& to) { return room.box.touches(from, to); };
  if (m_polygon.any(room, isHit)) return false;
  const double x = room.box.x, y = room.box.y;
  PiRect ray;
  ray.extendBy(x, y);
  ray.extendBy(std::max(x, m_polygonLimit.maxX), y);
  bool isInside = false;
  m_polygon.any(ray, [&](std::size_t, const SbVec3f& from, const SbVec3f& to) {
    if ((from[1] > y) == (to[1] > y)) return false;
    const double share = (y - from[1]) / (double(to[1]) - from[1]);
    if (from[0] + share * (double(to[0]) - from[0]) > x) isInside = !isInside;
    return false;
  });
  return isInside;
}

PiPlacedLabel PiLabelPlacement::makeLabel(std::size_t line, const Place& place) const {
  const auto& box = place.box;
  PiPlacedLabel label;
  label.line = line;
  label.position = place.middle;
  label.box = box;
  label.direction.setValue(static_cast<float>(box.ux), static_cast<float>(box.uy), 0);
  label.up.setValue(-label.direction[1], label.direction[0], 0);
  if (m_isTilted && place.hasEnds) {
    SbVec3f rising = place.to - place.from;
    SbVec3f level(rising[0], rising[1], 0);
    if (rising[2] != 0 && level.normalize() > 0 && rising.normalize() > 0) {
      const SbRotation turn(level, rising);
      turn.multVec(label.direction, label.direction);
      turn.multVec(label.up, label.up);
    }
  }
  label.placeCorners();
  return label;
}
