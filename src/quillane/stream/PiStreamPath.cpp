#include "quillane/stream/PiStreamPath.h"

#include <algorithm>

namespace {

constexpr std::size_t kFirstCapacity = 50;

}  // namespace

void PiStreamPath::clear() {
  m_points.clear();
  m_norms.clear();
  m_times.clear();
  m_velocities.clear();
  m_values.clear();
  m_endsAtSkin = 0;
  m_numPoints = -1;
}

void PiStreamPath::addPoint(const SbVec3f& point, float value) {
  if (m_points.size() == m_points.capacity()) {
    const std::size_t capacity = std::max(kFirstCapacity, 2 * m_points.capacity());
    m_points.reserve(capacity);
    m_values.reserve(capacity);
  }
  m_points.push_back(point);
  m_values.push_back(value);
  m_numPoints = static_cast<int>(m_points.size());
}

void PiStreamPath::print(FILE* file) const {
  std::fprintf(file, "PiStreamPath:: num points %d\n", m_numPoints);
  if (m_endsAtSkin) std::fprintf(file, "PiStreamPath:: ends at skin\n");
  std::fprintf(file, "PiStreamPath:: point list ... \n");
  for (const SbVec3f& point : m_points) std::fprintf(file, "%f %f %f\n", point[0], point[1], point[2]);
}

std::size_t PiStreamPath::capacityInBytes() const {
  return (m_points.capacity() + m_norms.capacity() + m_velocities.capacity()) * sizeof(SbVec3f) +
         (m_times.capacity() + m_values.capacity()) * sizeof(float);
}
