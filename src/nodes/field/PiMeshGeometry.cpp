#include "nodes/field/PiMeshGeometry.h"

#include <limits>

bool PiMeshGeometry::countNodes(int num_z) {
  if (numX < 0 || numY < 0 || num_z < 0) return false;
  constexpr long long kMost = std::numeric_limits<int>::max();
  const long long numXY = static_cast<long long>(numX) * numY;
  if (numXY > kMost || numXY * num_z > kMost) return false;
  numNodes = static_cast<int>(numXY * num_z);
  return true;
}
