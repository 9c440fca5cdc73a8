#ifndef ORMELLE_PIGRIDSIDES_H
#define ORMELLE_PIGRIDSIDES_H

#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "quillane/view/PiView3D.h"

/// One side of a grid as rows of nodes. Column by column and then row by row the corners of its facets run clockwise
/// for who looks from outside.
struct PiGridSide {
  int numRows, numColumns;
  int firstPoint;  ///< where the side's nodes stand among those of all sides
  int firstNode, rowStep, columnStep;
  int firstCell, cellRowStep, cellColumnStep;

  int node(int row, int column) const { return firstNode + row * rowStep + column * columnStep; }
  int cell(int row, int column) const { return firstCell + row * cellRowStep + column * cellColumnStep; }
  int point(int row, int column) const { return firstPoint + row * numColumns + column; }
};

/// The six sides of a grid that has cells: at the lower and upper end of k, of j, of i. Nodes on the edges of the grid
/// belong to each side that they are on, so that nothing runs across an edge.
class PiGridSides {
 public:
  /// `isMirrored` tells that the cells of the grid have ordering 1: i, j and k run like the fingers of the other hand.
  PiGridSides(const PiGridShape& shape, bool isMirrored) : m_isMirrored(isMirrored) {
    addSides({shape.numX, shape.stepI(), (shape.numY - 1) * (shape.numZ - 1)},
             {shape.numY, shape.stepJ(), shape.numZ - 1}, {shape.numZ, 1, 1});
    addSides({shape.numX, shape.stepI(), (shape.numY - 1) * (shape.numZ - 1)}, {shape.numZ, 1, 1},
             {shape.numY, shape.stepJ(), shape.numZ - 1});
    addSides({shape.numY, shape.stepJ(), shape.numZ - 1}, {shape.numZ, 1, 1},
             {shape.numX, shape.stepI(), (shape.numY - 1) * (shape.numZ - 1)});
  }

  const std::array<PiGridSide, 6>& all() const { return m_sides; }
  bool isMirrored() const { return m_isMirrored; }
  int numPoints() const { return m_numPoints; }
  int numFacets() const {
    int num = 0;
    for (const PiGridSide& side : m_sides) num += (side.numRows - 1) * (side.numColumns - 1);
    return num;
  }
  /// The node of each point.
  std::vector<int> nodes() const {
    std::vector<int> nodes;
    nodes.reserve(static_cast<std::size_t>(m_numPoints));
    for (const PiGridSide& side : m_sides)
      for (int row = 0; row < side.numRows; ++row)
        for (int column = 0; column < side.numColumns; ++column) nodes.push_back(side.node(row, column));
    return nodes;
  }
  /// Calls `use(cell, corners)` for each facet; the corners are four points.
  template <class Use>
  void forEachFacet(Use&& use) const {
    for (const PiGridSide& side : m_sides)
      for (int row = 0; row + 1 < side.numRows; ++row)
        for (int column = 0; column + 1 < side.numColumns; ++column) {
          const int corners[4] = {side.point(row, column), side.point(row + 1, column), side.point(row + 1, column + 1),
                                  side.point(row, column + 1)};
          use(side.cell(row, column), corners);
        }
  }

 private:
  struct Axis {
    int numNodes, nodeStep, cellStep;
  };

  /// The two sides across the third axis. Rows along i and columns along j look from outside clockwise at the lower
  /// end of k; so they do along j and k at the lower end of i, but along i and k at the upper end of j.
  void addSides(const Axis& rows, const Axis& columns, const Axis& across) {
    const bool isLowerPlain = m_numSides != 2;
    for (const bool isUpper : {false, true}) {
      const bool isPlain = (isUpper != isLowerPlain) != m_isMirrored;
      PiGridSide& side = m_sides[m_numSides++];
      side = {rows.numNodes, columns.numNodes, m_numPoints, 0, rows.nodeStep, columns.nodeStep, 0,
              rows.cellStep, columns.cellStep};
      if (isUpper) {
        side.firstNode += (across.numNodes - 1) * across.nodeStep;
        side.firstCell += (across.numNodes - 2) * across.cellStep;
      }
      if (!isPlain) {  // from the last row to the first
        side.firstNode += (rows.numNodes - 1) * rows.nodeStep;
        side.firstCell += (rows.numNodes - 2) * rows.cellStep;
        side.rowStep = -side.rowStep;
        side.cellRowStep = -side.cellRowStep;
      }
      m_numPoints += side.numRows * side.numColumns;
    }
  }

  std::array<PiGridSide, 6> m_sides{};
  std::size_t m_numSides = 0;
  int m_numPoints = 0;
  bool m_isMirrored;
};

/// Whether a grid is mirrored, by those of its corner cells that have an inside: more of them than not.
template <PiGridView3DLike View>
bool isMirroredGrid(const View& view) {
  const PiGridShape& shape = view.shape();
  int balance = 0;
  for (int corner = 0; corner < 8; ++corner) {
    int nodes[8];
    shape.cellNodes(corner & 1 ? shape.numX - 2 : 0, corner & 2 ? shape.numY - 2 : 0, corner & 4 ? shape.numZ - 2 : 0,
                    nodes);
    const double volume = signedCornerVolume(view, std::span<const int>(nodes));
    balance += volume > 0 ? 1 : volume < 0 ? -1 : 0;
  }
  return balance > 0;
}

/// Whether all nodes in the outer layer of cells can be drawn: finite, and with a value that isn't NaN unless `values`
/// is null.
template <PiGridView3DLike View>
bool areOuterNodesDrawn(const View& view, const float* values) {
  const PiGridShape& shape = view.shape();
  const auto isDrawn = [&](int i, int j, int k) {
    const SbVec3f point = view.point(i, j, k);
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]) &&
           !(values && std::isnan(values[shape.node(i, j, k)]));
  };
  const auto isOuter = [](int i, int num) { return i < 2 || i >= num - 2; };
  for (int i = 0; i < shape.numX; ++i)
    for (int j = 0; j < shape.numY; ++j) {
      const bool isInside = !isOuter(i, shape.numX) && !isOuter(j, shape.numY) && shape.numZ > 4;
      for (int k = 0; k < shape.numZ; k += isInside && k == 1 ? shape.numZ - 3 : 1)
        if (!isDrawn(i, j, k)) return false;
    }
  return true;
}

#endif
