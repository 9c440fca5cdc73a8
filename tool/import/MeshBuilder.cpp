#include "MeshBuilder.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoPointSet.h>

#include <Ormelle/PoCartesianGrid2D.h>
#include <Ormelle/PoCartesianGrid3D.h>
#include <Ormelle/PoHexahedronMesh3D.h>
#include <Ormelle/PoIndexedMesh2D.h>
#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoParalCartesianGrid3D.h>
#include <Ormelle/PoQuadrangleMesh2D.h>
#include <Ormelle/PoRegularCartesianGrid2D.h>
#include <Ormelle/PoRegularCartesianGrid3D.h>
#include <Ormelle/PoTetrahedronMesh3D.h>
#include <Ormelle/PoTriangleMesh2D.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "MeshSets.h"

namespace importer {

namespace {

// ---- Coordinates ----------------------------------------------------------------------------------------------------

double coordinateOf(const Piece& piece, const std::array<int, 3>& node, std::size_t axis) {
  if (piece.kind == PieceKind::REGULAR_GRID) return piece.origin[axis] + node[axis] * piece.spacing[axis];
  if (piece.kind == PieceKind::RECTILINEAR_GRID) return piece.axes[axis][sizeOf(node[axis])];
  const std::size_t row = sizeOf(node[2]) * sizeOf(piece.dims[1]) + sizeOf(node[1]);
  return piece.points[row * sizeOf(piece.dims[0]) + sizeOf(node[0])][axis];
}

// NaN for what no float holds: a node that isn't drawn.
float relative(double coordinate, double origin) { return toFloat(coordinate - origin); }

// The range of the coordinates along an axis, and how many different ones there may be.
Range rangeAlong(const Piece& piece, std::size_t axis) {
  Range range;
  switch (piece.kind) {
    case PieceKind::REGULAR_GRID:
      range.add(piece.origin[axis]);
      range.add(piece.origin[axis] + (piece.dims[axis] - 1) * piece.spacing[axis]);
      range.count = sizeOf(piece.dims[axis]);
      break;
    case PieceKind::RECTILINEAR_GRID:
      for (const double x : piece.axes[axis]) range.add(x);
      break;
    case PieceKind::SERIES:
      if (axis == 0)
        for (const double x : piece.axes[0]) range.add(x);
      break;
    default:
      for (const Point& point : piece.points) range.add(point[axis]);
      range.count = static_cast<std::size_t>(std::cbrt(static_cast<double>(range.count)));
      break;
  }
  return range;
}

// ---- Grids ----------------------------------------------------------------------------------------------------------

// The axes along which a grid has more than one node.
std::vector<std::size_t> wideAxes(const Piece& piece) {
  std::vector<std::size_t> axes;
  for (std::size_t axis = 0; axis < 3; ++axis)
    if (piece.dims[axis] > 1) axes.push_back(axis);
  return axes;
}

// Calls take(node) for each node, or each cell with `less` 1, in the library's order: the last of `axes` fastest.
template <class Take>
void walkGrid(const Piece& piece, const std::vector<std::size_t>& axes, int less, Take take) {
  std::array<int, 3> counts{1, 1, 1};
  for (std::size_t i = 0; i < axes.size(); ++i) counts[i] = piece.dims[axes[i]] - less;
  std::array<int, 3> at{0, 0, 0};
  for (int i = 0; i < counts[0]; ++i)
    for (int j = 0; j < counts[1]; ++j)
      for (int k = 0; k < counts[2]; ++k) {
        const std::array<int, 3> steps{i, j, k};
        for (std::size_t axis = 0; axis < axes.size(); ++axis) at[axes[axis]] = steps[axis];
        take(at);
      }
}

Sources gridSources(const Piece& piece, const std::vector<std::size_t>& axes) {
  Sources sources;
  const auto [x, y, z] = piece.dims;
  walkGrid(piece, axes, 0,
           [&, x = x, y = y](const auto& at) { sources.nodes.push_back(at[0] + x * (at[1] + y * at[2])); });
  const int cellsX = std::max(1, x - 1), cellsY = std::max(1, y - 1);
  walkGrid(piece, axes, 1, [&](const auto& at) { sources.cells.push_back(at[0] + cellsX * (at[1] + cellsY * at[2])); });
  return sources;
}

struct Coordinates {
  std::array<std::vector<float>, 3> along;

  const float* at(std::size_t axis) const { return along[axis].data(); }
  // z of a surface, null if it is 0 all over.
  const float* height() const {
    const bool isFlat = std::all_of(along[2].begin(), along[2].end(), [](float z) { return z == 0.0F; });
    return isFlat ? nullptr : along[2].data();
  }
};

Coordinates nodesOfGrid(const Piece& piece, const std::vector<std::size_t>& axes, const Origin& origin) {
  Coordinates nodes;
  walkGrid(piece, axes, 0, [&](const auto& at) {
    for (std::size_t axis = 0; axis < 3; ++axis)
      nodes.along[axis].push_back(relative(coordinateOf(piece, at, axis), origin[axis]));
  });
  return nodes;
}

// One coordinate for each node along an axis.
std::vector<float> coordinatesAlong(const Piece& piece, std::size_t axis, const Origin& origin) {
  std::vector<float> coordinates;
  std::array<int, 3> node{0, 0, 0};
  for (int i = 0; i < piece.dims[axis]; ++i) {
    node[axis] = i;
    coordinates.push_back(relative(coordinateOf(piece, node, axis), origin[axis]));
  }
  return coordinates;
}

PoMeshProperty* makeSurfaceGrid(const Piece& piece, const std::vector<std::size_t>& axes, const Origin& origin) {
  const int numX = piece.dims[axes[0]], numY = piece.dims[axes[1]];
  const bool isCurvilinear = piece.kind == PieceKind::CURVILINEAR_GRID;
  if (isCurvilinear || piece.dims[2] > 1) {
    const Coordinates nodes = nodesOfGrid(piece, axes, origin);
    auto* grid = new PoCartesianGrid2D;
    if (const float* z = nodes.height())
      grid->setGeometry(numX, numY, nodes.at(0), nodes.at(1), z);
    else
      grid->setGeometry(numX, numY, nodes.at(0), nodes.at(1));
    return grid;
  }
  const std::vector<float> x = coordinatesAlong(piece, 0, origin), y = coordinatesAlong(piece, 1, origin);
  const float height = coordinatesAlong(piece, 2, origin).front();
  const std::vector<float> z(height == 0.0F ? 0 : sizeOf(numX) * sizeOf(numY), height);
  if (piece.kind == PieceKind::REGULAR_GRID && piece.spacing[0] > 0 && piece.spacing[1] > 0) {
    auto* grid = new PoRegularCartesianGrid2D;
    if (z.empty())
      grid->setGeometry(numX, numY, x.front(), y.front(), x.back(), y.back());
    else
      grid->setGeometry(numX, numY, x.front(), y.front(), x.back(), y.back(), z.data());
    return grid;
  }
  auto* grid = new PoParalCartesianGrid2D;
  if (z.empty())
    grid->setGeometry(numX, numY, x.data(), y.data());
  else
    grid->setGeometry(numX, numY, x.data(), y.data(), z.data());
  return grid;
}

PoMeshProperty* makeVolumeGrid(const Piece& piece, const std::vector<std::size_t>& axes, const Origin& origin) {
  const auto [numX, numY, numZ] = piece.dims;
  if (piece.kind == PieceKind::CURVILINEAR_GRID) {
    const Coordinates nodes = nodesOfGrid(piece, axes, origin);
    auto* grid = new PoCartesianGrid3D;
    grid->setGeometry(numX, numY, numZ, nodes.at(0), nodes.at(1), nodes.at(2));
    return grid;
  }
  const std::vector<float> x = coordinatesAlong(piece, 0, origin), y = coordinatesAlong(piece, 1, origin),
                           z = coordinatesAlong(piece, 2, origin);
  if (piece.kind == PieceKind::REGULAR_GRID &&
      std::all_of(piece.spacing.begin(), piece.spacing.end(), [](double step) { return step > 0; })) {
    auto* grid = new PoRegularCartesianGrid3D;
    grid->setGeometry(numX, numY, numZ, x.front(), y.front(), z.front(), x.back(), y.back(), z.back());
    return grid;
  }
  auto* grid = new PoParalCartesianGrid3D;
  grid->setGeometry(numX, numY, numZ, x.data(), y.data(), z.data());
  return grid;
}

// ---- Cells ----------------------------------------------------------------------------------------------------------

// The cells of one dimension in a mixed piece.
struct Part {
  int dimension = 0;
  std::vector<int> nodes;  // of all cells, cell after cell
  std::vector<int> sizes;
  Sources sources;
};

Part partOf(const Piece& piece, int dimension) {
  Part part;
  part.dimension = dimension;
  std::size_t first = 0;
  for (std::size_t cell = 0; cell < piece.cellKinds.size(); ++cell) {
    const CellKind kind = piece.cellKinds[cell];
    const int size = numNodesOf(kind);
    if (dimensionOf(kind) == dimension) {
      const auto begin = piece.cellNodes.begin() + static_cast<std::ptrdiff_t>(first);
      part.nodes.insert(part.nodes.end(), begin, begin + size);
      part.sizes.push_back(size);
      part.sources.cells.push_back(piece.cellSources.empty() ? intOf(cell) : piece.cellSources[cell]);
    }
    first += sizeOf(size);
  }
  return part;
}

// Lets the part have all nodes of the piece, or with `onlyUsed` those that its cells use.
void takeNodes(Part& part, std::size_t numNodes, bool onlyUsed) {
  std::vector<int>& sources = part.sources.nodes;
  if (!onlyUsed) {
    sources.resize(numNodes);
    std::iota(sources.begin(), sources.end(), 0);
  } else {
    std::vector<int> places(numNodes, -1);
    for (int& node : part.nodes) {
      int& place = places[sizeOf(node)];
      if (place < 0) {
        place = intOf(sources.size());
        sources.push_back(node);
      }
      node = place;
    }
  }
}

Coordinates nodesOfPart(const Piece& piece, const Part& part, const Origin& origin) {
  Coordinates nodes;
  for (std::size_t axis = 0; axis < 3; ++axis)
    for (const int node : part.sources.nodes)
      nodes.along[axis].push_back(relative(piece.points[sizeOf(node)][axis], origin[axis]));
  return nodes;
}

template <class Node, class... Types>
Node* makeSurface(const Coordinates& xyz, int numNodes, int numCells, const int* nodes, Types... sizes) {
  auto* mesh = new Node;
  if (const float* z = xyz.height())
    mesh->setGeometry(numNodes, xyz.at(0), xyz.at(1), z, numCells, nodes, sizes...);
  else
    mesh->setGeometry(numNodes, xyz.at(0), xyz.at(1), numCells, nodes, sizes...);
  return mesh;
}

template <class Node, class... Types>
Node* makeVolume(const Coordinates& xyz, int numNodes, int numCells, const int* nodes, Types... sizes) {
  auto* mesh = new Node;
  mesh->setGeometry(numNodes, xyz.at(0), xyz.at(1), xyz.at(2), numCells, nodes, sizes...);
  return mesh;
}

PoMeshProperty* makeCells(const Piece& piece, const Part& part, const Origin& origin) {
  const Coordinates xyz = nodesOfPart(piece, part, origin);
  const int numNodes = intOf(part.sources.nodes.size()), numCells = intOf(part.sizes.size());
  const int* nodes = part.nodes.data();
  const int first = part.sizes.front();
  const bool isUniform = std::all_of(part.sizes.begin(), part.sizes.end(), [&](int size) { return size == first; });
  if (part.dimension == 2) {
    if (isUniform && first == 3) return makeSurface<PoTriangleMesh2D>(xyz, numNodes, numCells, nodes);
    if (isUniform) return makeSurface<PoQuadrangleMesh2D>(xyz, numNodes, numCells, nodes);
    return makeSurface<PoIndexedMesh2D>(xyz, numNodes, numCells, nodes, part.sizes.data());
  }
  if (isUniform && first == 4) return makeVolume<PoTetrahedronMesh3D>(xyz, numNodes, numCells, nodes);
  if (isUniform && first == 8) return makeVolume<PoHexahedronMesh3D>(xyz, numNodes, numCells, nodes);
  return makeVolume<PoIndexedMesh3D>(xyz, numNodes, numCells, nodes, part.sizes.data());
}

// Shapes of the toolkit for the lines, or else the points of a piece. Those that aren't finite are left out, which the
// toolkit's files couldn't hold.
SoNode* makeLines(const Piece& piece, const Part& part, const Origin& origin) {
  std::vector<SbVec3f> points;
  std::vector<int32_t> places, indices;
  for (const int node : part.sources.nodes) {
    SbVec3f point;
    bool isFinite = true;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      point[intOf(axis)] = relative(piece.points[sizeOf(node)][axis], origin[axis]);
      isFinite = isFinite && std::isfinite(point[intOf(axis)]);
    }
    places.push_back(isFinite ? intOf(points.size()) : -1);
    if (isFinite) points.push_back(point);
  }
  auto* group = new SoGroup;
  auto* coordinates = new SoCoordinate3;
  group->addChild(coordinates);
  coordinates->point.setValues(0, intOf(points.size()), points.data());
  if (part.dimension == 0) {
    group->addChild(new SoPointSet);
    return group;
  }
  for (std::size_t i = 0; i + 1 < part.nodes.size(); i += 2) {
    const int from = places[sizeOf(part.nodes[i])], to = places[sizeOf(part.nodes[i + 1])];
    if (from >= 0 && to >= 0) indices.insert(indices.end(), {from, to, -1});
  }
  auto* lines = new SoIndexedLineSet;
  group->addChild(lines);
  lines->coordIndex.setValues(0, intOf(indices.size()), indices.data());
  return group;
}

// ---- Results --------------------------------------------------------------------------------------------------------

void measure(BuiltMesh& mesh, const Piece& piece, const Origin& origin, const std::vector<int>* nodes) {
  mesh.isEmpty = true;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    Range range;
    if (nodes)
      for (const int node : *nodes) range.add(piece.points[sizeOf(node)][axis]);
    else
      range = rangeAlong(piece, axis);
    if (range.low > range.high) continue;
    mesh.isEmpty = false;
    mesh.low[axis] = range.low - origin[axis];
    mesh.high[axis] = range.high - origin[axis];
  }
}

BuiltMesh buildSeries(const Piece& piece, const Origin& origin, Dataset& data) {
  std::vector<float> x;
  for (const double at : piece.axes[0]) x.push_back(relative(at, origin[0]));
  auto* node = new PoIrregularMesh1D;
  node->setGeometry(intOf(x.size()), x.data());
  BuiltMesh mesh;
  mesh.name = cleaned(piece.axisName.empty() ? piece.name : piece.axisName);
  mesh.node = node;
  mesh.dimension = 1;
  mesh.numNodes = x.size();
  measure(mesh, piece, origin, nullptr);
  Sources sources;
  sources.nodes.resize(x.size());
  std::iota(sources.nodes.begin(), sources.nodes.end(), 0);
  addSets(piece, sources, node, mesh, data);
  return mesh;
}

// A grid with nodes along one axis only is a series along that axis; one of curved lines, lines.
std::optional<Piece> flattened(const Piece& piece, const std::vector<std::size_t>& axes) {
  if (axes.size() > 1) return std::nullopt;
  Piece flat;
  flat.name = piece.name;
  flat.scalars = piece.scalars;
  flat.vectors = piece.vectors;
  flat.strings = piece.strings;
  const std::size_t axis = axes.empty() ? 0 : axes[0];
  if (piece.kind == PieceKind::CURVILINEAR_GRID) {
    flat.kind = PieceKind::CELLS;
    flat.points = piece.points;
    for (int i = 0; i + 1 < piece.dims[axis]; ++i) {
      const std::array<int, 2> ends{i, i + 1};
      flat.addCell(CellKind::LINE, ends.data());
    }
    const int only = 0;
    if (axes.empty()) flat.addCell(CellKind::VERTEX, &only);
    return flat;
  }
  flat.kind = PieceKind::SERIES;
  flat.axisName = std::string(1, static_cast<char>('x' + axis));
  std::array<int, 3> node{0, 0, 0};
  for (int i = 0; i < piece.dims[axis]; ++i) {
    node[axis] = i;
    flat.axes[0].push_back(coordinateOf(piece, node, axis));
  }
  const auto isOfCells = [](const auto& set) { return set.binding == Binding::CELL; };
  std::erase_if(flat.scalars, isOfCells);
  std::erase_if(flat.vectors, isOfCells);
  return flat;
}

BuiltMesh buildGrid(const Piece& piece, const std::vector<std::size_t>& axes, const Origin& origin, Dataset& data) {
  const Sources sources = gridSources(piece, axes);
  PoMeshProperty* node = axes.size() == 2 ? makeSurfaceGrid(piece, axes, origin) : makeVolumeGrid(piece, axes, origin);
  BuiltMesh mesh;
  mesh.name = cleaned(piece.name);
  mesh.node = node;
  mesh.dimension = intOf(axes.size());
  mesh.numNodes = sources.nodes.size();
  mesh.numCells = sources.cells.size();
  measure(mesh, piece, origin, nullptr);
  addSets(piece, sources, node, mesh, data);
  return mesh;
}

std::vector<BuiltMesh> buildCells(const Piece& piece, const Origin& origin, Dataset& data) {
  std::array<Part, 4> parts;
  for (int dimension = 0; dimension < 4; ++dimension) parts[sizeOf(dimension)] = partOf(piece, dimension);
  const bool isMixed = !parts[2].sizes.empty() && !parts[3].sizes.empty();
  const bool hasMesh = !parts[2].sizes.empty() || !parts[3].sizes.empty();
  std::vector<BuiltMesh> meshes;
  for (const int dimension : {3, 2, 1, 0}) {
    Part& part = parts[sizeOf(dimension)];
    if (part.sizes.empty()) continue;
    if (dimension < 2 && hasMesh) {
      data.note(dimension == 1 ? counted(part.sizes.size(), "line was", "lines were") + " left out beside the cells"
                               : counted(part.sizes.size(), "point was", "points were") + " left out beside the cells");
      continue;
    }
    takeNodes(part, piece.points.size(), dimension == 2 ? isMixed : dimension < 2);
    BuiltMesh mesh;
    mesh.name = cleaned(piece.name);
    mesh.numNodes = part.sources.nodes.size();
    mesh.numCells = part.sizes.size();
    std::vector<int> used = part.nodes;
    if (part.sources.nodes.size() < piece.points.size())
      for (int& node : used) node = part.sources.nodes[sizeOf(node)];
    measure(mesh, piece, origin, &used);
    if (dimension < 2) {
      mesh.node = makeLines(piece, part, origin);
      const std::size_t numSets = piece.scalars.size() + piece.vectors.size() + piece.strings.size();
      if (numSets > 0)
        data.note(std::string("the values of ") + (dimension == 1 ? "lines" : "points") + " (" +
                  counted(numSets, "set", "sets") + ") were left out");
    } else {
      PoMeshProperty* node = makeCells(piece, part, origin);
      mesh.node = node;
      mesh.dimension = dimension;
      addSets(piece, part.sources, node, mesh, data);
      if (isMixed && dimension == 2) {
        mesh.name += mesh.name.empty() ? "surface" : " surface";
        data.note(counted(part.sizes.size(), "cell", "cells") + " of the surface became a mesh of their own");
      }
    }
    meshes.push_back(std::move(mesh));
  }
  if (meshes.empty() && !piece.points.empty()) {
    // A cloud of points, of which the file says no more.
    Piece cloud = piece;
    cloud.cellSources.clear();
    for (int i = 0; i < intOf(piece.points.size()); ++i) cloud.addCell(CellKind::VERTEX, &i);
    return buildCells(cloud, origin, data);
  }
  return meshes;
}

}  // namespace

Origin originFor(const Dataset& data) {
  // What floats round coordinates to, beside the whole extent, and beside the mean step between nodes.
  constexpr double kOfExtent = 1e-4, kOfStep = 0.02;
  constexpr double kHalfBit = 1.0 / (1 << 24);
  Origin origin{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    Range all;
    double step = std::numeric_limits<double>::infinity();
    for (const Piece& piece : data.pieces) {
      const Range range = rangeAlong(piece, axis);
      if (range.low > range.high) continue;
      all.add(range.low);
      all.add(range.high);
      const double extent = range.high - range.low;
      if (extent > 0 && range.count > 1) step = std::min(step, extent / static_cast<double>(range.count - 1));
    }
    if (all.low > all.high) continue;
    const double extent = all.high - all.low;
    const double rounding = std::max(std::abs(all.low), std::abs(all.high)) * kHalfBit;
    if (!(extent > 0) || !std::isfinite(extent) || (rounding <= kOfExtent * extent && rounding <= kOfStep * step))
      continue;
    // A multiple of the power of ten next to the extent, so that it can be added without paper.
    const double unit = std::pow(10.0, std::ceil(std::log10(extent)));
    const double round = std::floor(all.low / unit) * unit;
    origin[axis] = std::isfinite(round) && round != 0 ? round : 0.0;
  }
  return origin;
}

std::optional<Piece> seriesOf(const Piece& piece) {
  if (piece.kind == PieceKind::SERIES) return piece;
  if (piece.kind == PieceKind::CELLS || piece.kind == PieceKind::CURVILINEAR_GRID) return std::nullopt;
  return flattened(piece, wideAxes(piece));
}

std::vector<BuiltMesh> buildMeshes(const Piece& piece, const Origin& origin, Dataset& data) {
  if (piece.kind == PieceKind::CELLS) return buildCells(piece, origin, data);
  std::vector<BuiltMesh> meshes;
  if (piece.kind == PieceKind::SERIES) {
    meshes.push_back(buildSeries(piece, origin, data));
    return meshes;
  }
  const std::vector<std::size_t> axes = wideAxes(piece);
  if (const std::optional<Piece> flat = flattened(piece, axes)) return buildMeshes(*flat, origin, data);
  meshes.push_back(buildGrid(piece, axes, origin, data));
  return meshes;
}

}  // namespace importer
