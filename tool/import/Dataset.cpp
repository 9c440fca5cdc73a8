#include "Dataset.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace importer {

namespace {

// Of numbers in one field of a scene that the tool reads back.
constexpr std::size_t kMost = 130'000'000;

// The product of the dimensions less `less`; a direction of one node counts once.
std::size_t product(const std::array<int, 3>& dims, int less) {
  std::size_t all = 1;
  for (const int dim : dims) {
    const auto count = static_cast<std::size_t>(std::max(1, dim - less));
    if (all > kMost / count) throw Failure("its grid has more than the 130 million nodes that a scene holds");
    all *= count;
  }
  return all;
}

std::size_t numNodesOf(const Piece& piece) {
  switch (piece.kind) {
    case PieceKind::CELLS:
      return piece.points.size();
    case PieceKind::SERIES:
      return piece.axes[0].size();
    default:
      return product(piece.dims, 0);
  }
}

std::size_t numSourcesOf(const Piece& piece) {
  switch (piece.kind) {
    case PieceKind::CELLS:
      return piece.cellKinds.size();
    case PieceKind::SERIES:
      return 0;
    default:
      return product(piece.dims, 1);
  }
}

void checkSize(bool isRight, const std::string& name) {
  if (!isRight) throw Failure("the set \"" + name + "\" has not one value for each node or cell");
}

void checkCells(const Piece& piece) {
  std::size_t numNodes = 0;
  for (const CellKind kind : piece.cellKinds) numNodes += static_cast<std::size_t>(numNodesOf(kind));
  if (numNodes != piece.cellNodes.size()) throw Failure("its cells don't list as many nodes as they have");
  if (numNodes > kMost) throw Failure("its cells list more than the 130 million nodes that a scene holds");
  const auto numPoints = static_cast<int>(piece.points.size());
  for (const int node : piece.cellNodes)
    if (node < 0 || node >= numPoints)
      throw Failure("a cell refers to node " + std::to_string(node) + " of " + std::to_string(numPoints));
  if (!piece.cellSources.empty() && piece.cellSources.size() != piece.cellKinds.size())
    throw Failure("it doesn't say for each cell where its values are");
}

void checkSets(const Piece& piece, std::size_t numNodes) {
  const bool hasSources = !piece.cellSources.empty();
  const std::size_t numCells = numSourcesOf(piece);
  int lastSource = -1;
  for (const int source : piece.cellSources) {
    if (source < 0) throw Failure("it doesn't say for each cell where its values are");
    lastSource = std::max(lastSource, source);
  }
  const auto fits = [&](Binding binding, std::size_t size) {
    if (binding == Binding::NODE) return size == numNodes;
    return hasSources ? size > static_cast<std::size_t>(lastSource) : size == numCells;
  };
  for (const ScalarSet& set : piece.scalars) checkSize(fits(set.binding, set.values.size()), set.name);
  for (const VectorSet& set : piece.vectors) checkSize(fits(set.binding, set.values.size()), set.name);
  for (const StringSet& set : piece.strings) checkSize(set.values.size() == numNodes, set.name);
}

// A corner of a polygon in the plane that shows most of it.
using Flat = std::array<double, 2>;

double turn(const Flat& a, const Flat& b, const Flat& c) {
  return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

// The corners projected along the largest component of the sum of the cross products round the polygon (Newell), so
// that they go round counter-clockwise.
std::vector<Flat> flattened(const std::vector<Point>& points, const int* nodes, int count) {
  Point normal{0, 0, 0};
  const auto corner = [&](int i) -> const Point& { return points[static_cast<std::size_t>(nodes[i])]; };
  for (int i = 0; i < count; ++i) {
    const Point& a = corner(i);
    const Point& b = corner((i + 1) % count);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const std::size_t next = (axis + 1) % 3, last = (axis + 2) % 3;
      normal[axis] += (a[next] - b[next]) * (a[last] + b[last]);
    }
  }
  std::size_t axis = 0;
  for (std::size_t other = 1; other < 3; ++other)
    if (std::abs(normal[other]) > std::abs(normal[axis])) axis = other;
  std::size_t first = (axis + 1) % 3, second = (axis + 2) % 3;
  if (normal[axis] < 0) std::swap(first, second);
  std::vector<Flat> flat;
  flat.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) flat.push_back({corner(i)[first], corner(i)[second]});
  return flat;
}

}  // namespace

int numNodesOf(CellKind kind) {
  constexpr std::array<int, 8> counts{1, 2, 3, 4, 4, 5, 6, 8};
  return counts[static_cast<std::size_t>(kind)];
}

int dimensionOf(CellKind kind) {
  constexpr std::array<int, 8> dimensions{0, 1, 2, 2, 3, 3, 3, 3};
  return dimensions[static_cast<std::size_t>(kind)];
}

void Piece::addCell(CellKind cellKind, const int* nodes, int source) {
  cellKinds.push_back(cellKind);
  cellNodes.insert(cellNodes.end(), nodes, nodes + numNodesOf(cellKind));
  if (source >= 0) cellSources.push_back(source);
}

void Piece::addPolygon(const int* nodes, int count, int source) {
  if (count < 3) return;
  if (count == 3) return addCell(CellKind::TRIANGLE, nodes, source);
  for (int i = 0; i < count; ++i)
    if (nodes[i] < 0 || static_cast<std::size_t>(nodes[i]) >= points.size())
      throw Failure("a polygon refers to node " + std::to_string(nodes[i]) + " of " + std::to_string(points.size()));

  const std::vector<Flat> flat = flattened(points, nodes, count);
  const auto at = [&](int i) -> const Flat& { return flat[static_cast<std::size_t>(i)]; };
  bool isConvex = true;
  for (int i = 0; i < count && isConvex; ++i) isConvex = turn(at(i), at((i + 1) % count), at((i + 2) % count)) >= 0;
  if (isConvex && count == 4) return addCell(CellKind::QUADRANGLE, nodes, source);
  const auto addTriangle = [&](int a, int b, int c) {
    const std::array<int, 3> corners{nodes[a], nodes[b], nodes[c]};
    addCell(CellKind::TRIANGLE, corners.data(), source);
  };
  // The search for ears is quadratic: polygons of very many corners become a fan, as convex ones do.
  constexpr int kMostForEars = 2000;
  if (isConvex || count > kMostForEars) {
    for (int i = 1; i + 1 < count; ++i) addTriangle(0, i, i + 1);
    return;
  }
  std::vector<int> left(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) left[static_cast<std::size_t>(i)] = i;
  while (left.size() > 3) {
    std::size_t ear = left.size();
    for (std::size_t i = 0; i < left.size() && ear == left.size(); ++i) {
      const int a = left[(i + left.size() - 1) % left.size()], b = left[i], c = left[(i + 1) % left.size()];
      if (turn(at(a), at(b), at(c)) <= 0) continue;
      const bool isEmpty = std::none_of(left.begin(), left.end(), [&](int p) {
        return p != a && p != b && p != c && turn(at(a), at(b), at(p)) >= 0 && turn(at(b), at(c), at(p)) >= 0 &&
               turn(at(c), at(a), at(p)) >= 0;
      });
      if (isEmpty) ear = i;
    }
    if (ear == left.size()) ear = 1;  // one that crosses itself: whatever is cut off, the rest gets smaller
    addTriangle(left[(ear + left.size() - 1) % left.size()], left[ear], left[(ear + 1) % left.size()]);
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(ear));
  }
  addTriangle(left[0], left[1], left[2]);
}

void Dataset::note(const std::string& sentence) {
  if (std::find(notes.begin(), notes.end(), sentence) == notes.end()) notes.push_back(sentence);
}

void check(const Dataset& data) {
  if (data.pieces.empty() && !data.chart) throw Failure("there is no data in it");
  for (const Piece& piece : data.pieces) {
    for (const int dim : piece.dims)
      if (dim < 1) throw Failure("its grid has no nodes");
    const std::size_t numNodes = numNodesOf(piece);
    if (numNodes > kMost) throw Failure("it has more than the 130 million nodes that a scene holds");
    if (numNodes == 0) throw Failure("it has no nodes");
    if (piece.kind == PieceKind::RECTILINEAR_GRID)
      for (std::size_t axis = 0; axis < 3; ++axis)
        if (piece.axes[axis].size() != static_cast<std::size_t>(piece.dims[axis]))
          throw Failure("its axes have not as many coordinates as the grid has nodes");
    if (piece.kind == PieceKind::CURVILINEAR_GRID && piece.points.size() != numNodes)
      throw Failure("it has not as many points as the grid has nodes");
    if (piece.kind == PieceKind::CELLS) checkCells(piece);
    checkSets(piece, numNodes);
  }
}

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

float toFloat(double value) {
  constexpr double most = std::numeric_limits<float>::max();
  return std::abs(value) <= most ? static_cast<float>(value) : std::numeric_limits<float>::quiet_NaN();
}

}  // namespace importer
