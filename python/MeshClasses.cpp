#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoMeshProperty.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <typeinfo>

#include "KeptArrays.h"
#include "quillane/mesh/PbMeshDataSet.h"

namespace python {

namespace {

using namespace pybind11::literals;

using Shape = std::vector<py::ssize_t>;

// ---- Arrays of geometry ---------------------------------------------------------------------------------------------

// One z for each place of `shape`; none of a flat mesh.
FloatArray heightsOf(py::handle z, const Shape& shape, bool copy) {
  return z.is_none() ? FloatArray() : floatsOf(z, "z", shape, copy);
}
const float* dataOf(const FloatArray& array) { return array.size() > 0 ? array.data() : nullptr; }

// The arrays of coordinates of a curvilinear grid, which are as long along each axis.
Shape gridShapeOf(const FloatArray& x, py::ssize_t axes) {
  if (x.ndim() != axes || x.size() == 0)
    throw py::value_error("x must have " + std::to_string(axes) + " axes and not be empty");
  countOf(x.size(), "nodes", 1);
  return {x.shape(), x.shape() + axes};
}

// The nodes of cells that all have `cellSize` of them.
IntArray cellsOf(py::handle cells, int cellSize, py::ssize_t numNodes, bool copy) {
  IntArray all = indicesOf(cells, "the nodes of cells", numNodes, copy);
  const bool isTable = all.ndim() == 2 && all.shape(1) == cellSize;
  if (!isTable && !(all.ndim() == 1 && all.size() % cellSize == 0))
    throw py::value_error("cells must be a table of " + std::to_string(cellSize) + " nodes each");
  return all;
}

// The nodes of cells of several sizes, and the size of each.
struct MixedCells {
  IntArray nodes;
  IntArray sizes;

  int num() const { return static_cast<int>(sizes.size()); }
};

MixedCells mixedCellsOf(py::handle nodes, py::handle sizes, std::initializer_list<int> known, py::ssize_t numNodes,
                        bool copy) {
  MixedCells cells;
  if (sizes.is_none()) {
    py::list flat, counts;
    for (const py::handle cell : nodes) {
      py::ssize_t count = 0;
      for (const py::handle node : cell) {
        flat.append(node);
        ++count;
      }
      counts.append(count);
    }
    cells.nodes = indicesOf(flat, "the nodes of cells", numNodes);
    cells.sizes = indicesOf(counts, "the sizes of cells", 1001);
  } else {
    cells.nodes = indicesOf(nodes, "the nodes of cells", numNodes, copy);
    cells.sizes = indicesOf(sizes, "the sizes of cells", 1001, copy);
  }
  py::ssize_t sum = 0;
  for (py::ssize_t c = 0; c < cells.sizes.size(); ++c) {
    const int size = cells.sizes.data()[c];
    if (std::find(known.begin(), known.end(), size) == known.end())
      throw py::value_error("cell " + std::to_string(c) + " has " + std::to_string(size) +
                            " nodes, of which no cell of this class is made");
    sum += size;
  }
  if (sum != cells.nodes.size())
    throw py::value_error("the sizes of cells add up to " + std::to_string(sum) + ", but there are " +
                          std::to_string(cells.nodes.size()) + " nodes of cells");
  return cells;
}

// ---- Geometries: the arguments of a constructor, and what the mesh is given -----------------------------------------

Geometry<PbRegularCartesianGrid2D> regularGrid2D(bool copy, py::ssize_t numX, py::ssize_t numY, double xMin,
                                                 double yMin, double xMax, double yMax, const py::object& givenZ) {
  const int nx = countOf(numX, "num_x", 1), ny = countOf(numY, "num_y", 1);
  countOf(numX * numY, "nodes", 1);
  const float x0 = finite(xMin, "x_min"), y0 = finite(yMin, "y_min");
  const float x1 = finite(xMax, "x_max"), y1 = finite(yMax, "y_max");
  FloatArray z = heightsOf(givenZ, {numX, numY}, copy);
  return {[=, heights = dataOf(z)](auto& mesh) { mesh.setGeometry(nx, ny, x0, y0, x1, y1, heights); }, {z}};
}

// The two grids that a row for each axis makes: parallel to the axes, and polar.
template <class Mesh>
Geometry<Mesh> rowGrid2D(bool copy, const py::object& givenX, const py::object& givenY, const py::object& givenZ) {
  FloatArray x = rowOf(givenX, "the coordinates of the first axis", copy);
  FloatArray y = rowOf(givenY, "the coordinates of the second axis", copy);
  countOf(x.size() * y.size(), "nodes", 1);
  FloatArray z = heightsOf(givenZ, {x.size(), y.size()}, copy);
  const auto apply = [nx = static_cast<int>(x.size()), ny = static_cast<int>(y.size()), px = x.data(), py = y.data(),
                      pz = dataOf(z)](Mesh& mesh) { mesh.setGeometry(nx, ny, px, py, pz); };
  return {apply, {x, y, z}};
}

Geometry<PbCartesianGrid2D> cartesianGrid2D(bool copy, const py::object& givenX, const py::object& givenY,
                                            const py::object& givenZ) {
  FloatArray x = floatsOf(givenX, "x", copy);
  const Shape shape = gridShapeOf(x, 2);
  FloatArray y = floatsOf(givenY, "y", shape, copy);
  FloatArray z = heightsOf(givenZ, shape, copy);
  const auto apply = [nx = static_cast<int>(shape[0]), ny = static_cast<int>(shape[1]), px = x.data(), py = y.data(),
                      pz = dataOf(z)](PbCartesianGrid2D& mesh) { mesh.setGeometry(nx, ny, px, py, pz); };
  return {apply, {x, y, z}};
}

// Nodes of a surface mesh.
struct SurfaceNodes {
  FloatArray x, y, z;
  int num;

  SurfaceNodes(const py::object& givenX, const py::object& givenY, const py::object& givenZ, bool copy)
      : x(rowOf(givenX, "x", copy)),
        y(floatsOf(givenY, "y", Shape{x.size()}, copy)),
        z(heightsOf(givenZ, {x.size()}, copy)),
        num(static_cast<int>(x.size())) {}
};

template <class Mesh, int cellSize>
Geometry<Mesh> surfaceMesh(bool copy, const py::object& givenX, const py::object& givenY, const py::object& givenCells,
                           const py::object& givenZ) {
  const SurfaceNodes nodes(givenX, givenY, givenZ, copy);
  IntArray cells = cellsOf(givenCells, cellSize, nodes.num, copy);
  const auto apply = [num = nodes.num, x = nodes.x.data(), y = nodes.y.data(), z = dataOf(nodes.z),
                      numCells = static_cast<int>(cells.size() / cellSize),
                      index = cells.data()](Mesh& mesh) { mesh.setGeometry(num, x, y, z, numCells, index); };
  return {apply, {nodes.x, nodes.y, nodes.z, cells}};
}

Geometry<PbTriangleMesh2D> triangleMesh(bool copy, const py::object& givenX, const py::object& givenY,
                                        const py::object& cells, const py::object& givenZ) {
  if (!cells.is_none()) return surfaceMesh<PbTriangleMesh2D, 3>(copy, givenX, givenY, cells, givenZ);
  if (!PbTriangleMesh2D::canTriangulate())
    throw std::runtime_error("this build of Ormelle can't compute triangles: give the cells");
  const SurfaceNodes nodes(givenX, givenY, givenZ, copy);
  const auto apply = [num = nodes.num, x = nodes.x.data(), y = nodes.y.data(),
                      z = dataOf(nodes.z)](PbTriangleMesh2D& mesh) { mesh.setGeometry(num, x, y, z); };
  return {apply, {nodes.x, nodes.y, nodes.z}};
}

Geometry<PbIndexedMesh2D> indexedMesh2D(bool copy, const py::object& givenX, const py::object& givenY,
                                        const py::object& cellIndex, const py::object& cellType,
                                        const py::object& givenZ) {
  const SurfaceNodes nodes(givenX, givenY, givenZ, copy);
  const MixedCells cells = mixedCellsOf(cellIndex, cellType, {3, 4}, nodes.num, copy);
  const auto apply = [num = nodes.num, x = nodes.x.data(), y = nodes.y.data(), z = dataOf(nodes.z),
                      numCells = cells.num(), index = cells.nodes.data(), sizes = cells.sizes.data()](
                         PbIndexedMesh2D& mesh) { mesh.setGeometry(num, x, y, z, numCells, index, sizes); };
  return {apply, {nodes.x, nodes.y, nodes.z, cells.nodes, cells.sizes}};
}

Geometry<PbRegularCartesianGrid3D> regularGrid3D(bool, py::ssize_t numX, py::ssize_t numY, py::ssize_t numZ,
                                                 double xMin, double yMin, double zMin, double xMax, double yMax,
                                                 double zMax) {
  const int nx = countOf(numX, "num_x", 1), ny = countOf(numY, "num_y", 1), nz = countOf(numZ, "num_z", 1);
  countOf(countOf(numX * numY, "nodes", 1) * numZ, "nodes", 1);
  const float x0 = finite(xMin, "x_min"), y0 = finite(yMin, "y_min"), z0 = finite(zMin, "z_min");
  const float x1 = finite(xMax, "x_max"), y1 = finite(yMax, "y_max"), z1 = finite(zMax, "z_max");
  return {[=](auto& mesh) { mesh.setGeometry(nx, ny, nz, x0, y0, z0, x1, y1, z1); }, {}};
}

Geometry<PbParalCartesianGrid3D> paralGrid3D(bool copy, const py::object& givenX, const py::object& givenY,
                                             const py::object& givenZ) {
  FloatArray x = rowOf(givenX, "x", copy);
  FloatArray y = rowOf(givenY, "y", copy);
  FloatArray z = rowOf(givenZ, "z", copy);
  countOf(countOf(x.size() * y.size(), "nodes", 1) * z.size(), "nodes", 1);
  const auto apply = [nx = static_cast<int>(x.size()), ny = static_cast<int>(y.size()), nz = static_cast<int>(z.size()),
                      px = x.data(), py = y.data(),
                      pz = z.data()](PbParalCartesianGrid3D& mesh) { mesh.setGeometry(nx, ny, nz, px, py, pz); };
  return {apply, {x, y, z}};
}

Geometry<PbCartesianGrid3D> cartesianGrid3D(bool copy, const py::object& givenX, const py::object& givenY,
                                            const py::object& givenZ) {
  FloatArray x = floatsOf(givenX, "x", copy);
  const Shape shape = gridShapeOf(x, 3);
  FloatArray y = floatsOf(givenY, "y", shape, copy);
  FloatArray z = floatsOf(givenZ, "z", shape, copy);
  const auto apply = [nx = static_cast<int>(shape[0]), ny = static_cast<int>(shape[1]), nz = static_cast<int>(shape[2]),
                      px = x.data(), py = y.data(),
                      pz = z.data()](PbCartesianGrid3D& mesh) { mesh.setGeometry(nx, ny, nz, px, py, pz); };
  return {apply, {x, y, z}};
}

template <class Mesh, int cellSize>
Geometry<Mesh> solidMesh(bool copy, const py::object& givenX, const py::object& givenY, const py::object& givenZ,
                         const py::object& givenCells) {
  FloatArray x = rowOf(givenX, "x", copy);
  FloatArray y = floatsOf(givenY, "y", Shape{x.size()}, copy);
  FloatArray z = floatsOf(givenZ, "z", Shape{x.size()}, copy);
  IntArray cells = cellsOf(givenCells, cellSize, x.size(), copy);
  const auto apply = [num = static_cast<int>(x.size()), px = x.data(), py = y.data(), pz = z.data(),
                      numCells = static_cast<int>(cells.size() / cellSize),
                      index = cells.data()](Mesh& mesh) { mesh.setGeometry(num, px, py, pz, numCells, index); };
  return {apply, {x, y, z, cells}};
}

Geometry<PbIndexedMesh3D> indexedMesh3D(bool copy, const py::object& givenX, const py::object& givenY,
                                        const py::object& givenZ, const py::object& cellIndex,
                                        const py::object& cellType) {
  FloatArray x = rowOf(givenX, "x", copy);
  FloatArray y = floatsOf(givenY, "y", Shape{x.size()}, copy);
  FloatArray z = floatsOf(givenZ, "z", Shape{x.size()}, copy);
  const MixedCells cells = mixedCellsOf(cellIndex, cellType, {4, 5, 6, 8}, x.size(), copy);
  const auto apply = [num = static_cast<int>(x.size()), px = x.data(), py = y.data(), pz = z.data(),
                      numCells = cells.num(), index = cells.nodes.data(), sizes = cells.sizes.data()](
                         PbIndexedMesh3D& mesh) { mesh.setGeometry(num, px, py, pz, numCells, index, sizes); };
  return {apply, {x, y, z, cells.nodes, cells.sizes}};
}

Geometry<PbRegularMesh1D> regularMesh1D(bool, py::ssize_t num, double begin, double end) {
  const int n = countOf(num, "num_x", 1);
  return {[n, x0 = finite(begin, "x_begin"), x1 = finite(end, "x_end")](auto& mesh) { mesh.setGeometry(n, x0, x1); },
          {}};
}

Geometry<PbIrregularMesh1D> irregularMesh1D(bool copy, const py::object& givenX) {
  FloatArray x = rowOf(givenX, "x", copy);
  return {[num = static_cast<int>(x.size()), px = x.data()](auto& mesh) { mesh.setGeometry(num, px); }, {x}};
}

// ---- Classes --------------------------------------------------------------------------------------------------------

/// Adds a class whose constructor and whose `setGeometry` take the arguments of `make`, of which `names` tell.
template <class Parent, class Mesh, class... Arguments, class... Names>
void addClass(py::module_& module, const char* name, Geometry<Mesh> (*make)(bool, Arguments...),
              const Names&... names) {
  py::class_<Mesh, Parent, KeepingMesh<Mesh>> meshClass(module, name);
  meshClass.def(py::init([] { return new KeepingMesh<Mesh>; }), "An empty mesh.");
  meshClass.def(py::init([make](Arguments... arguments, bool copy) {
                  auto mesh = std::make_unique<KeepingMesh<Mesh>>();
                  mesh->copies = copy;
                  mesh->store(make(copy, arguments...));
                  return mesh.release();
                }),
                names..., py::kw_only(), "copy"_a = false,
                "Arrays of numbers of 4 bytes in C order are shared with the mesh, unless copy is True; all others are "
                "converted into copies.");
  meshClass.def(
      "setGeometry",
      [make](Mesh& mesh, Arguments... arguments) {
        if (auto* keeping = dynamic_cast<KeepingMesh<Mesh>*>(&mesh))
          keeping->store(make(keeping->copies, arguments...));
        else
          make(false, arguments...).apply(mesh);
      },
      names..., "Replaces nodes and cells. Data sets go if the number of nodes or cells changes.");
}

// ---- Into the nodes -------------------------------------------------------------------------------------------------

void copySets(const PbMesh& from, PbMesh& to) {
  const PiMeshDataSets& sets = PiMeshDataSets::of(from);
  const auto isWhole = [&to](const auto& set) {
    return set.data.getNum() == (set.binding == PbMesh::PER_CELL ? to.getNumCells() : to.getNumNodes());
  };
  for (const auto& [index, set] : sets.values)
    if (isWhole(set)) to.addValuesSet(index, set.data.get(), set.binding, set.name);
  for (const auto& [index, set] : sets.vecs)
    if (isWhole(set)) to.addVecsSet(index, set.data.get(), set.binding, set.name);
  for (const auto& [index, set] : sets.strings)
    if (isWhole(set)) to.addStringsSet(index, set.data.get(), set.name);
}

// Assigns between two meshes that own what they hold, if their class is Mesh.
template <class Mesh>
bool assigned(const PbMesh& from, PbMesh& to) {
  if (typeid(to) != typeid(Mesh)) return false;
  static_cast<Mesh&>(to) = static_cast<const Mesh&>(from);
  return true;
}

}  // namespace

void copyTo(const PbMesh& mesh, py::handle node) {
  SoNode* target = nodeOf(node, "the node");
  if (!target->isOfType(PoMeshProperty::getClassTypeId()))
    throw py::type_error(std::string(target->getTypeId().getName().getString()) + " is no node that holds a mesh");
  PbMesh& to = *static_cast<PoMeshProperty*>(target)->getMesh();
  const auto* kept = dynamic_cast<const KeptArrays*>(&mesh);
  if ((kept ? kept->meshClass() : typeid(mesh)) != typeid(to))
    throw py::type_error(std::string(target->getTypeId().getName().getString()) +
                         " can't hold a mesh of another class");
  if (&to == &mesh) return;
  if (kept) {
    to.removeAllValuesSet();
    to.removeAllVecsSet();
    to.removeAllStringsSet();
    kept->applyTo(to);
    copySets(mesh, to);
  } else {
    (void)(assigned<PbRegularCartesianGrid2D>(mesh, to) || assigned<PbParalCartesianGrid2D>(mesh, to) ||
           assigned<PbCartesianGrid2D>(mesh, to) || assigned<PbPolarGrid2D>(mesh, to) ||
           assigned<PbTriangleMesh2D>(mesh, to) || assigned<PbQuadrangleMesh2D>(mesh, to) ||
           assigned<PbIndexedMesh2D>(mesh, to) || assigned<PbRegularCartesianGrid3D>(mesh, to) ||
           assigned<PbParalCartesianGrid3D>(mesh, to) || assigned<PbCartesianGrid3D>(mesh, to) ||
           assigned<PbTetrahedronMesh3D>(mesh, to) || assigned<PbHexahedronMesh3D>(mesh, to) ||
           assigned<PbIndexedMesh3D>(mesh, to) || assigned<PbRegularMesh1D>(mesh, to) ||
           assigned<PbIrregularMesh1D>(mesh, to));
  }
  target->touch();
}

void addMeshClasses(py::module_& module) {
  const py::arg x("x"), y("y"), z("z"), cells("cells");
  const py::arg_v noZ("z", py::none());

  addClass<PbGrid2D>(module, "PbRegularCartesianGrid2D", &regularGrid2D, "num_x"_a, "num_y"_a, "x_min"_a, "y_min"_a,
                     "x_max"_a, "y_max"_a, noZ);
  addClass<PbGrid2D>(module, "PbCartesianGrid2D", &cartesianGrid2D, x, y, noZ);
  addClass<PbCartesianGrid2D>(module, "PbParalCartesianGrid2D", &rowGrid2D<PbParalCartesianGrid2D>, x, y, noZ);
  addClass<PbGrid2D>(module, "PbPolarGrid2D", &rowGrid2D<PbPolarGrid2D>, "radius"_a, "angle"_a, noZ);
  addClass<PbMesh2D>(module, "PbIndexedMesh2D", &indexedMesh2D, x, y, "cell_index"_a, "cell_type"_a = py::none(), noZ);
  addClass<PbIndexedMesh2D>(module, "PbTriangleMesh2D", &triangleMesh, x, y, "cells"_a = py::none(), noZ);
  addClass<PbIndexedMesh2D>(module, "PbQuadrangleMesh2D", &surfaceMesh<PbQuadrangleMesh2D, 4>, x, y, cells, noZ);

  addClass<PbGrid3D>(module, "PbRegularCartesianGrid3D", &regularGrid3D, "num_x"_a, "num_y"_a, "num_z"_a, "x_min"_a,
                     "y_min"_a, "z_min"_a, "x_max"_a, "y_max"_a, "z_max"_a);
  addClass<PbGrid3D>(module, "PbCartesianGrid3D", &cartesianGrid3D, x, y, z);
  addClass<PbCartesianGrid3D>(module, "PbParalCartesianGrid3D", &paralGrid3D, x, y, z);
  addClass<PbMesh3D>(module, "PbIndexedMesh3D", &indexedMesh3D, x, y, z, "cell_index"_a, "cell_type"_a = py::none());
  addClass<PbIndexedMesh3D>(module, "PbTetrahedronMesh3D", &solidMesh<PbTetrahedronMesh3D, 4>, x, y, z, cells);
  addClass<PbIndexedMesh3D>(module, "PbHexahedronMesh3D", &solidMesh<PbHexahedronMesh3D, 8>, x, y, z, cells);

  addClass<PbMesh1D>(module, "PbRegularMesh1D", &regularMesh1D, "num_x"_a, "x_begin"_a, "x_end"_a);
  addClass<PbMesh1D>(module, "PbIrregularMesh1D", &irregularMesh1D, x);
}

}  // namespace python
