#ifndef ORMELLE_PISTREAMPATH_H
#define ORMELLE_PISTREAMPATH_H

#include <cstddef>
#include <cstdio>
#include <vector>

#include <Inventor/SbVec3f.h>

/// One integrated path through a vector field: a plain record of parallel arrays, one entry for each point.
///
/// A point always has its value. Normals, times and velocities are only there if the kit that follows the path keeps
/// them (PoBaseStreamLine::saveNorm() and its like), which it does by setting that of the last point.
class PiStreamPath {
 public:
  /// The number of points, -1 in a path that wasn't used yet or that found no cell to start in.
  int getNumPoints() const { return m_numPoints; }
  bool isEmpty() const { return m_numPoints < 1; }

  /// Positions.
  const SbVec3f* getPoints() const { return m_points.data(); }
  /// The value of the scalar set at each point; without one, the speed.
  const float* getValues() const { return m_values.data(); }
  /// @name What a kit may keep
  /// Zero for points where it kept none; null if it kept none at all.
  /// @{
  const SbVec3f* getNorms() const { return m_norms.empty() ? nullptr : m_norms.data(); }
  const float* getTimes() const { return m_times.empty() ? nullptr : m_times.data(); }
  const SbVec3f* getVelocities() const { return m_velocities.empty() ? nullptr : m_velocities.data(); }
  /// @}

  /// Whether the path ended because it left the mesh or came to a cell that the filter refuses.
  int endsAtSkin() const { return m_endsAtSkin; }
  void setEndsAtSkin(int ends) { m_endsAtSkin = ends; }

  /// Forgets all points and keeps the memory.
  void clear();
  /// Appends a point. The capacities of all arrays grow together: from 50, doubling.
  void addPoint(const SbVec3f& point, float value);
  /// @name Of the last point; nothing without one
  /// @{
  void setNorm(const SbVec3f& norm) { setLast(m_norms, norm, SbVec3f(0, 0, 0)); }
  void setTime(float time) { setLast(m_times, time, 0.0F); }
  void setVelocity(const SbVec3f& velocity) { setLast(m_velocities, velocity, SbVec3f(0, 0, 0)); }
  /// @}

  void print(FILE* file) const;
  std::size_t capacityInBytes() const;

 private:
  template <class Item>
  void setLast(std::vector<Item>& items, const Item& item, const Item& none) {
    if (m_numPoints < 1) return;
    const auto num = static_cast<std::size_t>(m_numPoints);
    if (items.size() < num) {
      items.reserve(m_points.capacity());
      items.resize(num, none);
    }
    items[num - 1] = item;
  }

  std::vector<SbVec3f> m_points;
  std::vector<SbVec3f> m_norms;
  std::vector<float> m_times;
  std::vector<SbVec3f> m_velocities;
  std::vector<float> m_values;
  int m_endsAtSkin = 0;
  int m_numPoints = -1;
};

#endif
