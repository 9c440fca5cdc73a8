#include "nodes/field/PiMeshGeometry.h"

#include <algorithm>
#include <limits>

bool PiMeshGeometry::countNodes(int num_z) {
  if (numX < 0 || numY < 0 || num_z < 0) return false;
  constexpr long long kMost = std::numeric_limits<int>::max();
  const long long numXY = static_cast<long long>(numX) * numY;
  if (numXY > kMost || numXY * num_z > kMost) return false;
  numNodes = static_cast<int>(numXY * num_z);
  return true;
}

bool PiMeshGeometry::countIndices(std::initializer_list<int> sizes) {
  if (x.written) return true;
  long long num = 0;
  if (sizes.size() == 1) {
    num = static_cast<long long>(*sizes.begin()) * numCells;
  } else {
    for (const int type : cellTypes.read) {
      if (std::find(sizes.begin(), sizes.end(), type) == sizes.end()) return false;
      num += type;
    }
  }
  if (num > std::numeric_limits<int>::max()) return false;
  numIndices = static_cast<int>(num);
  return true;
}

bool PiMeshGeometry::areIndicesValid() const {
  return std::all_of(cellIndices.read.begin(), cellIndices.read.end(),
                     [this](int index) { return index >= 0 && index < numNodes; });
}
