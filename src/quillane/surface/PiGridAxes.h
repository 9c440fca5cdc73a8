#ifndef ORMELLE_PIGRIDAXES_H
#define ORMELLE_PIGRIDAXES_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <Ormelle/PbGrid3D.h>

/// The coordinates of the lines of a grid that are parallel to the axes, as a regular or parallel grid has them. The
/// memory is used again for the next grid.
struct PiGridAxes {
  std::vector<float> coords[3];

  void set(const PbGrid3D& grid) {
    int num[3];
    grid.getDim(num[0], num[1], num[2]);
    for (int axis = 0; axis < 3; ++axis) {
      coords[axis].resize(static_cast<std::size_t>(num[axis]));
      for (int i = 0; i < num[axis]; ++i)
        coords[axis][static_cast<std::size_t>(i)] =
            grid.getNodeCoord(axis == 0 ? i : 0, axis == 1 ? i : 0, axis == 2 ? i : 0)[axis];
    }
  }
  float at(int axis, int i) const { return coords[axis][static_cast<std::size_t>(i)]; }
  int num(int axis) const { return static_cast<int>(coords[axis].size()); }

  /// Whether the coordinates of an axis are finite and only rise or only fall.
  bool isMonotone(int axis) const {
    const std::vector<float>& c = coords[axis];
    return std::all_of(c.begin(), c.end(), [](float value) { return std::isfinite(value); }) &&
           (std::is_sorted(c.begin(), c.end()) || std::is_sorted(c.rbegin(), c.rend()));
  }
  std::size_t memorySize() const {
    return (coords[0].capacity() + coords[1].capacity() + coords[2].capacity()) * sizeof(float);
  }
};

#endif
