#include "graph/toolkit/PiQuadMeshNormals.h"

#include <algorithm>
#include <cmath>

#include <Inventor/nodes/SoVertexProperty.h>

namespace {

/// Which way round the faces of a flat mesh run: 1 counter-clockwise, -1 clockwise, 0 both or neither.
int flatOrientation(const SbVec3f* points, int numRows, int numColumns) {
  bool isAnyPositive = false;
  bool isAnyNegative = false;
  for (int row = 0; row + 1 < numRows; ++row) {
    const SbVec3f* here = points + static_cast<std::ptrdiff_t>(row) * numColumns;
    const SbVec3f* below = here + numColumns;
    for (int column = 0; column + 1 < numColumns; ++column) {
      const float* a = here[column].getValue();
      const float* b = below[column].getValue();
      const float* c = here[column + 1].getValue();
      const float area = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
      isAnyPositive |= area > 0;
      isAnyNegative |= area < 0;
    }
    if (isAnyPositive && isAnyNegative) return 0;
  }
  return isAnyPositive ? 1 : isAnyNegative ? -1 : 0;
}

/// The unit vector along `alongColumns` x `alongRows`; any where there is none. In double only where float would
/// overflow or underflow.
SbVec3f unitCross(const SbVec3f& alongColumns, const SbVec3f& alongRows) {
  const float* a = alongColumns.getValue();
  const float* b = alongRows.getValue();
  const float x = a[1] * b[2] - a[2] * b[1];
  const float y = a[2] * b[0] - a[0] * b[2];
  const float z = a[0] * b[1] - a[1] * b[0];
  const float square = x * x + y * y + z * z;
  if (square > 1e-30F && square < 1e30F) {
    const float scale = 1 / std::sqrt(square);
    return SbVec3f(x * scale, y * scale, z * scale);
  }
  const double dx = static_cast<double>(a[1]) * b[2] - static_cast<double>(a[2]) * b[1];
  const double dy = static_cast<double>(a[2]) * b[0] - static_cast<double>(a[0]) * b[2];
  const double dz = static_cast<double>(a[0]) * b[1] - static_cast<double>(a[1]) * b[0];
  const double length = std::sqrt(dx * dx + dy * dy + dz * dz);
  if (!(length > 0) || !std::isfinite(length)) return SbVec3f(0, 0, -1);
  return SbVec3f(static_cast<float>(dx / length), static_cast<float>(dy / length), static_cast<float>(dz / length));
}

}  // namespace

SoVertexProperty* PiQuadMeshNormals::ofSurface(const SbVec3f* points, int numRows, int numColumns, bool isFlat) {
  auto* property = new SoVertexProperty;
  const int orientation = isFlat ? flatOrientation(points, numRows, numColumns) : 0;
  if (orientation != 0) {
    property->normal.setValue(SbVec3f(0, 0, static_cast<float>(-orientation)));
    property->normalBinding = SoVertexProperty::OVERALL;
    return property;
  }

  property->normalBinding = SoVertexProperty::PER_VERTEX;
  property->normal.setNum(numRows * numColumns);
  fill(points, numRows, numColumns, property->normal.startEditing());
  property->normal.finishEditing();
  return property;
}

void PiQuadMeshNormals::fill(const SbVec3f* points, int numRows, int numColumns, SbVec3f* normals) {
  for (int row = 0; row < numRows; ++row) {
    const SbVec3f* here = points + static_cast<std::ptrdiff_t>(row) * numColumns;
    const SbVec3f* above = row > 0 ? here - numColumns : here;
    const SbVec3f* below = row + 1 < numRows ? here + numColumns : here;
    for (int column = 0; column < numColumns; ++column) {
      const int left = std::max(column - 1, 0);
      const int right = std::min(column + 1, numColumns - 1);
      *normals++ = unitCross(here[right] - here[left], below[column] - above[column]);
    }
  }
}
