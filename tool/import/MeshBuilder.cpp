#include "MeshBuilder.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoPointSet.h>

#include <Ormelle/PbCell.h>
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

namespace importer {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::size_t sizeOf(int number) { return static_cast<std::size_t>(number); }
int intOf(std::size_t number) { return static_cast<int>(number); }

// A name without what would break a line, and not without end.
std::string cleaned(const std::string& name) {
  constexpr std::size_t kLongest = 200;
  std::string text = name.substr(0, kLongest);
  for (char& c : text)
    if (static_cast<unsigned char>(c) < 32 || c == 127) c = ' ';
  return text;
}

// ---- Coordinates ----------------------------------------------------------------------------------------------------

double coordinateOf(const Piece& piece, const std::array<int, 3>& node, std::size_t axis) {
  if (piece.kind == PieceKind::REGULAR_GRID) return piece.origin[axis] + node[axis] * piece.spacing[axis];
  if (piece.kind == PieceKind::RECTILINEAR_GRID) return piece.axes[axis][sizeOf(node[axis])];
  const std::size_t row = sizeOf(node[2]) * sizeOf(piece.dims[1]) + sizeOf(node[1]);
  return piece.points[row * sizeOf(piece.dims[0]) + sizeOf(node[0])][axis];
}

// NaN for what no float holds: a node that isn't drawn.
float relative(double coordinate, double origin) { return toFloat(coordinate - origin); }

struct Range {
  double low = kInfinity, high = -kInfinity;
  std::size_t count = 0;

  void add(double number) {
    if (!std::isfinite(number)) return;
    low = std::min(low, number);
    high = std::max(high, number);
    ++count;
  }
};

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

// ---- Data sets ------------------------------------------------------------------------------------------------------

// For each element of a mesh the index of its values in the sets of the piece. No numbers: as they come.
struct Sources {
  std::vector<int> nodes;
  std::vector<int> cells;
  std::size_t numNodes = 0, numCells = 0;

  const std::vector<int>& of(Binding binding) const { return binding == Binding::NODE ? nodes : cells; }
  std::size_t count(Binding binding) const { return binding == Binding::NODE ? numNodes : numCells; }
};

template <class Value, class Target = Value, class Change>
std::vector<Target> picked(const std::vector<Value>& values, const std::vector<int>& from, Change change) {
  std::vector<Target> all;
  all.reserve(from.size());
  for (const int index : from) all.push_back(change(values[sizeOf(index)]));
  return all;
}

PbMesh::DataBinding bindingOf(Binding binding) {
  return binding == Binding::NODE ? PbMesh::PER_NODE : PbMesh::PER_CELL;
}

void noteShown(BuiltMesh& mesh, int index, const std::string& name, const std::vector<float>& values) {
  if (mesh.shown) return;
  Range range;
  for (const float value : values) range.add(value);
  if (range.count > 0) mesh.shown = {index, name, static_cast<float>(range.low), static_cast<float>(range.high)};
}

// A surface is coloured by values of nodes only: the mean of the cells round each.
std::vector<float> meansAtNodes(const PbMesh& mesh, const std::vector<float>& values) {
  std::vector<double> sums(sizeOf(mesh.getNumNodes()));
  std::vector<int> counts(sums.size());
  for (int cell = 0; cell < mesh.getNumCells(); ++cell) {
    const PbCell* nodes = mesh.getTopoCell(cell);
    if (!nodes || !std::isfinite(values[sizeOf(cell)])) continue;
    for (int i = 0; i < nodes->getNumNodes(); ++i) {
      sums[sizeOf(nodes->getNodeIndex(i))] += static_cast<double>(values[sizeOf(cell)]);
      ++counts[sizeOf(nodes->getNodeIndex(i))];
    }
  }
  std::vector<float> means(sums.size(), std::numeric_limits<float>::quiet_NaN());
  for (std::size_t i = 0; i < sums.size(); ++i)
    if (counts[i] > 0) means[i] = static_cast<float>(sums[i] / counts[i]);
  return means;
}

void addSets(const Piece& piece, const Sources& sources, PoMeshProperty* node, BuiltMesh& mesh, Dataset& data) {
  int numScalars = 0;
  std::vector<std::pair<std::string, std::vector<float>>> cellSets;
  for (const ScalarSet& set : piece.scalars) {
    if (sources.count(set.binding) == 0) continue;
    const std::string name = cleaned(set.name);
    std::vector<float> values = picked(set.values, sources.of(set.binding), [](float value) { return value; });
    const int index = numScalars++;
    node->addValuesSet(index, values.data(), bindingOf(set.binding), name.c_str());
    (set.binding == Binding::NODE ? mesh.scalars : mesh.cellScalars).push_back(name);
    if (set.binding == Binding::NODE)
      noteShown(mesh, index, name, values);
    else
      cellSets.emplace_back(name, std::move(values));
  }
  for (std::size_t i = 0; i < cellSets.size() && !mesh.shown && mesh.dimension > 1; ++i) {
    auto& [name, values] = cellSets[i];
    if (mesh.dimension == 3) {
      for (int index = 0; index < numScalars; ++index)
        if (node->getMesh()->getValuesSet(index) && *node->getMesh()->getValuesSetName(index) == name.c_str())
          noteShown(mesh, index, name, values);
      continue;
    }
    const std::vector<float> means = meansAtNodes(*node->getMesh(), values);
    const int index = numScalars;
    noteShown(mesh, index, name, means);
    if (!mesh.shown) continue;
    node->addValuesSet(index, means.data(), (name + ", mean at nodes").c_str());
    mesh.scalars.push_back(name + ", mean at nodes");
    ++numScalars;
    data.note("the surface is coloured by an added set, the means of \"" + name + "\" at the nodes");
  }

  int numVectors = 0;
  for (const VectorSet& set : piece.vectors) {
    if (sources.count(set.binding) == 0) continue;
    const auto vectors = picked<Vector, SbVec3f>(set.values, sources.of(set.binding),
                                                 [](const Vector& v) { return SbVec3f(v[0], v[1], v[2]); });
    node->addVecsSet(numVectors++, vectors.data(), bindingOf(set.binding), cleaned(set.name).c_str());
    mesh.vectors.push_back(cleaned(set.name));
  }
  int numStrings = 0;
  for (const StringSet& set : piece.strings) {
    const auto strings = picked<std::string, SbString>(set.values, sources.nodes,
                                                       [](const std::string& text) { return SbString(text.c_str()); });
    node->addStringsSet(numStrings++, strings.data(), cleaned(set.name).c_str());
    mesh.strings.push_back(cleaned(set.name));
  }
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
  sources.numNodes = sources.nodes.size();
  sources.numCells = sources.cells.size();
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
  part.sources.numCells = part.sizes.size();
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
  part.sources.numNodes = sources.size();
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
  const int numNodes = intOf(part.sources.numNodes), numCells = intOf(part.sizes.size());
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

// Shapes of the toolkit for the lines, or else the points of a piece.
SoNode* makeLines(const Piece& piece, const Part& part, const Origin& origin) {
  std::vector<SbVec3f> points;
  std::vector<int32_t> indices;
  const bool isLine = part.dimension == 1;
  const auto add = [&](int node) {
    const Point& point = piece.points[sizeOf(node)];
    points.emplace_back(relative(point[0], origin[0]), relative(point[1], origin[1]), relative(point[2], origin[2]));
  };
  for (const int node : part.sources.nodes) add(node);
  for (std::size_t i = 0; isLine && i + 1 < part.nodes.size(); i += 2)
    indices.insert(indices.end(), {part.nodes[i], part.nodes[i + 1], -1});
  auto* group = new SoGroup;
  auto* coordinates = new SoCoordinate3;
  group->addChild(coordinates);
  coordinates->point.setValues(0, intOf(points.size()), points.data());
  if (isLine) {
    auto* lines = new SoIndexedLineSet;
    group->addChild(lines);
    lines->coordIndex.setValues(0, intOf(indices.size()), indices.data());
  } else {
    group->addChild(new SoPointSet);
  }
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
  mesh.name = cleaned(piece.name);
  mesh.node = node;
  mesh.dimension = 1;
  mesh.numNodes = x.size();
  measure(mesh, piece, origin, nullptr);
  Sources sources;
  sources.nodes.resize(x.size());
  std::iota(sources.nodes.begin(), sources.nodes.end(), 0);
  sources.numNodes = x.size();
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
  mesh.numNodes = sources.numNodes;
  mesh.numCells = sources.numCells;
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
    const char* one = dimension == 1 ? "line" : "point";
    const char* many = dimension == 1 ? "lines" : "points";
    if (dimension < 2 && hasMesh) {
      data.note(counted(part.sizes.size(), one, many) + " beside the cells were left out");
      continue;
    }
    takeNodes(part, piece.points.size(), dimension == 2 ? isMixed : dimension < 2);
    BuiltMesh mesh;
    mesh.name = cleaned(piece.name);
    mesh.numNodes = part.sources.numNodes;
    mesh.numCells = part.sizes.size();
    std::vector<int> used = part.nodes;
    if (part.sources.numNodes < piece.points.size())
      for (int& node : used) node = part.sources.nodes[sizeOf(node)];
    measure(mesh, piece, origin, &used);
    if (dimension < 2) {
      mesh.node = makeLines(piece, part, origin);
      const std::size_t numSets = piece.scalars.size() + piece.vectors.size() + piece.strings.size();
      if (numSets > 0)
        data.note("the values of " + std::string(many) + " (" + counted(numSets, "set", "sets") + ") were left out");
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
    double step = kInfinity;
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
