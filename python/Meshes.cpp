#include <Ormelle/PbCell.h>
#include <Ormelle/PbGrid2D.h>
#include <Ormelle/PbGrid3D.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PbMesh2D.h>

#include <pybind11/stl.h>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "Arguments.h"
#include "KeptArrays.h"
#include "quillane/mesh/PbMeshDataSet.h"

namespace python {

namespace {

using namespace pybind11::literals;

// ---- Data sets ------------------------------------------------------------------------------------------------------

// The three kinds of sets behind one set of functions.
struct ValuesKind {
  using Element = float;
  static constexpr const char* name = "values";
  static constexpr py::ssize_t width = 1;
  static const PiMeshDataSetMap<float>& of(const PbMesh& mesh) { return PiMeshDataSets::of(mesh).values; }
  static void add(PbMesh& mesh, int index, const float* data, PbMesh::DataBinding binding, const SbString& setName) {
    mesh.addValuesSet(index, data, binding, setName);
  }
  static int remove(PbMesh& mesh, int index) { return mesh.removeValuesSet(index); }
};

struct VecsKind {
  using Element = SbVec3f;
  static constexpr const char* name = "vectors";
  static constexpr py::ssize_t width = 3;
  static const PiMeshDataSetMap<SbVec3f>& of(const PbMesh& mesh) { return PiMeshDataSets::of(mesh).vecs; }
  static void add(PbMesh& mesh, int index, const SbVec3f* data, PbMesh::DataBinding binding, const SbString& setName) {
    mesh.addVecsSet(index, data, binding, setName);
  }
  static int remove(PbMesh& mesh, int index) { return mesh.removeVecsSet(index); }
};

struct StringsKind {
  using Element = SbString;
  static constexpr const char* name = "strings";
  static const PiMeshDataSetMap<SbString>& of(const PbMesh& mesh) { return PiMeshDataSets::of(mesh).strings; }
  static int remove(PbMesh& mesh, int index) { return mesh.removeStringsSet(index); }
};

template <class Kind>
std::string keyOf(int index) {
  return std::string(Kind::name) + std::to_string(index);
}

// Null of a mesh that copies: that of a mesh node, and one-dimensional ones.
KeptArrays* keptBy(PbMesh& mesh) { return mesh.isDataDuplicated() ? nullptr : dynamic_cast<KeptArrays*>(&mesh); }

// "; it has 0 "height", 1 "slope"", the end of a sentence about a set that isn't there.
template <class Kind>
std::string setsOf(const PbMesh& mesh) {
  std::string sets;
  for (const auto& [index, data] : Kind::of(mesh))
    sets += (sets.empty() ? "; it has " : ", ") + std::to_string(index) + " \"" + data.name.getString() + "\"";
  return sets.empty() ? "; it has none" : sets;
}

// The index that a set has or would have, which is called by its index or its name.
template <class Kind>
int anyIndexOf(const PbMesh& mesh, py::handle set) {
  const std::string kind = std::string("set of ") + Kind::name;
  if (py::isinstance<py::str>(set)) {
    for (const auto& [index, data] : Kind::of(mesh))
      if (py::str(data.name.getString()).equal(set)) return index;
    throw py::key_error("the mesh has no " + kind + " called \"" + textOf(set, "the name of a set") + "\"" +
                        setsOf<Kind>(mesh));
  }
  const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(set.ptr()));
  if (!number) {
    PyErr_Clear();
    throw py::type_error("a " + kind + " is called by its name or its index, not " + kindOf(set));
  }
  int overflow = 0;
  const long long index = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
  if (overflow != 0 || index != static_cast<int>(index))
    throw py::key_error("the mesh has no " + kind + " with the index " + py::cast<std::string>(py::str(number)) +
                        setsOf<Kind>(mesh));
  return static_cast<int>(index);
}

// The index of a set that is there.
template <class Kind>
int indexOf(const PbMesh& mesh, py::handle set) {
  const int index = anyIndexOf<Kind>(mesh, set);
  if (!Kind::of(mesh).find(index))
    throw py::key_error("the mesh has no set of " + std::string(Kind::name) + " with the index " +
                        std::to_string(index) + setsOf<Kind>(mesh));
  return index;
}

template <class Kind>
int indexFor(const PbMesh& mesh, const std::string& name) {
  int next = 0;
  for (const auto& [index, data] : Kind::of(mesh)) {
    if (data.name == name.c_str()) return index;
    next = std::max(next, index + 1);
  }
  return next;
}

template <class Kind>
py::dict namesOf(const PbMesh& mesh) {
  py::dict names;
  for (const auto& [index, data] : Kind::of(mesh)) names[py::int_(index)] = data.name.getString();
  return names;
}

std::string sizesOf(const PbMesh& mesh) {
  return std::to_string(mesh.getNumNodes()) + " nodes and " + std::to_string(mesh.getNumCells()) + " cells";
}

py::ssize_t numOf(const PbMesh& mesh, PbMesh::DataBinding binding) {
  return binding == PbMesh::PER_CELL ? mesh.getNumCells() : mesh.getNumNodes();
}

// The shapes that an array with one element for each node or cell may have beside a single row.
std::vector<py::ssize_t> shapeOf(const PbMesh& mesh, PbMesh::DataBinding binding) {
  const int less = binding == PbMesh::PER_CELL ? 1 : 0;
  if (const auto* grid = dynamic_cast<const PbGrid2D*>(&mesh)) {
    int x, y;
    grid->getDim(x, y);
    return {x - less, y - less};
  }
  if (const auto* grid = dynamic_cast<const PbGrid3D*>(&mesh)) {
    int x, y, z;
    grid->getDim(x, y, z);
    return {x - less, y - less, z - less};
  }
  return {numOf(mesh, binding)};
}

// What a set belongs to: as told, else as its number of elements tells.
PbMesh::DataBinding bindingFor(const PbMesh& mesh, py::handle binding, py::ssize_t count, const char* what) {
  if (!binding.is_none()) {
    if (!py::isinstance<PbMesh::DataBinding>(binding))
      throw py::type_error("the binding must be PbMesh.PER_NODE or PbMesh.PER_CELL, not " + kindOf(binding));
    return py::cast<PbMesh::DataBinding>(binding);
  }
  if (count == mesh.getNumNodes()) return PbMesh::PER_NODE;
  if (count == mesh.getNumCells()) return PbMesh::PER_CELL;
  throw py::value_error(std::string(what) + " are " + std::to_string(count) + ", but the mesh has " + sizesOf(mesh));
}

// How many elements an array has, of which those of vectors have a last axis of their own.
py::ssize_t countIn(const FloatArray& numbers, py::ssize_t width) {
  const bool isSplit = width > 1 && numbers.ndim() > 1 && numbers.shape(numbers.ndim() - 1) > 0;
  return isSplit ? numbers.size() / numbers.shape(numbers.ndim() - 1) : numbers.size() / width;
}

void checkNotEmpty(const PbMesh& mesh, PbMesh::DataBinding binding) {
  if (numOf(mesh, binding) == 0)
    throw py::value_error("the mesh is without " + std::string(binding == PbMesh::PER_CELL ? "cells" : "nodes") +
                          ": give it its geometry before its data sets");
}

template <class Kind>
FloatArray elementsOf(const PbMesh& mesh, const FloatArray& given, PbMesh::DataBinding binding) {
  const std::vector<py::ssize_t> shape = shapeOf(mesh, binding);
  if constexpr (Kind::width == 1) {
    return floatsOf(given, "values", shape);
  } else {
    const py::ssize_t last = given.ndim() > 1 ? given.shape(given.ndim() - 1) : 0;
    const py::ssize_t num = numOf(mesh, binding);
    const bool isRow = given.ndim() == 2 && given.shape(0) == num;
    const bool isGrid = given.ndim() == static_cast<py::ssize_t>(shape.size()) + 1 &&
                        std::equal(shape.begin(), shape.end(), given.shape());
    if ((last != 2 && last != 3) || !(isRow || isGrid))
      throw py::value_error("vectors must be " + std::to_string(num) + " x 3 numbers, or as many x 2");
    if (last == 3) return given;
    FloatArray whole(std::vector<py::ssize_t>{num, 3});
    for (py::ssize_t n = 0; n < num; ++n) {
      float* vector = whole.mutable_data(n, 0);
      vector[0] = given.data()[2 * n];
      vector[1] = given.data()[2 * n + 1];
      vector[2] = 0;
    }
    return whole;
  }
}

template <class Kind>
void addSet(PbMesh& mesh, int index, py::handle numbers, const std::string& name, py::handle givenBinding) {
  KeptArrays* kept = keptBy(mesh);
  const FloatArray given = floatsOf(numbers, Kind::name, kept && kept->copies);
  const PbMesh::DataBinding binding = bindingFor(mesh, givenBinding, countIn(given, Kind::width), Kind::name);
  checkNotEmpty(mesh, binding);
  FloatArray elements = elementsOf<Kind>(mesh, given, binding);
  Kind::add(mesh, index, reinterpret_cast<const typename Kind::Element*>(elements.data()), binding, name.c_str());
  // Only now the array of an earlier set with this index may go.
  if (kept) kept->arrays[keyOf<Kind>(index)] = std::move(elements);
}

void addStrings(PbMesh& mesh, int index, const std::vector<std::string>& strings, const std::string& name) {
  checkNotEmpty(mesh, PbMesh::PER_NODE);
  if (static_cast<py::ssize_t>(strings.size()) != mesh.getNumNodes())
    throw py::value_error("strings are " + std::to_string(strings.size()) + ", but the mesh has " + sizesOf(mesh));
  auto elements = std::make_unique<std::vector<SbString>>();
  for (const std::string& text : strings) elements->push_back(text.c_str());
  mesh.addStringsSet(index, elements->data(), name.c_str());
  if (KeptArrays* kept = keptBy(mesh))
    kept->arrays[keyOf<StringsKind>(index)] =
        py::capsule(elements.release(), [](void* held) { delete static_cast<std::vector<SbString>*>(held); });
}

// The array that a set was made of, for changes in place; else a copy of the set.
template <class Kind>
py::object arrayOf(PbMesh& mesh, py::handle set) {
  const int index = indexOf<Kind>(mesh, set);
  const auto* data = Kind::of(mesh).find(index);
  if (const KeptArrays* kept = keptBy(mesh)) {
    const auto found = kept->arrays.find(keyOf<Kind>(index));
    if (found != kept->arrays.end() &&
        py::cast<FloatArray>(found->second).data() == reinterpret_cast<const float*>(data->data.get()))
      return found->second;
  }
  std::vector<py::ssize_t> shape = {data->data.getNum()};
  if constexpr (Kind::width > 1) shape.push_back(Kind::width);
  return FloatArray(shape, reinterpret_cast<const float*>(data->data.get()));
}

std::vector<std::string> stringsOf(PbMesh& mesh, py::handle set) {
  const auto* data = StringsKind::of(mesh).find(indexOf<StringsKind>(mesh, set));
  std::vector<std::string> strings;
  strings.reserve(static_cast<std::size_t>(data->data.getNum()));
  for (int n = 0; n < data->data.getNum(); ++n) strings.emplace_back(data->data[n].getString());
  return strings;
}

template <class Kind>
void removeSet(PbMesh& mesh, py::handle set) {
  const int index = indexOf<Kind>(mesh, set);
  Kind::remove(mesh, index);
  if (KeptArrays* kept = keptBy(mesh)) kept->arrays.erase(keyOf<Kind>(index));
}

// Stores every set anew, so that caches of what was in its array are forgotten.
template <class Kind>
void announceSets(PbMesh& mesh) {
  std::vector<std::pair<int, const PbMeshDataSet<typename Kind::Element>*>> sets;
  for (const auto& [index, data] : Kind::of(mesh)) sets.emplace_back(index, &data);
  for (const auto& [index, data] : sets) {
    const SbString name = data->name;
    Kind::add(mesh, index, data->data.get(), data->binding, name);
  }
}

void touch(PbMesh& mesh) {
  if (KeptArrays* kept = keptBy(mesh)) {
    kept->applyTo(mesh);
    announceSets<ValuesKind>(mesh);
    announceSets<VecsKind>(mesh);
  }
  mesh.touch();
}

template <class Mesh>
py::object extreme(int (Mesh::*ask)(int, float&) const, const PbMesh& mesh, int index) {
  float value = 0;
  return (mesh.*ask)(index, value) ? py::object(py::float_(value)) : py::none();
}

// ---- Places ---------------------------------------------------------------------------------------------------------

// Where a point is in a mesh.
struct Location {
  py::object mesh;
  int cell;
  SbVec3f pcoord;
  std::vector<int> nodes;
  std::vector<float> weights;

  py::object value(py::handle set) const {
    auto& all = py::cast<PbMesh&>(mesh);
    const auto* data = ValuesKind::of(all).find(indexOf<ValuesKind>(all, set));
    if (data->binding == PbMesh::PER_CELL)
      return cell < data->data.getNum() ? py::object(py::float_(data->data[cell])) : py::none();
    float sum = 0;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      if (nodes[n] >= data->data.getNum()) return py::none();
      sum += weights[n] * data->data[nodes[n]];
    }
    return py::float_(sum);
  }
  py::object vector(py::handle set) const {
    auto& all = py::cast<PbMesh&>(mesh);
    const auto* data = VecsKind::of(all).find(indexOf<VecsKind>(all, set));
    if (data->binding == PbMesh::PER_CELL)
      return cell < data->data.getNum() ? py::object(tupleOf(data->data[cell])) : py::none();
    SbVec3f sum(0, 0, 0);
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      if (nodes[n] >= data->data.getNum()) return py::none();
      sum += data->data[nodes[n]] * weights[n];
    }
    return tupleOf(sum);
  }
};

// A point of two numbers is looked for as seen from above, whatever the heights of a surface.
const PbMesh& meshToSearch(PbMesh& mesh, py::handle place) {
  const auto* surface = dynamic_cast<const PbMesh2D*>(&mesh);
  if (!surface || !surface->getZcoord() || py::len(place) != 2) return mesh;
  auto* kept = dynamic_cast<KeptArrays*>(&mesh);
  if (!kept) throw py::value_error("give a z, too: the mesh of a node is not searched from above");
  return kept->flat();
}

py::object locate(const py::object& self, py::handle place, float tolerance) {
  const SbVec3f point = pointOf(place, "the point");
  const PbMesh& mesh = meshToSearch(py::cast<PbMesh&>(self), place);
  SbVec3f pcoord;
  const PbCell* cell = mesh.findContainingCell(point, tolerance, pcoord);
  if (!cell) return py::none();
  std::vector<float> weights(static_cast<std::size_t>(std::max(8, cell->getNumNodes())));
  cell->getWeight(pcoord, weights.data());
  weights.resize(static_cast<std::size_t>(cell->getNumNodes()));
  const int* nodes = cell->getNodeIndexPtr();
  return py::cast(Location{self, cell->getIndex(), pcoord, {nodes, nodes + cell->getNumNodes()}, std::move(weights)});
}

py::object boxOf(const PbMesh& mesh) {
  const SbBox3f box = mesh.getBoundingBox();
  return box.isEmpty() ? py::object(py::none()) : py::make_tuple(tupleOf(box.getMin()), tupleOf(box.getMax()));
}

FloatArray coordinatesOf(const PbMesh& mesh) {
  FloatArray all(std::vector<py::ssize_t>{mesh.getNumNodes(), 3});
  for (int n = 0; n < mesh.getNumNodes(); ++n) {
    const SbVec3f node = mesh.getNodeCoord(n);
    std::copy(node.getValue(), node.getValue() + 3, all.mutable_data(n, 0));
  }
  return all;
}

SbVec3f coordinateOf(const PbMesh& mesh, int node) {
  if (node < 0 || node >= mesh.getNumNodes())
    throw py::index_error("there is no node " + std::to_string(node) + ": the mesh has " + sizesOf(mesh));
  return mesh.getNodeCoord(node);
}

py::object cellNodesOf(const PbMesh& mesh, int index) {
  if (index < 0 || index >= mesh.getNumCells())
    throw py::index_error("there is no cell " + std::to_string(index) + ": the mesh has " + sizesOf(mesh));
  const PbCell* cell = mesh.getCell(index);
  if (!cell) return py::none();
  py::tuple nodes(cell->getNumNodes());
  for (int n = 0; n < cell->getNumNodes(); ++n) nodes[static_cast<std::size_t>(n)] = cell->getNodeIndex(n);
  return nodes;
}

std::string reprOf(const py::object& self) {
  const auto& mesh = py::cast<const PbMesh&>(self);
  std::string text = "<ormelle." + py::cast<std::string>(py::type::of(self).attr("__name__")) + ": " + sizesOf(mesh);
  for (const auto& [index, data] : ValuesKind::of(mesh))
    text += std::string(", values ") + std::to_string(index) + " \"" + data.name.getString() + "\"";
  for (const auto& [index, data] : VecsKind::of(mesh))
    text += std::string(", vectors ") + std::to_string(index) + " \"" + data.name.getString() + "\"";
  return text + ">";
}

}  // namespace

void addMeshes(py::module_& module) {
  py::class_<Location>(module, "Location", "Where a point is in a mesh.")
      .def_readonly("cell", &Location::cell, "The index of the cell that holds the point.")
      .def_property_readonly(
          "pcoord", [](const Location& self) { return tupleOf(self.pcoord); },
          "The place in the cell, each coordinate from 0 to 1.")
      .def_readonly("nodes", &Location::nodes, "The nodes of the cell.")
      .def_readonly("weights", &Location::weights, "What each node counts at the point; they sum to 1.")
      .def("value", &Location::value, "set"_a, "The value of a set, by name or index, interpolated at the point.")
      .def("vector", &Location::vector, "set"_a, "The vector of a set, by name or index, interpolated at the point.");

  py::class_<PbMesh, PbBase> mesh(module, "PbMesh");
  py::enum_<PbMesh::DataBinding>(mesh, "DataBinding")
      .value("PER_CELL", PbMesh::PER_CELL)
      .value("PER_NODE", PbMesh::PER_NODE)
      .export_values();
  mesh.def("getNumNodes", &PbMesh::getNumNodes)
      .def("getNumCells", &PbMesh::getNumCells)
      .def("isEmpty", [](const PbMesh& self) { return self.isEmpty() != 0; })
      .def(
          "getNodeCoord", [](const PbMesh& self, int node) { return tupleOf(coordinateOf(self, node)); }, "node"_a)
      .def("getBoundingBox", &boxOf, "The lowest and the highest corner; None of an empty mesh.")
      .def("getVolume", &PbMesh::getVolume)
      .def("getArea", &PbMesh::getArea)
      .def("getGeometryId", &PbMesh::getGeometryId)
      .def("getTopologyId", &PbMesh::getTopologyId)
      .def("coordinates", &coordinatesOf, "All nodes as a new array of shape (nodes, 3).")
      .def("cellNodes", &cellNodesOf, "cell"_a, "The nodes of a cell; None of a cell that is no cell of its mesh.")
      .def("locate", &locate, "point"_a, "tolerance"_a = 0.0F,
           "The cell that holds a point; None if there is none. A point of two numbers is looked for as seen from "
           "above.")

      .def("addValuesSet", &addSet<ValuesKind>, "index"_a, "values"_a, "name"_a = "", "binding"_a = py::none(),
           "One value for each node or cell. Numbers of 4 bytes in C order are shared, not copied.")
      .def("addVecsSet", &addSet<VecsKind>, "index"_a, "vectors"_a, "name"_a = "", "binding"_a = py::none())
      .def("addStringsSet", &addStrings, "index"_a, "strings"_a, "name"_a = "")
      .def("removeValuesSet", &removeSet<ValuesKind>, "set"_a)
      .def("removeVecsSet", &removeSet<VecsKind>, "set"_a)
      .def("removeStringsSet", &removeSet<StringsKind>, "set"_a)
      .def("getValuesSet", &arrayOf<ValuesKind>, "set"_a)
      .def("getVecsSet", &arrayOf<VecsKind>, "set"_a)
      .def("getStringsSet", &stringsOf, "set"_a)
      .def("getNumValuesSet", &PbMesh::getNumValuesSet)
      .def("getNumVecsSet", &PbMesh::getNumVecsSet)
      .def("getNumStringsSet", &PbMesh::getNumStringsSet)
      .def(
          "getValuesBinding",
          [](const PbMesh& self, py::handle set) { return self.getValuesBinding(anyIndexOf<ValuesKind>(self, set)); },
          "set"_a)
      .def(
          "getVecsBinding",
          [](const PbMesh& self, py::handle set) { return self.getVecsBinding(anyIndexOf<VecsKind>(self, set)); },
          "set"_a)
      .def(
          "getMinValuesSet",
          [](const PbMesh& self, py::handle set) {
            return extreme(&PbMesh::getMinValuesSet, self, anyIndexOf<ValuesKind>(self, set));
          },
          "set"_a, "The least value of a set, by name or index; None if it has no finite one.")
      .def(
          "getMaxValuesSet",
          [](const PbMesh& self, py::handle set) {
            return extreme(&PbMesh::getMaxValuesSet, self, anyIndexOf<ValuesKind>(self, set));
          },
          "set"_a)

      .def("values_index", &indexOf<ValuesKind>, "set"_a, "The index of a set of values that is called by its name.")
      .def("vectors_index", &indexOf<VecsKind>, "set"_a, "The index of a set of vectors that is called by its name.")
      .def("values", &arrayOf<ValuesKind>, "set"_a,
           "The array of a set of values, by name or index. Where it is shared, it may be changed in place; touch() "
           "tells the kits.")
      .def("vectors", &arrayOf<VecsKind>, "set"_a, "The array of a set of vectors, by name or index.")
      .def("strings", &stringsOf, "set"_a, "The strings of a set, by name or index.")
      .def(
          "set_values",
          [](PbMesh& self, const std::string& name, py::handle values, py::handle binding) {
            const int index = indexFor<ValuesKind>(self, name);
            addSet<ValuesKind>(self, index, values, name, binding);
            return index;
          },
          "name"_a, "values"_a, "binding"_a = py::none(),
          "Adds a set of values, or replaces the one of this name. Returns its index.")
      .def(
          "set_vectors",
          [](PbMesh& self, const std::string& name, py::handle vectors, py::handle binding) {
            const int index = indexFor<VecsKind>(self, name);
            addSet<VecsKind>(self, index, vectors, name, binding);
            return index;
          },
          "name"_a, "vectors"_a, "binding"_a = py::none(),
          "Adds a set of vectors, or replaces the one of this name. Returns its index.")
      .def(
          "set_strings",
          [](PbMesh& self, const std::string& name, const std::vector<std::string>& strings) {
            const int index = indexFor<StringsKind>(self, name);
            addStrings(self, index, strings, name);
            return index;
          },
          "name"_a, "strings"_a, "Adds a set of strings, or replaces the one of this name. Returns its index.")
      .def_property_readonly("value_names", &namesOf<ValuesKind>, "The names of the sets of values by index.")
      .def_property_readonly("vector_names", &namesOf<VecsKind>)
      .def_property_readonly("string_names", &namesOf<StringsKind>)
      .def("touch", &touch, "Says that the numbers in shared arrays were changed: everything is computed anew.")
      .def("_copyTo", &copyTo, "node"_a)
      .def("__repr__", &reprOf);

  const py::class_<PbMesh1D, PbMesh> mesh1D(module, "PbMesh1D");
  const py::class_<PbMesh2D, PbMesh> mesh2D(module, "PbMesh2D");
  py::class_<PbMesh3D, PbMesh>(module, "PbMesh3D").def("isCrossSectionOptimal", &PbMesh3D::isCrossSectionOptimal);
  py::class_<PbGrid2D, PbMesh2D>(module, "PbGrid2D")
      .def("getDim",
           [](const PbGrid2D& self) {
             int x, y;
             self.getDim(x, y);
             return std::pair(x, y);
           })
      .def("getNodeIndex", &PbGrid2D::getNodeIndex, "i"_a, "j"_a)
      .def("getCellIndex", &PbGrid2D::getCellIndex, "i"_a, "j"_a);
  py::class_<PbGrid3D, PbMesh3D>(module, "PbGrid3D")
      .def("getDim",
           [](const PbGrid3D& self) {
             int x, y, z;
             self.getDim(x, y, z);
             return std::tuple(x, y, z);
           })
      .def("getNodeIndex", &PbGrid3D::getNodeIndex, "i"_a, "j"_a, "k"_a)
      .def("getCellIndex", &PbGrid3D::getCellIndex, "i"_a, "j"_a, "k"_a);
}

}  // namespace python
