#ifndef ORMELLE_TESTS_CELLFAMILY_H
#define ORMELLE_TESTS_CELLFAMILY_H

#include <Ormelle/PbCell.h>

#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <vector>

/// A cell together with the arrays of a small mesh that it is part of. The mesh has more nodes than the cell, and the
/// cell's nodes are scattered in it, so that local and mesh numbers can't be mixed up unnoticed.
struct CellSample {
  std::unique_ptr<PbCell> cell;
  std::vector<int> nodes;
  std::vector<float> x, y, z;
  std::vector<SbVec3f> coords;  ///< the same by mesh node

  SbVec3f at(const SbVec3f& pcoord) const { return cell->getValue(pcoord, coords.data()); }
};

/// One kind of cell, with a regular shape to start from.
struct CellKind {
  const char* name;
  std::vector<SbVec3f> shape;  ///< nodes whose coordinates are their parametric coordinates
  bool isBox;                  ///< edges are parallel to the axes: no warping
  bool isFlat;                 ///< z is 0
  bool isSimplex;              ///< u + v (+ w) at most 1: a triangle or tetrahedron
  bool isWedge;
  std::function<std::unique_ptr<PbCell>(CellSample&)> fill;

  bool isSolid() const { return shape.size() > 4 || isTetrahedron(); }
  bool isTetrahedron() const { return isSimplex && shape.size() == 4; }

  /// The regular shape, its corners moved by up to `warp`, then scaled, then moved.
  std::shared_ptr<CellSample> make(std::mt19937& random, float warp, float scale = 1.0f,
                                   const SbVec3f& offset = SbVec3f(0, 0, 0)) const;
  /// The kind's own cell from any coordinates of its local nodes.
  std::shared_ptr<CellSample> make(const std::vector<SbVec3f>& corners) const;
  /// A place in the parametric domain that keeps `margin` from its bounds; without it a place somewhere on them or
  /// inside.
  SbVec3f randomPcoord(std::mt19937& random, float margin) const;
};

std::ostream& operator<<(std::ostream& out, const CellKind& kind);

const std::vector<CellKind>& allCellKinds();
const CellKind& cellKind(const char* name);

#endif
