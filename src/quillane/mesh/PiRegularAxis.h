#ifndef ORMELLE_PIREGULARAXIS_H
#define ORMELLE_PIREGULARAXIS_H

#include <cmath>

/// One axis of a regular grid: `num` nodes at equal distances from `min` to `max`, which may fall.
class PiRegularAxis {
 public:
  PiRegularAxis(float min, float max, int num) : PiRegularAxis(min, max, stepOf(min, max, num), num) {}
  /// With the step that stepOf() gave.
  PiRegularAxis(float min, float max, float step, int num) : m_min(min), m_max(max), m_step(step), m_num(num) {}

  static float stepOf(float min, float max, int num) { return num > 1 ? (max - min) / static_cast<float>(num - 1) : 0; }

  /// The last node lies exactly on the limit, whatever the rounding of the step: a point on the limit is in the last
  /// cell.
  float coord(int i) const { return i > 0 && i == m_num - 1 ? m_max : m_min + static_cast<float>(i) * m_step; }

  /// Index of the interval that holds `c`, -1 if there is none.
  int cellOf(float c) const {
    if (m_num < 2) return -1;
    const int last = m_num - 2;
    if (c == m_max) return last;
    const float position = (c - m_min) * static_cast<float>(m_num - 1) / (m_max - m_min);
    if (!(position >= 0 && position <= static_cast<float>(m_num - 1))) return -1;
    const int cell = position < static_cast<float>(last) ? static_cast<int>(position) : last;
    return nearest(cell, c);
  }

 private:
  /// Rounding may put a point that lies between two nodes one interval off, where it would be found outside.
  int nearest(int cell, float c) const {
    const float sign = m_max < m_min ? -1.0F : 1.0F;
    if (cell > 0 && sign * (c - coord(cell)) < 0) return cell - 1;
    if (cell < m_num - 2 && sign * (c - coord(cell + 1)) > 0) return cell + 1;
    return cell;
  }

  float m_min, m_max, m_step;
  int m_num;
};

#endif
