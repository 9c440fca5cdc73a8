#include "graph/chart/PiPieLayout.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kGap = 0.15;  // between two annotations, in heights
constexpr double kUnbounded = 1e30;

using Annotation = PiPieLayout::Annotation;
using Place = PiPieLayout::Place;
using Pie = PiPieLayout::Pie;

double middle(const Annotation& annotation) { return (annotation.start + annotation.end) / 2; }

SbVec2f direction(double angle) {
  return SbVec2f(static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)));
}

bool isUsable(const Annotation& annotation) {
  return annotation.width > 0 && annotation.height > 0 && std::isfinite(annotation.width) &&
         std::isfinite(annotation.height);
}

/// An angle in which text is never upside down.
double upright(double angle) {
  angle = std::remainder(angle, 2 * kPi);
  if (angle > kPi / 2 + 1e-9) return angle - kPi;
  if (angle < -kPi / 2 - 1e-9) return angle + kPi;
  return angle;
}

/// A box of text, turned about its centre.
struct Box {
  SbVec2f center;
  SbVec2f along;
  float halfWidth;
  float halfHeight;

  Box(const SbVec2f& c, double angle, float width, float height)
      : center(c), along(direction(angle)), halfWidth(width / 2), halfHeight(height / 2) {}

  SbVec2f local(const SbVec2f& point) const {
    const SbVec2f d = point - center;
    return SbVec2f(d.dot(along), d[1] * along[0] - d[0] * along[1]);
  }
  SbVec2f corner(int i) const {
    const float x = (i == 0 || i == 3) ? -halfWidth : halfWidth;
    const float y = i < 2 ? -halfHeight : halfHeight;
    return center + along * x + SbVec2f(-along[1], along[0]) * y;
  }
  double distance(const SbVec2f& point) const {
    const SbVec2f p = local(point);
    return std::hypot(std::max(0.0f, std::abs(p[0]) - halfWidth), std::max(0.0f, std::abs(p[1]) - halfHeight));
  }
  /// By clipping the segment against the two pairs of sides.
  bool meets(const SbVec2f& from, const SbVec2f& to) const {
    const SbVec2f a = local(from);
    const SbVec2f d = local(to) - a;
    double enter = 0;
    double leave = 1;
    for (int i = 0; i < 2; ++i) {
      const double half = i == 0 ? halfWidth : halfHeight;
      if (d[i] == 0) {
        if (std::abs(a[i]) > half) return false;
        continue;
      }
      const double t1 = (-half - a[i]) / d[i];
      const double t2 = (half - a[i]) / d[i];
      enter = std::max(enter, std::min(t1, t2));
      leave = std::min(leave, std::max(t1, t2));
    }
    return enter <= leave;
  }
};

bool fitsSlice(const Pie& pie, const Annotation& annotation, const Box& box) {
  const double halfSweep = (annotation.end - annotation.start) / 2;
  const bool isFull = halfSweep >= kPi * (1 - 1e-9);
  for (int i = 0; i < 4; ++i) {
    const SbVec2f d = box.corner(i) - annotation.center;
    if (d.length() > pie.radius) return false;
    if (!isFull && std::abs(std::remainder(std::atan2(d[1], d[0]) - middle(annotation), 2 * kPi)) > halfSweep)
      return false;
  }
  if (pie.innerRadius > 0 && box.distance(annotation.center) < pie.innerRadius) return false;
  if (isFull) return true;
  return !box.meets(annotation.center, annotation.center + direction(annotation.start) * pie.radius) &&
         !box.meets(annotation.center, annotation.center + direction(annotation.end) * pie.radius);
}

bool fitsFrame(const SbBox2f& frame, const Box& box) {
  if (frame.isEmpty()) return true;
  for (int i = 0; i < 4; ++i)
    if (!frame.intersect(box.corner(i))) return false;
  return true;
}

/// Outer annotations of one row, with what rows have in common.
class Row {
 public:
  explicit Row(const std::vector<Annotation>& annotations) : m_annotations(annotations) {}

  void add(std::size_t i, double wanted, double length) { m_members.push_back({i, wanted, length}); }

  /// Keeps as many as have room in [low, high], the largest slices first, spreads them in the order in which they want
  /// to stand (`order` compares two annotations), and hands each its position.
  void settle(double low, double high, const std::function<bool(std::size_t, std::size_t)>& order,
              const std::function<void(std::size_t, double)>& place) {
    std::sort(m_members.begin(), m_members.end(), [&](const Member& a, const Member& b) {
      const double weightA = m_annotations[a.index].weight;
      const double weightB = m_annotations[b.index].weight;
      return weightA != weightB ? weightA > weightB : a.index < b.index;
    });
    double room = high - low;
    std::size_t numKept = 0;
    for (; numKept < m_members.size() && m_members[numKept].length <= room; ++numKept)
      room -= m_members[numKept].length;
    m_members.resize(numKept);
    std::sort(m_members.begin(), m_members.end(),
              [&](const Member& a, const Member& b) { return order(a.index, b.index); });
    std::vector<double> wanted;
    std::vector<double> lengths;
    for (const Member& member : m_members) {
      wanted.push_back(member.wanted);
      lengths.push_back(member.length);
    }
    const std::vector<double> positions = PiPieLayout::spread(wanted, lengths, low, high);
    for (std::size_t i = 0; i < m_members.size(); ++i) place(m_members[i].index, positions[i]);
  }

 private:
  struct Member {
    std::size_t index;
    double wanted;
    double length;
  };

  const std::vector<Annotation>& m_annotations;
  std::vector<Member> m_members;
};

/// The common state of placing outer annotations.
class OuterPlacer {
 public:
  OuterPlacer(const Pie& pie, const std::vector<Annotation>& annotations, float length1, float length2, float length3)
      : m_pie(pie),
        m_annotations(annotations),
        m_lengths{std::max(0.0f, length1), std::max(0.0f, length2), std::max(0.0f, length3)},
        m_places(annotations.size()) {}

  std::vector<Place> run(PiPieLayout::Outer outer) {
    switch (outer) {
      case PiPieLayout::RADIAL_EXT:
        for (const bool isRight : {true, false}) placeRadial(isRight);
        break;
      case PiPieLayout::HORIZONTAL_EXT:
      case PiPieLayout::VERTICAL_ALIGNED:
        for (const bool isRight : {true, false})
          placeColumn(isRight, outer == PiPieLayout::VERTICAL_ALIGNED, low(1), high(1),
                      [isRight](double cosine, double) { return (cosine >= 0) == isRight; });
        break;
      case PiPieLayout::HORIZONTAL_ALIGNED:
        for (const bool isTop : {true, false})
          placeLine(isTop, reach(), [isTop](double, double sine) { return (sine >= 0) == isTop; });
        break;
      case PiPieLayout::SQUARE_ALIGNED: {
        const double bottom = std::max(low(1), m_pie.center[1] - reach());
        const double top = std::min(high(1), m_pie.center[1] + reach());
        for (const bool isFirst : {true, false}) {
          placeColumn(isFirst, true, bottom, top, [isFirst](double cosine, double sine) {
            return std::abs(cosine) >= std::abs(sine) && (cosine >= 0) == isFirst;
          });
          placeLine(isFirst, reach(), [isFirst](double cosine, double sine) {
            return std::abs(cosine) < std::abs(sine) && (sine >= 0) == isFirst;
          });
        }
        break;
      }
    }
    return std::move(m_places);
  }

 private:
  using Belongs = std::function<bool(double cosine, double sine)>;

  double low(int axis) const { return m_pie.frame.isEmpty() ? -kUnbounded : m_pie.frame.getMin()[axis]; }
  double high(int axis) const { return m_pie.frame.isEmpty() ? kUnbounded : m_pie.frame.getMax()[axis]; }
  /// How far from the centre aligned rows stand.
  double reach() const { return m_pie.clearRadius + m_lengths[0] + m_lengths[1]; }

  SbVec2f edge(std::size_t i) const {
    return m_annotations[i].center + direction(middle(m_annotations[i])) * m_pie.radius;
  }
  SbVec2f outside(std::size_t i, double length) const {
    return edge(i) + direction(middle(m_annotations[i])) * static_cast<float>(length);
  }

  /// How far the slices come at heights from bottom to top, from the centre along x.
  double clearance(double bottom, double top) const {
    const double cy = m_pie.center[1];
    const double nearest = bottom <= cy && cy <= top ? 0 : std::min(std::abs(bottom - cy), std::abs(top - cy));
    return std::sqrt(std::max(0.0, static_cast<double>(m_pie.clearRadius) * m_pie.clearRadius - nearest * nearest));
  }

  void show(std::size_t i, const SbVec2f& center, double angle, bool isMirrored, std::vector<SbVec2f> line) {
    const Annotation& annotation = m_annotations[i];
    if (!fitsFrame(m_pie.frame, Box(center, angle, annotation.width, annotation.height))) return;
    m_places[i] = {true, center, static_cast<float>(angle), isMirrored, std::move(line)};
  }

  /// Boxes beside the pie, above each other.
  void placeColumn(bool isRight, bool isAligned, double bottom, double top, const Belongs& belongs) {
    const double side = isRight ? 1 : -1;
    Row row(m_annotations);
    double widest = 0;
    for (std::size_t i = 0; i < m_annotations.size(); ++i) {
      const Annotation& annotation = m_annotations[i];
      if (!isUsable(annotation) || !belongs(std::cos(middle(annotation)), std::sin(middle(annotation)))) continue;
      row.add(i, outside(i, m_lengths[0] + m_lengths[1])[1], annotation.height * (1 + kGap));
      widest = std::max(widest, static_cast<double>(annotation.width));
    }
    // How far from the centre boxes may begin so that they end inside the frame.
    const double border = isRight ? high(0) - m_pie.center[0] : m_pie.center[0] - low(0);
    const auto lower = [&](std::size_t a, std::size_t b) {
      const double sineA = std::sin(middle(m_annotations[a]));
      const double sineB = std::sin(middle(m_annotations[b]));
      return sineA != sineB ? sineA < sineB : a < b;
    };
    row.settle(bottom, top, lower, [&](std::size_t i, double y) {
      const Annotation& annotation = m_annotations[i];
      const double closest = clearance(y - annotation.height / 2, y + annotation.height / 2);
      double begin;
      if (isAligned) {
        begin = std::max(closest, std::min(reach() + m_lengths[2], border - widest));
      } else {
        const double wanted = side * (outside(i, m_lengths[0] + m_lengths[1])[0] - m_pie.center[0]);
        begin = std::max(wanted, closest + m_lengths[0]) + m_lengths[2];
        begin = std::max(closest, std::min(begin, border - annotation.width));
      }
      const auto at = [&](double distance, double height) {
        return SbVec2f(static_cast<float>(m_pie.center[0] + side * distance), static_cast<float>(height));
      };
      show(i, at(begin + annotation.width / 2, y), 0, !isRight,
           {edge(i), outside(i, m_lengths[0]), at(std::max(closest, begin - m_lengths[2]), y), at(begin, y)});
    });
  }

  /// Boxes above or below the pie, beside each other.
  void placeLine(bool isTop, double distance, const Belongs& belongs) {
    const double side = isTop ? 1 : -1;
    Row row(m_annotations);
    double highest = 0;
    for (std::size_t i = 0; i < m_annotations.size(); ++i) {
      const Annotation& annotation = m_annotations[i];
      if (!isUsable(annotation) || !belongs(std::cos(middle(annotation)), std::sin(middle(annotation)))) continue;
      row.add(i, outside(i, m_lengths[0] + m_lengths[1])[0], annotation.width + kGap * annotation.height);
      highest = std::max(highest, static_cast<double>(annotation.height));
    }
    const double border = isTop ? high(1) - m_pie.center[1] : m_pie.center[1] - low(1);
    const double begin =
        std::max(static_cast<double>(m_pie.clearRadius), std::min(distance + m_lengths[2], border - highest));
    const auto leftOf = [&](std::size_t a, std::size_t b) {
      const double cosineA = std::cos(middle(m_annotations[a]));
      const double cosineB = std::cos(middle(m_annotations[b]));
      return cosineA != cosineB ? cosineA < cosineB : a < b;
    };
    row.settle(low(0), high(0), leftOf, [&](std::size_t i, double x) {
      const Annotation& annotation = m_annotations[i];
      const auto at = [&](double height) {
        return SbVec2f(static_cast<float>(x), static_cast<float>(m_pie.center[1] + side * height));
      };
      show(i, at(begin + annotation.height / 2), 0, false,
           {edge(i), outside(i, m_lengths[0]), at(std::max<double>(m_pie.clearRadius, begin - m_lengths[2])),
            at(begin)});
    });
  }

  /// Boxes round the pie, each along its radius.
  void placeRadial(bool isRight) {
    const double begin = reach() + m_lengths[2];
    if (!(begin > 0)) return;
    const double axis = isRight ? 0 : kPi;
    Row row(m_annotations);
    for (std::size_t i = 0; i < m_annotations.size(); ++i) {
      const Annotation& annotation = m_annotations[i];
      const double angle = std::remainder(middle(annotation) - axis, 2 * kPi);
      if (!isUsable(annotation) || (std::cos(middle(annotation)) >= 0) != isRight) continue;
      const double half = annotation.height * (1 + kGap) / 2 / begin;
      if (half < 1) row.add(i, angle, 2 * std::asin(half));
    }
    const auto before = [&](std::size_t a, std::size_t b) {
      const double angleA = std::remainder(middle(m_annotations[a]) - axis, 2 * kPi);
      const double angleB = std::remainder(middle(m_annotations[b]) - axis, 2 * kPi);
      return angleA != angleB ? angleA < angleB : a < b;
    };
    row.settle(-kPi / 2, kPi / 2, before, [&](std::size_t i, double turned) {
      const SbVec2f out = direction(axis + turned);
      const auto at = [&](double distance) { return m_pie.center + out * static_cast<float>(distance); };
      // Boxes on the left read towards the pie.
      show(i, at(begin + m_annotations[i].width / 2), upright(axis + turned), !isRight,
           {edge(i), outside(i, m_lengths[0]), at(begin - m_lengths[2]), at(begin)});
    });
  }

  const Pie& m_pie;
  const std::vector<Annotation>& m_annotations;
  double m_lengths[3];
  std::vector<Place> m_places;
};

}  // namespace

std::vector<double> PiPieLayout::spread(const std::vector<double>& wanted, const std::vector<double>& lengths,
                                        double low, double high) {
  if (wanted.empty()) return {};
  // Less the lengths that lie before each, the positions only have to rise: pool those that don't.
  struct Block {
    double mean;
    std::size_t size;
  };
  std::vector<Block> blocks;
  std::vector<double> offsets(wanted.size(), 0);
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (i > 0) offsets[i] = offsets[i - 1] + (lengths[i - 1] + lengths[i]) / 2;
    blocks.push_back({wanted[i] - offsets[i], 1});
    while (blocks.size() > 1 && blocks[blocks.size() - 2].mean >= blocks.back().mean) {
      const Block last = blocks.back();
      blocks.pop_back();
      Block& pooled = blocks.back();
      const double size = static_cast<double>(pooled.size + last.size);
      pooled.mean =
          (pooled.mean * static_cast<double>(pooled.size) + last.mean * static_cast<double>(last.size)) / size;
      pooled.size += last.size;
    }
  }
  const double first = low + lengths.front() / 2;
  const double last = std::max(first, high - lengths.back() / 2 - offsets.back());
  std::vector<double> positions;
  for (const Block& block : blocks)
    for (std::size_t i = 0; i < block.size; ++i)
      positions.push_back(std::clamp(block.mean, first, last) + offsets[positions.size()]);
  return positions;
}

std::vector<Place> PiPieLayout::placeInner(const Pie& pie, const std::vector<Annotation>& annotations, bool isRadial,
                                           float distance) {
  std::vector<double> distances;
  if (distance > 0) {
    distances.push_back(distance);
  } else {
    // Two thirds out is where a slice looks full; then ever further from there.
    for (const double share : {0.66, 0.72, 0.6, 0.78, 0.54, 0.84, 0.48, 0.42, 0.36})
      distances.push_back(pie.innerRadius + share * (pie.radius - pie.innerRadius));
  }
  std::vector<Place> places(annotations.size());
  for (std::size_t i = 0; i < annotations.size(); ++i) {
    const Annotation& annotation = annotations[i];
    if (!isUsable(annotation)) continue;
    const bool isWhole = annotation.end - annotation.start >= 2 * kPi * (1 - 1e-9) && pie.innerRadius <= 0;
    const double angle = isRadial && !isWhole ? upright(middle(annotation)) : 0;
    std::vector<double> tried = distances;
    if (isWhole && distance <= 0) tried.assign(1, 0.0);
    for (const double away : tried) {
      const SbVec2f center = annotation.center + direction(middle(annotation)) * static_cast<float>(away);
      const Box box(center, angle, annotation.width, annotation.height);
      if (!fitsSlice(pie, annotation, box) || !fitsFrame(pie.frame, box)) continue;
      places[i] = {true, center, static_cast<float>(angle), std::cos(middle(annotation)) < 0, {}};
      break;
    }
  }
  return places;
}

std::vector<Place> PiPieLayout::placeOuter(const Pie& pie, const std::vector<Annotation>& annotations, Outer outer,
                                           float length1, float length2, float length3) {
  return OuterPlacer(pie, annotations, length1, length2, length3).run(outer);
}
