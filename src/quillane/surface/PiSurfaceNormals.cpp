#include "quillane/surface/PiSurfaceNormals.h"

#include <algorithm>
#include <cmath>

namespace {

SbVec3f difference(const SbVec3f& a, const SbVec3f& b) { return SbVec3f(a[0] - b[0], a[1] - b[1], a[2] - b[2]); }

/// As the right-hand rule has it for corners that run clockwise.
SbVec3f clockwiseCross(const SbVec3f& u, const SbVec3f& v) {
  return SbVec3f(u[2] * v[1] - u[1] * v[2], u[0] * v[2] - u[2] * v[0], u[1] * v[0] - u[0] * v[1]);
}

float dot(const SbVec3f& u, const SbVec3f& v) { return u[0] * v[0] + u[1] * v[1] + u[2] * v[2]; }

void addTo(SbVec3f& sum, const SbVec3f& v) { sum.setValue(sum[0] + v[0], sum[1] + v[1], sum[2] + v[2]); }

/// Of length 1; along z where there is no direction.
SbVec3f unit(const SbVec3f& v) {
  const float square = dot(v, v);
  if (square > 1e-30F && square < 1e30F) {
    const float scale = 1 / std::sqrt(square);
    return SbVec3f(v[0] * scale, v[1] * scale, v[2] * scale);
  }
  // Too small or too large for floats to square.
  const double x = v[0], y = v[1], z = v[2], length = std::sqrt(x * x + y * y + z * z);
  if (!(length > 0) || !std::isfinite(length)) return SbVec3f(0, 0, 1);
  return SbVec3f(static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length));
}

}  // namespace

template <class Use>
void PiSurfaceNormals::forEachFacet(Use&& use) const {
  const auto at = [this](std::size_t place) -> const SbVec3f& {
    return m_points[static_cast<std::size_t>(m_given[place])];
  };
  std::size_t first = 0;
  for (std::size_t end = 0; end < m_given.size(); ++end) {
    if (m_given[end] >= 0) continue;
    if (m_areStrips) {
      for (std::size_t corner = first; corner + 2 < end; ++corner) {
        // Every second triangle runs the other way round.
        const std::size_t turned = (corner - first) % 2;
        const SbVec3f& origin = at(corner);
        const SbVec3f normal =
            clockwiseCross(difference(at(corner + 1 + turned), origin), difference(at(corner + 2 - turned), origin));
        use(normal, corner, corner + 3);
      }
    } else if (end - first >= 3) {
      const SbVec3f& origin = at(first);
      SbVec3f normal(0, 0, 0), edge = difference(at(first + 1), origin);
      for (std::size_t corner = first + 2; corner < end; ++corner) {
        const SbVec3f next = difference(at(corner), origin);
        addTo(normal, clockwiseCross(edge, next));
        edge = next;
      }
      use(normal, first, end);
    } else if (end > first) {
      use(SbVec3f(0, 0, 0), first, end);
    }
    first = end + 1;
  }
}

void PiSurfaceNormals::make(std::span<const std::int32_t> indices, std::span<const SbVec3f> points, bool areStrips,
                            float creaseAngle) {
  m_given = indices;
  m_points = points;
  m_areStrips = areStrips;
  m_indices.clear();
  if (creaseAngle > 0)
    makeSmooth(creaseAngle);
  else
    makeFlat();
}

void PiSurfaceNormals::makeFlat() {
  m_normals.clear();
  forEachFacet([this](const SbVec3f& normal, std::size_t, std::size_t) { m_normals.push_back(unit(normal)); });
}

void PiSurfaceNormals::makeSmooth(float creaseAngle) {
  m_normals.fill(m_points.size(), SbVec3f(0, 0, 0));
  forEachFacet([this](const SbVec3f& normal, std::size_t begin, std::size_t end) {
    for (std::size_t place = begin; place < end; ++place)
      addTo(m_normals[static_cast<std::size_t>(m_given[place])], normal);
  });
  for (SbVec3f& normal : m_normals) normal = unit(normal);
  constexpr float kStraight = 3.14159F;
  if (creaseAngle < kStraight) splitCreases(std::cos(creaseAngle));
}

void PiSurfaceNormals::splitCreases(float cosine) {
  // Facets that are all within half the angle of their mean are within the angle of each other.
  const float half = std::sqrt((1 + cosine) / 2);
  m_isCreased.fill(m_points.size(), 0);
  bool isAnyCreased = false;
  forEachFacet([&](const SbVec3f& normal, std::size_t begin, std::size_t end) {
    const float reach = half * std::sqrt(dot(normal, normal)) * 0.9999F;
    for (std::size_t place = begin; place < end; ++place) {
      const auto point = static_cast<std::size_t>(m_given[place]);
      if (dot(normal, m_normals[point]) >= reach) continue;
      m_isCreased[point] = 1;
      isAnyCreased = true;
    }
  });
  if (!isAnyCreased) return;

  m_corners.clear();
  forEachFacet([&](const SbVec3f& normal, std::size_t begin, std::size_t end) {
    for (std::size_t place = begin; place < end; ++place)
      if (m_isCreased[static_cast<std::size_t>(m_given[place])]) m_corners.push_back({m_given[place], place, normal});
  });
  m_indices.reset(m_given.size());
  std::copy(m_given.begin(), m_given.end(), m_indices.begin());
  std::sort(m_corners.begin(), m_corners.end(), [](const Corner& a, const Corner& b) {
    return a.point != b.point ? a.point < b.point : a.place < b.place;
  });
  for (Corner* first = m_corners.begin(); first != m_corners.end();) {
    Corner* end = first;
    while (end != m_corners.end() && end->point == first->point) ++end;
    const Corner* previous = nullptr;
    // A point that a hostile mesh gives thousands of facets isn't worth their square.
    constexpr std::ptrdiff_t kMostCompared = 64;
    for (Corner* corner = first; corner != end; ++corner) {
      SbVec3f sum(0, 0, 0);
      const SbVec3f own = unit(corner->normal);
      for (const Corner* other = first; other != std::min(end, first + kMostCompared); ++other)
        if (dot(own, unit(other->normal)) >= cosine) addTo(sum, other->normal);
      if (sum == SbVec3f(0, 0, 0)) sum = own;
      // The corners of a strip are those of up to three triangles, of which the last one counts.
      if (previous && previous->place == corner->place) {
        m_normals[static_cast<std::size_t>(m_indices[corner->place])] = unit(sum);
      } else {
        m_indices[corner->place] = static_cast<std::int32_t>(m_normals.size());
        m_normals.push_back(unit(sum));
      }
      previous = corner;
    }
    first = end;
  }
}

std::size_t PiSurfaceNormals::memorySize() const {
  return m_normals.capacity() * sizeof(SbVec3f) + m_indices.capacity() * sizeof(std::int32_t) + m_isCreased.capacity() +
         m_corners.capacity() * sizeof(Corner);
}
