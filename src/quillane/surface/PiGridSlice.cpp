#include "quillane/surface/PiGridSlice.h"

#include <algorithm>

#include "quillane/search/PiAxisSearch.h"

namespace {

/// The axis that the plane is across, and which way its normal points along it; -1 if there is none.
int findAxis(const PiSectionPlane& plane, float& sign) {
  static constexpr float kTolerance = 0.0001F;
  const float normal[3] = {plane.a, plane.b, plane.c};
  for (int axis = 0; axis < 3; ++axis) {
    sign = normal[axis] < 0 ? -1.0F : 1.0F;
    if (std::fabs(normal[axis] - sign) < kTolerance && std::fabs(normal[(axis + 1) % 3]) < kTolerance &&
        std::fabs(normal[(axis + 2) % 3]) < kTolerance)
      return axis;
  }
  return -1;
}

}  // namespace

std::size_t PiGridSlice::memorySize() const {
  return points.capacity() * sizeof(SbVec3f) + values.capacity() * sizeof(float) + cells.capacity() * sizeof(int) +
         m_axes.memorySize();
}

PiGridSlice::Result PiGridSlice::cut(const PbGrid3D& grid, const PiSectionPlane& plane, const float* nodeValues) {
  float sign;
  const int across = findAxis(plane, sign);
  if (across < 0) return OBLIQUE;
  if (grid.getNumCells() < 1 || !std::isfinite(plane.d)) return OUTSIDE;
  m_axes.set(grid);
  for (int axis = 0; axis < 3; ++axis)
    if (!m_axes.isMonotone(axis)) return OBLIQUE;

  const float place = sign * plane.d;
  const int interval = findAxisInterval(m_axes.coords[across].data(), m_axes.num(across), place);
  if (interval < 0) return OUTSIDE;
  if (nodeValues && hasGaps(grid, across, interval, nodeValues)) return OBLIQUE;

  // The two others follow in cyclic order, so that rows and columns make a right hand with the axis.
  const int row = (across + 1) % 3, column = (across + 2) % 3;
  m_numRows = m_axes.num(row);
  m_numColumns = m_axes.num(column);
  const auto isFalling = [this](int axis) { return m_axes.coords[axis].front() > m_axes.coords[axis].back(); };
  const bool isTurned = (isFalling(row) != isFalling(column)) != (sign < 0);

  const float from = m_axes.at(across, interval);
  const bool isExact = from == place;
  const int next = isExact ? interval : interval + 1;
  const float t = isExact ? 0 : (place - from) / (m_axes.at(across, next) - from);
  const int cellOfSlab = std::min(interval, m_axes.num(across) - 2);
  const std::size_t num = static_cast<std::size_t>(m_numRows) * static_cast<std::size_t>(m_numColumns);
  points.reset(num);
  values.reset(nodeValues ? num : 0);
  cells.reset(static_cast<std::size_t>(m_numRows - 1) * static_cast<std::size_t>(m_numColumns - 1));
  SbVec3f* point = points.data();
  float* value = values.data();
  int* cell = cells.data();
  int index[3];
  for (int r = 0; r < m_numRows; ++r) {
    index[row] = isTurned ? m_numRows - 1 - r : r;
    for (int c = 0; c < m_numColumns; ++c) {
      index[column] = c;
      (*point)[across] = place;
      (*point)[row] = m_axes.at(row, index[row]);
      (*point++)[column] = m_axes.at(column, c);
      if (nodeValues) {
        index[across] = interval;
        const float a = nodeValues[grid.getNodeIndex(index[0], index[1], index[2])];
        index[across] = next;
        const float b = nodeValues[grid.getNodeIndex(index[0], index[1], index[2])];
        *value++ = isExact ? a : a + t * (b - a);
      }
      if (r + 1 < m_numRows && c + 1 < m_numColumns) {
        int at[3] = {index[0], index[1], index[2]};
        at[across] = cellOfSlab;
        if (isTurned) --at[row];
        *cell++ = grid.getCellIndex(at[0], at[1], at[2]);
      }
    }
  }
  return SLICED;
}

// Whether a node beside the slice has no value. A slice through nodes lies in the cells on both sides.
bool PiGridSlice::hasGaps(const PbGrid3D& grid, int axis, int interval, const float* nodeValues) const {
  int low[3] = {0, 0, 0}, high[3] = {m_axes.num(0) - 1, m_axes.num(1) - 1, m_axes.num(2) - 1};
  low[axis] = std::max(interval - 1, 0);
  high[axis] = std::min(interval + 1, high[axis]);
  for (int i = low[0]; i <= high[0]; ++i)
    for (int j = low[1]; j <= high[1]; ++j)
      for (int k = low[2]; k <= high[2]; ++k)
        if (std::isnan(nodeValues[grid.getNodeIndex(i, j, k)])) return true;
  return false;
}
