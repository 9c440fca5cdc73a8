#include "support/MeshFamily.h"

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>

#include <algorithm>
#include <type_traits>

namespace {

std::vector<float> axis(int num, float min, float max) {
  std::vector<float> coords;
  for (int i = 0; i < num; ++i) coords.push_back(num > 1 ? min + (max - min) * float(i) / float(num - 1) : min);
  return coords;
}

// The arrays of a grid: x and y, for each line or for each node, then z if there is one.
std::vector<std::vector<float>> arraysOf(const RectangleSpec& spec, bool isPerNode) {
  const std::vector<float> x = axis(spec.numX, spec.xMin, spec.xMax), y = axis(spec.numY, spec.yMin, spec.yMax);
  std::vector<std::vector<float>> arrays = {x, y};
  if (spec.z) arrays.emplace_back();
  if (isPerNode) arrays[0] = arrays[1] = {};
  for (const float xi : x)
    for (const float yj : y) {
      if (isPerNode) arrays[0].push_back(xi), arrays[1].push_back(yj);
      if (spec.z) arrays[2].push_back(spec.z(xi, yj));
    }
  return arrays;
}

const float* zOf(const MeshSample<PbMesh2D>& sample, std::size_t index) {
  return sample.arrays.size() > index ? sample.arrays[index].data() : nullptr;
}

template <class Grid, bool isPerNode>
MeshSample<PbMesh2D> makeGrid2D(const RectangleSpec& spec, int isDataDuplicate) {
  MeshSample<PbMesh2D> sample{arraysOf(spec, isPerNode), nullptr};
  sample.mesh = std::make_unique<Grid>(spec.numX, spec.numY, sample.arrays[0].data(), sample.arrays[1].data(),
                                       zOf(sample, 2), isDataDuplicate);
  return sample;
}

MeshSample<PbMesh2D> makeRegular2D(const RectangleSpec& spec, int isDataDuplicate) {
  MeshSample<PbMesh2D> sample{arraysOf(spec, false), nullptr};
  sample.mesh = std::make_unique<PbRegularCartesianGrid2D>(spec.numX, spec.numY, spec.xMin, spec.yMin, spec.xMax,
                                                           spec.yMax, zOf(sample, 2), isDataDuplicate);
  return sample;
}

template <class Mesh>
MeshKind2D kind2D(std::string name, MeshSample<PbMesh2D> (*make)(const RectangleSpec&, int)) {
  return {std::move(name), make,
          [](const PbMesh2D& mesh) { return std::make_unique<Mesh>(dynamic_cast<const Mesh&>(mesh)); },
          [](PbMesh2D& to, const PbMesh2D& from) { dynamic_cast<Mesh&>(to) = dynamic_cast<const Mesh&>(from); }};
}

// The corners of the parts of each cell of a grid, counted as the grid counts them; every other cell is the other way
// round. Cut into triangles or tetrahedra, neighbours match.
const std::vector<std::vector<int>> kQuadrangle[] = {{{0, 1, 2, 3}}, {{0, 1, 2, 3}}};
const std::vector<std::vector<int>> kTriangles[] = {{{0, 1, 2}, {0, 2, 3}}, {{0, 1, 3}, {1, 2, 3}}};
const std::vector<std::vector<int>> kHexahedron[] = {{{0, 1, 2, 3, 4, 5, 6, 7}}, {{0, 1, 2, 3, 4, 5, 6, 7}}};
const std::vector<std::vector<int>> kTetrahedra[] = {
    {{0, 1, 3, 4}, {2, 3, 1, 6}, {5, 4, 6, 1}, {7, 6, 4, 3}, {1, 3, 4, 6}},
    {{1, 2, 0, 5}, {3, 0, 2, 7}, {4, 7, 5, 0}, {6, 5, 7, 2}, {0, 2, 7, 5}}};

// Number of nodes of each cell and the nodes of all cells of a grid of numZ layers; a surface has one layer of nodes.
struct CellArrays {
  std::vector<int> sizes, nodes;
};
CellArrays cellsOf(int numX, int numY, int numZ, const std::vector<std::vector<int>> (&parts)[2]) {
  CellArrays cells;
  const auto node = [&](int i, int j, int k) { return (i * numY + j) * numZ + k; };
  for (int i = 0; i + 1 < numX; ++i)
    for (int j = 0; j + 1 < numY; ++j)
      for (int k = 0; k < std::max(1, numZ - 1); ++k) {
        const int corners[] = {
            node(i, j, k),     node(i + 1, j, k),     node(i + 1, j + 1, k),     node(i, j + 1, k),
            node(i, j, k + 1), node(i + 1, j, k + 1), node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)};
        for (const std::vector<int>& part : parts[(i + j + k) % 2]) {
          cells.sizes.push_back(int(part.size()));
          for (const int corner : part) cells.nodes.push_back(corners[corner]);
        }
      }
  return cells;
}

template <class Mesh, const std::vector<std::vector<int>> (&parts)[2]>
MeshSample<PbMesh2D> makeIndexed2D(const RectangleSpec& spec, int isDataDuplicate) {
  const CellArrays cells = cellsOf(spec.numX, spec.numY, 1, parts);
  MeshSample<PbMesh2D> sample{arraysOf(spec, true), nullptr, {cells.nodes, cells.sizes}};
  const float *x = sample.arrays[0].data(), *y = sample.arrays[1].data(), *z = zOf(sample, 2);
  const int numNodes = spec.numX * spec.numY, numCells = int(cells.sizes.size());
  const int *nodes = sample.indices[0].data(), *sizes = sample.indices[1].data();
  if constexpr (std::is_same_v<Mesh, PbIndexedMesh2D>)
    sample.mesh = std::make_unique<Mesh>(numNodes, x, y, z, numCells, nodes, sizes, isDataDuplicate);
  else
    sample.mesh = std::make_unique<Mesh>(numNodes, x, y, z, numCells, nodes, isDataDuplicate);
  return sample;
}

template <class Grid, bool isPerNode>
MeshSample<PbMesh3D> makeGrid3D(const BoxSpec& spec, int isDataDuplicate) {
  const int num[3] = {spec.numX, spec.numY, spec.numZ};
  std::vector<float> axes[3];
  for (int a = 0; a < 3; ++a) axes[a] = axis(num[a], spec.min[a], spec.max[a]);
  MeshSample<PbMesh3D> sample;
  if (isPerNode) {
    sample.arrays.resize(3);
    for (const float x : axes[0])
      for (const float y : axes[1])
        for (const float z : axes[2])
          sample.arrays[0].push_back(x), sample.arrays[1].push_back(y), sample.arrays[2].push_back(z);
  } else {
    sample.arrays.assign(axes, axes + 3);
  }
  sample.mesh = std::make_unique<Grid>(spec.numX, spec.numY, spec.numZ, sample.arrays[0].data(),
                                       sample.arrays[1].data(), sample.arrays[2].data(), isDataDuplicate);
  return sample;
}

MeshSample<PbMesh3D> makeRegular3D(const BoxSpec& spec, int isDataDuplicate) {
  return {
      {},
      std::make_unique<PbRegularCartesianGrid3D>(spec.numX, spec.numY, spec.numZ, spec.min[0], spec.min[1], spec.min[2],
                                                 spec.max[0], spec.max[1], spec.max[2], isDataDuplicate)};
}

template <class Mesh, const std::vector<std::vector<int>> (&parts)[2]>
MeshSample<PbMesh3D> makeIndexed3D(const BoxSpec& spec, int isDataDuplicate) {
  MeshSample<PbMesh3D> sample = makeGrid3D<PbCartesianGrid3D, true>(spec, 0);
  const CellArrays cells = cellsOf(spec.numX, spec.numY, spec.numZ, parts);
  sample.indices = {cells.nodes, cells.sizes};
  const float *x = sample.arrays[0].data(), *y = sample.arrays[1].data(), *z = sample.arrays[2].data();
  const int numNodes = spec.numX * spec.numY * spec.numZ, numCells = int(cells.sizes.size());
  const int *nodes = sample.indices[0].data(), *sizes = sample.indices[1].data();
  if constexpr (std::is_same_v<Mesh, PbIndexedMesh3D>)
    sample.mesh = std::make_unique<Mesh>(numNodes, x, y, z, numCells, nodes, sizes, isDataDuplicate);
  else
    sample.mesh = std::make_unique<Mesh>(numNodes, x, y, z, numCells, nodes, isDataDuplicate);
  return sample;
}

}  // namespace

const std::vector<MeshKind2D>& meshKinds2D() {
  static const std::vector<MeshKind2D> s_kinds = [] {
    std::vector<MeshKind2D> kinds = {
        kind2D<PbCartesianGrid2D>("CartesianGrid2D", makeGrid2D<PbCartesianGrid2D, true>),
        kind2D<PbParalCartesianGrid2D>("ParalCartesianGrid2D", makeGrid2D<PbParalCartesianGrid2D, false>),
        kind2D<PbRegularCartesianGrid2D>("RegularCartesianGrid2D", makeRegular2D),
        kind2D<PbQuadrangleMesh2D>("QuadrangleMesh2D", makeIndexed2D<PbQuadrangleMesh2D, kQuadrangle>),
        kind2D<PbIndexedMesh2D>("IndexedMesh2D", makeIndexed2D<PbIndexedMesh2D, kQuadrangle>),
        kind2D<PbTriangleMesh2D>("TriangleMesh2D", makeIndexed2D<PbTriangleMesh2D, kTriangles>)};
    kinds.back().numParts = 2;
    return kinds;
  }();
  return s_kinds;
}

const std::vector<MeshKind3D>& meshKinds3D() {
  static const std::vector<MeshKind3D> s_kinds = {
      {"CartesianGrid3D", makeGrid3D<PbCartesianGrid3D, true>},
      {"ParalCartesianGrid3D", makeGrid3D<PbParalCartesianGrid3D, false>},
      {"RegularCartesianGrid3D", makeRegular3D},
      {"HexahedronMesh3D", makeIndexed3D<PbHexahedronMesh3D, kHexahedron>},
      {"IndexedMesh3D", makeIndexed3D<PbIndexedMesh3D, kHexahedron>},
      {"TetrahedronMesh3D", makeIndexed3D<PbTetrahedronMesh3D, kTetrahedra>, 5}};
  return s_kinds;
}
