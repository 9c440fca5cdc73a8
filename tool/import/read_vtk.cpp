// VTK's own formats, by VTK's own readers: legacy files and XML files, serial, parallel and in blocks.

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkCompositeDataIterator.h>
#include <vtkCompositeDataSet.h>
#include <vtkDataArray.h>
#include <vtkDataSetAttributes.h>
#include <vtkFieldData.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkMatrix3x3.h>
#include <vtkOutputWindow.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkSmartPointer.h>
#include <vtkStringArray.h>
#include <vtkStructuredGrid.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLGenericDataObjectReader.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <map>

#include "Readers.h"
#include "read_vtk.h"
#include "read_vtk_guard.h"

namespace importer {

namespace {

// ---- What VTK has to say --------------------------------------------------------------------------------------------

// Keeps the first error.
class ErrorCatcher : public vtkOutputWindow {
 public:
  static ErrorCatcher* New() {
    auto* catcher = new ErrorCatcher;
    catcher->InitializeObjectBase();
    return catcher;
  }

  void DisplayText(const char*) override {}
  void DisplayErrorText(const char* text) override {
    if (m_first.empty() && text) m_first = text;
  }
  void DisplayWarningText(const char*) override {}
  void DisplayGenericWarningText(const char*) override {}
  void DisplayDebugText(const char*) override {}

  // "ERROR: In file, line 7\nvtkReader (0x5581): Words\n" as part of a sentence.
  std::string sentence() const {
    std::string text = m_first;
    const std::size_t object = text.find("): ");
    if (object != std::string::npos) text.erase(0, object + 3);
    std::string words;
    for (const char c : text) {
      if (c == ' ' || c == '\n' || c == '\t' || c == '\r') {
        if (!words.empty() && words.back() != ' ') words += ' ';
      } else {
        words += static_cast<unsigned char>(c) < 32 || c == 127 ? '?' : c;
      }
    }
    constexpr std::size_t kLongest = 300;
    if (words.size() > kLongest) words.resize(kLongest);
    while (!words.empty() && (words.back() == ' ' || words.back() == '.')) words.pop_back();
    return words.empty() ? "VTK can't read it" : "VTK can't read it: " + words;
  }
  bool hasError() const { return !m_first.empty(); }

 private:
  std::string m_first;
};

// ---- Data sets
// ------------------------------------------------------------------------------------------------------

constexpr int kHidden =
    vtkDataSetAttributes::HIDDENCELL | vtkDataSetAttributes::DUPLICATECELL | vtkDataSetAttributes::REFINEDCELL;

// What a name stands for where one array holds several values: the components of vectors and tensors.
std::string componentName(int component, int count) {
  static constexpr const char* kSix[] = {"xx", "yy", "zz", "xy", "yz", "xz"};
  static constexpr const char* kNine[] = {"xx", "xy", "xz", "yx", "yy", "yz", "zx", "zy", "zz"};
  if (count == 6) return kSix[component];
  if (count == 9) return kNine[component];
  return std::to_string(component);
}

std::vector<float> component(vtkDataArray* array, int index, Dataset& data) {
  std::vector<float> values;
  values.reserve(static_cast<std::size_t>(array->GetNumberOfTuples()));
  constexpr double kExact = 1 << 24;
  const bool isWhole = array->GetDataType() != VTK_FLOAT && array->GetDataType() != VTK_DOUBLE;
  bool isRounded = false, isTooLarge = false;
  for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i) {
    const double value = array->GetComponent(i, index);
    const float stored = toFloat(value);
    isRounded = isRounded || (isWhole && std::abs(value) > kExact && static_cast<double>(stored) != value);
    isTooLarge = isTooLarge || (std::isfinite(value) && std::isnan(stored));
    values.push_back(stored);
  }
  const std::string name = array->GetName() ? array->GetName() : "";
  if (isRounded) data.note("whole numbers of \"" + name + "\" beyond 16777216 were rounded");
  if (isTooLarge) data.note("values of \"" + name + "\" beyond 3.4e38 are undefined");
  return values;
}

void addArray(vtkDataArray* array, const std::string& name, Binding binding, Piece& piece, Dataset& data) {
  constexpr int kMostComponents = 64;
  const int count = array->GetNumberOfComponents();
  if (count == 1) {
    piece.scalars.push_back({name, binding, component(array, 0, data)});
  } else if (count == 2 || count == 3) {
    VectorSet& set = piece.vectors.emplace_back(VectorSet{name, binding, {}});
    set.values.reserve(static_cast<std::size_t>(array->GetNumberOfTuples()));
    for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i)
      set.values.push_back({toFloat(array->GetComponent(i, 0)), toFloat(array->GetComponent(i, 1)),
                            count == 3 ? toFloat(array->GetComponent(i, 2)) : 0.0F});
    if (count == 2) data.note("\"" + name + "\" has two values each and became vectors with z 0");
  } else if (count > kMostComponents) {
    data.note("\"" + name + "\" has " + std::to_string(count) + " values each and was left out");
  } else {
    for (int i = 0; i < count; ++i)
      piece.scalars.push_back({name + " " + componentName(i, count), binding, component(array, i, data)});
    data.note("\"" + name + "\" has " + std::to_string(count) + " values each, kept as a set for each of them");
  }
}

// Which arrays to take first: the one that the file names as its scalars; last, numbers that only name things.
std::vector<vtkAbstractArray*> sorted(vtkDataSetAttributes* attributes) {
  std::vector<vtkAbstractArray*> arrays, last;
  vtkAbstractArray* scalars = attributes->GetScalars();
  if (scalars) arrays.push_back(scalars);
  for (int i = 0; i < attributes->GetNumberOfArrays(); ++i) {
    vtkAbstractArray* array = attributes->GetAbstractArray(i);
    if (!array || array == scalars) continue;
    const bool isName = array == attributes->GetGlobalIds() || array == attributes->GetPedigreeIds();
    (isName ? last : arrays).push_back(array);
  }
  arrays.insert(arrays.end(), last.begin(), last.end());
  return arrays;
}

void addArrays(vtkDataSetAttributes* attributes, Binding binding, vtkIdType count, Piece& piece, Dataset& data) {
  int numUnnamed = 0;
  for (vtkAbstractArray* array : sorted(attributes)) {
    std::string name = array->GetName() ? array->GetName() : "";
    if (name == vtkDataSetAttributes::GhostArrayName()) continue;
    if (name.empty()) name = "values " + std::to_string(++numUnnamed);
    if (array->GetNumberOfTuples() != count) {
      data.note("\"" + name + "\" has " + std::to_string(array->GetNumberOfTuples()) + " values for " +
                std::to_string(count) + (binding == Binding::NODE ? " nodes" : " cells") + " and was left out");
      continue;
    }
    if (auto* numbers = vtkDataArray::SafeDownCast(array)) {
      addArray(numbers, name, binding, piece, data);
    } else if (auto* texts = vtkStringArray::SafeDownCast(array);
               texts && binding == Binding::NODE && texts->GetNumberOfComponents() == 1) {
      StringSet& set = piece.strings.emplace_back(StringSet{name, {}});
      for (vtkIdType i = 0; i < count; ++i) set.values.push_back(texts->GetValue(i));
    } else {
      data.note("\"" + name + "\" holds no numbers and was left out");
    }
  }
}

// Undefines values of what the file hides.
template <class IsHidden>
void undefine(Piece& piece, Binding binding, IsHidden isHidden) {
  constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
  for (ScalarSet& set : piece.scalars)
    if (set.binding == binding)
      for (std::size_t i = 0; i < set.values.size(); ++i)
        if (isHidden(i)) set.values[i] = kNone;
  for (VectorSet& set : piece.vectors)
    if (set.binding == binding)
      for (std::size_t i = 0; i < set.values.size(); ++i)
        if (isHidden(i)) set.values[i] = {kNone, kNone, kNone};
}

const unsigned char* ghostsOf(vtkDataSetAttributes* attributes, vtkIdType count) {
  auto* ghosts =
      vtkUnsignedCharArray::SafeDownCast(attributes->GetAbstractArray(vtkDataSetAttributes::GhostArrayName()));
  return ghosts && ghosts->GetNumberOfTuples() == count && ghosts->GetNumberOfComponents() == 1 && count > 0
             ? ghosts->GetPointer(0)
             : nullptr;
}

// ---- Grids ----------------------------------------------------------------------------------------------------------

// Values of hidden cells are undefined, and those of nodes round which all cells are hidden.
void hideInGrid(vtkDataSet* grid, Piece& piece, Dataset& data) {
  const vtkIdType numNodes = grid->GetNumberOfPoints(), numCells = grid->GetNumberOfCells();
  const unsigned char* nodes = ghostsOf(grid->GetPointData(), numNodes);
  const unsigned char* cells = ghostsOf(grid->GetCellData(), numCells);
  std::size_t numHidden = 0;
  std::vector<bool> isHidden(static_cast<std::size_t>(numNodes));
  if (nodes)
    for (vtkIdType i = 0; i < numNodes; ++i)
      isHidden[static_cast<std::size_t>(i)] = (nodes[i] & vtkDataSetAttributes::HIDDENPOINT) != 0;
  const auto x = static_cast<std::size_t>(piece.dims[0]), y = static_cast<std::size_t>(piece.dims[1]);
  if (cells) {
    std::vector<bool> isSeen(isHidden.size());
    std::array<std::size_t, 3> counts{};
    for (std::size_t axis = 0; axis < 3; ++axis)
      counts[axis] = static_cast<std::size_t>(std::max(1, piece.dims[axis] - 1));
    std::size_t cell = 0;
    for (std::size_t k = 0; k < counts[2]; ++k)
      for (std::size_t j = 0; j < counts[1]; ++j)
        for (std::size_t i = 0; i < counts[0]; ++i, ++cell) {
          if (cells[cell] & (vtkDataSetAttributes::HIDDENCELL | vtkDataSetAttributes::REFINEDCELL)) {
            ++numHidden;
            continue;
          }
          for (std::size_t corner = 0; corner < 8; ++corner) {
            const std::size_t a = i + (corner & 1), b = j + (corner >> 1 & 1), c = k + (corner >> 2);
            const std::size_t node = a + x * (b + y * c);
            if (a < x && b < y && node < isSeen.size()) isSeen[node] = true;
          }
        }
    for (std::size_t i = 0; i < isSeen.size(); ++i) isHidden[i] = isHidden[i] || !isSeen[i];
    undefine(piece, Binding::CELL, [&](std::size_t i) {
      return (cells[i] & (vtkDataSetAttributes::HIDDENCELL | vtkDataSetAttributes::REFINEDCELL)) != 0;
    });
  }
  const auto numUndefined = static_cast<std::size_t>(std::count(isHidden.begin(), isHidden.end(), true));
  if (numUndefined > 0) undefine(piece, Binding::NODE, [&](std::size_t i) { return isHidden[i]; });
  if (numHidden + numUndefined > 0)
    data.note("values of " + counted(numHidden, "hidden cell", "hidden cells") + " and " +
              counted(numUndefined, "hidden node", "hidden nodes") + " are undefined");
}

std::vector<double> numbersOf(vtkDataArray* array) {
  std::vector<double> numbers;
  for (vtkIdType i = 0; array && i < array->GetNumberOfTuples(); ++i) numbers.push_back(array->GetComponent(i, 0));
  return numbers;
}

void takePoints(vtkDataSet* set, Piece& piece) {
  const vtkIdType count = set->GetNumberOfPoints();
  if (count > std::numeric_limits<int>::max()) throw Failure("it has more than 2147483647 nodes");
  piece.points.reserve(static_cast<std::size_t>(count));
  Point point{};
  for (vtkIdType i = 0; i < count; ++i) {
    set->GetPoint(i, point.data());
    piece.points.push_back(point);
  }
}

void takeGrid(vtkDataSet* set, Piece& piece) {
  if (auto* image = vtkImageData::SafeDownCast(set)) {
    image->GetDimensions(piece.dims.data());
    if (image->GetNumberOfPoints() == 0) return;
    image->GetPoint(0, piece.origin.data());
    image->GetSpacing(piece.spacing.data());
    piece.kind = PieceKind::REGULAR_GRID;
    if (!image->GetDirectionMatrix()->IsIdentity()) {  // turned: then each node has its own coordinates
      piece.kind = PieceKind::CURVILINEAR_GRID;
      takePoints(set, piece);
    }
  } else if (auto* rectilinear = vtkRectilinearGrid::SafeDownCast(set)) {
    rectilinear->GetDimensions(piece.dims.data());
    piece.kind = PieceKind::RECTILINEAR_GRID;
    piece.axes = {numbersOf(rectilinear->GetXCoordinates()), numbersOf(rectilinear->GetYCoordinates()),
                  numbersOf(rectilinear->GetZCoordinates())};
  } else if (auto* curvilinear = vtkStructuredGrid::SafeDownCast(set)) {
    curvilinear->GetDimensions(piece.dims.data());
    piece.kind = PieceKind::CURVILINEAR_GRID;
    takePoints(set, piece);
  }
}

// ---- Cells ----------------------------------------------------------------------------------------------------------

// Takes cells into a piece and counts what can't be kept as it is.
class CellTaker {
 public:
  CellTaker(Piece& piece, Dataset& data) : m_piece(piece), m_data(data) {}

  // `source` is the number of the cell in the file.
  void take(int type, const vtkIdType* nodes, vtkIdType count, int source) {
    m_nodes.clear();
    for (vtkIdType i = 0; i < count; ++i) {
      if (nodes[i] < 0 || nodes[i] >= static_cast<vtkIdType>(m_piece.points.size()))
        throw Failure("a cell refers to node " + std::to_string(nodes[i]) + " of " +
                      std::to_string(m_piece.points.size()));
      m_nodes.push_back(static_cast<int>(nodes[i]));
    }
    m_source = source;
    takeNodes(type);
  }

  void takeNotes() {
    if (m_numCurved > 0)
      m_data.note(counted(m_numCurved, "cell of higher order was", "cells of higher order were") +
                  " cut to the corners");
    if (m_numPrisms > 0) m_data.note(counted(m_numPrisms, "prism", "prisms") + " became wedges and hexahedra");
    if (m_numShort > 0) m_data.note(counted(m_numShort, "cell", "cells") + " with too few nodes were left out");
    for (const auto& [type, count] : m_unknown)
      m_data.note(
          counted(count, "cell", "cells") + " of " +
          (type == VTK_POLYHEDRON ? std::string("many facets (polyhedra)") : "VTK's type " + std::to_string(type)) +
          " were left out");
  }

 private:
  void add(CellKind kind, std::initializer_list<std::size_t> corners) {
    std::array<int, 8> nodes{};
    std::size_t count = 0;
    for (const std::size_t corner : corners) {
      if (corner >= m_nodes.size()) {
        ++m_numShort;
        return;
      }
      nodes[count++] = m_nodes[corner];
    }
    m_piece.addCell(kind, nodes.data(), m_source);
  }

  void addCurved(CellKind kind, std::initializer_list<std::size_t> corners) {
    ++m_numCurved;
    add(kind, corners);
  }

  void addLines() {
    for (std::size_t i = 0; i + 1 < m_nodes.size(); ++i) add(CellKind::LINE, {i, i + 1});
  }

  void takeNodes(int type) {
    const std::size_t count = m_nodes.size();
    switch (type) {
      case VTK_EMPTY_CELL:
        break;
      case VTK_VERTEX:
      case VTK_POLY_VERTEX:
        for (std::size_t i = 0; i < count; ++i) add(CellKind::VERTEX, {i});
        break;
      case VTK_LINE:
      case VTK_POLY_LINE:
        addLines();
        break;
      case VTK_TRIANGLE:
        add(CellKind::TRIANGLE, {0, 1, 2});
        break;
      case VTK_TRIANGLE_STRIP:
        for (std::size_t i = 0; i + 2 < count; ++i) add(CellKind::TRIANGLE, {i, i + 1 + i % 2, i + 2 - i % 2});
        break;
      case VTK_POLYGON:
        if (count < 3) ++m_numShort;
        m_piece.addPolygon(m_nodes.data(), static_cast<int>(count), m_source);
        break;
      case VTK_PIXEL:
        add(CellKind::QUADRANGLE, {0, 1, 3, 2});
        break;
      case VTK_QUAD:
        add(CellKind::QUADRANGLE, {0, 1, 2, 3});
        break;
      case VTK_TETRA:
        add(CellKind::TETRAHEDRON, {0, 1, 2, 3});
        break;
      case VTK_VOXEL:
        add(CellKind::HEXAHEDRON, {0, 1, 3, 2, 4, 5, 7, 6});
        break;
      case VTK_HEXAHEDRON:
        add(CellKind::HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7});
        break;
      case VTK_WEDGE:
        add(CellKind::WEDGE, {0, 1, 2, 3, 4, 5});
        break;
      case VTK_PYRAMID:
        add(CellKind::PYRAMID, {0, 1, 2, 3, 4});
        break;
      case VTK_PENTAGONAL_PRISM:
        ++m_numPrisms;
        add(CellKind::WEDGE, {0, 1, 2, 5, 6, 7});
        add(CellKind::HEXAHEDRON, {0, 2, 3, 4, 5, 7, 8, 9});
        break;
      case VTK_HEXAGONAL_PRISM:
        ++m_numPrisms;
        add(CellKind::HEXAHEDRON, {0, 1, 2, 3, 6, 7, 8, 9});
        add(CellKind::HEXAHEDRON, {0, 3, 4, 5, 6, 9, 10, 11});
        break;
      case VTK_QUADRATIC_POLYGON:
        ++m_numCurved;
        m_piece.addPolygon(m_nodes.data(), static_cast<int>(count / 2), m_source);
        break;
      default:
        takeCurved(type);
    }
  }

  // Their corners come first.
  void takeCurved(int type) {
    switch (type) {
      case VTK_QUADRATIC_EDGE:
      case VTK_CUBIC_LINE:
      case VTK_LAGRANGE_CURVE:
      case VTK_BEZIER_CURVE:
        return addCurved(CellKind::LINE, {0, 1});
      case VTK_QUADRATIC_TRIANGLE:
      case VTK_BIQUADRATIC_TRIANGLE:
      case VTK_LAGRANGE_TRIANGLE:
      case VTK_BEZIER_TRIANGLE:
        return addCurved(CellKind::TRIANGLE, {0, 1, 2});
      case VTK_QUADRATIC_QUAD:
      case VTK_BIQUADRATIC_QUAD:
      case VTK_QUADRATIC_LINEAR_QUAD:
      case VTK_LAGRANGE_QUADRILATERAL:
      case VTK_BEZIER_QUADRILATERAL:
        return addCurved(CellKind::QUADRANGLE, {0, 1, 2, 3});
      case VTK_QUADRATIC_TETRA:
      case VTK_LAGRANGE_TETRAHEDRON:
      case VTK_BEZIER_TETRAHEDRON:
        return addCurved(CellKind::TETRAHEDRON, {0, 1, 2, 3});
      case VTK_QUADRATIC_HEXAHEDRON:
      case VTK_TRIQUADRATIC_HEXAHEDRON:
      case VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON:
      case VTK_LAGRANGE_HEXAHEDRON:
      case VTK_BEZIER_HEXAHEDRON:
        return addCurved(CellKind::HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7});
      case VTK_QUADRATIC_WEDGE:
      case VTK_QUADRATIC_LINEAR_WEDGE:
      case VTK_BIQUADRATIC_QUADRATIC_WEDGE:
      case VTK_LAGRANGE_WEDGE:
      case VTK_BEZIER_WEDGE:
        return addCurved(CellKind::WEDGE, {0, 1, 2, 3, 4, 5});
      case VTK_QUADRATIC_PYRAMID:
      case VTK_TRIQUADRATIC_PYRAMID:
      case VTK_LAGRANGE_PYRAMID:
      case VTK_BEZIER_PYRAMID:
        return addCurved(CellKind::PYRAMID, {0, 1, 2, 3, 4});
      default:
        ++m_unknown[type];
    }
  }

  Piece& m_piece;
  Dataset& m_data;
  std::vector<int> m_nodes;
  int m_source = 0;
  std::size_t m_numCurved = 0, m_numPrisms = 0, m_numShort = 0;
  std::map<int, std::size_t> m_unknown;
};

// Calls take(type, nodes, count) for each cell that isn't hidden, with its number in the file.
class CellWalk {
 public:
  CellWalk(vtkDataSet* set, CellTaker& taker)
      : m_ghosts(ghostsOf(set->GetCellData(), set->GetNumberOfCells())), m_taker(taker) {}

  void walk(vtkCellArray* cells, int type) {
    walkTyped(cells, [type](vtkIdType) { return type; });
  }
  template <class TypeOf>
  void walkTyped(vtkCellArray* cells, TypeOf typeOf) {
    for (vtkIdType cell = 0; cells && cell < cells->GetNumberOfCells(); ++cell, ++m_next) {
      if (m_ghosts && (m_ghosts[m_next] & kHidden)) {
        ++m_numHidden;
        continue;
      }
      vtkIdType count = 0;
      const vtkIdType* nodes = nullptr;
      cells->GetCellAtId(cell, count, nodes);
      m_taker.take(typeOf(cell), nodes, count, m_next);
    }
  }
  std::size_t numHidden() const { return m_numHidden; }

 private:
  const unsigned char* m_ghosts;
  CellTaker& m_taker;
  int m_next = 0;
  std::size_t m_numHidden = 0;
};

void takeCells(vtkDataSet* set, Piece& piece, Dataset& data) {
  piece.kind = PieceKind::CELLS;
  takePoints(set, piece);
  if (set->GetNumberOfCells() > std::numeric_limits<int>::max()) throw Failure("it has more than 2147483647 cells");
  CellTaker taker(piece, data);
  CellWalk walk(set, taker);
  if (auto* surface = vtkPolyData::SafeDownCast(set)) {
    walk.walk(surface->GetVerts(), VTK_POLY_VERTEX);
    walk.walk(surface->GetLines(), VTK_POLY_LINE);
    walk.walk(surface->GetPolys(), VTK_POLYGON);
    walk.walk(surface->GetStrips(), VTK_TRIANGLE_STRIP);
  } else if (auto* cells = vtkUnstructuredGrid::SafeDownCast(set)) {
    vtkUnsignedCharArray* types = cells->GetCellTypesArray();
    if (cells->GetNumberOfCells() > 0 && (!types || types->GetNumberOfTuples() < cells->GetNumberOfCells()))
      throw Failure("it has not a type for each cell");
    walk.walkTyped(cells->GetCells(), [types](vtkIdType cell) { return static_cast<int>(types->GetValue(cell)); });
  }
  taker.takeNotes();
  if (walk.numHidden() > 0)
    data.note(counted(walk.numHidden(), "hidden or doubled cell was", "hidden or doubled cells were") + " left out");
  // A cell without a part that could be kept has values all the same; without cells there is nothing to have them.
  if (piece.cellKinds.empty()) {
    std::erase_if(piece.scalars, [](const ScalarSet& scalars) { return scalars.binding == Binding::CELL; });
    std::erase_if(piece.vectors, [](const VectorSet& vectors) { return vectors.binding == Binding::CELL; });
  }
  if (const unsigned char* nodes = ghostsOf(set->GetPointData(), set->GetNumberOfPoints()))
    undefine(piece, Binding::NODE,
             [nodes](std::size_t i) { return (nodes[i] & vtkDataSetAttributes::HIDDENPOINT) != 0; });
}

// ---- Files ----------------------------------------------------------------------------------------------------------

void takeSet(vtkDataSet* set, const std::string& name, Dataset& data) {
  if (set->GetNumberOfPoints() == 0) {
    data.note(name + " has no nodes and was left out");
    return;
  }
  Piece piece;
  piece.name = name;
  addArrays(set->GetPointData(), Binding::NODE, set->GetNumberOfPoints(), piece, data);
  addArrays(set->GetCellData(), Binding::CELL, set->GetNumberOfCells(), piece, data);
  if (vtkPolyData::SafeDownCast(set) || vtkUnstructuredGrid::SafeDownCast(set)) {
    takeCells(set, piece, data);
  } else {
    takeGrid(set, piece);
    hideInGrid(set, piece, data);
  }
  vtkFieldData* whole = set->GetFieldData();
  for (int i = 0; whole && i < whole->GetNumberOfArrays(); ++i) {
    vtkAbstractArray* array = whole->GetAbstractArray(i);
    const char* field = array ? array->GetName() : nullptr;
    data.note(std::string("\"") + (field ? field : "field data") + "\" belongs to the whole and was left out");
  }
  data.pieces.push_back(std::move(piece));
}

std::string nameOfBlock(vtkCompositeDataIterator* block, const std::string& name, std::size_t number) {
  const char* own =
      block->HasCurrentMetaData() ? block->GetCurrentMetaData()->Get(vtkCompositeDataSet::NAME()) : nullptr;
  return own && *own ? own : name + " " + std::to_string(number);
}

}  // namespace

Dataset readByVtk(vtkAlgorithm& reader, const std::string& file) {
  const auto errors = vtkSmartPointer<ErrorCatcher>::New();
  vtkOutputWindow::SetInstance(errors);
  reader.Update();
  vtkDataObject* output = reader.GetOutputDataObject(0);
  if (errors->hasError()) throw Failure(errors->sentence());
  if (!output) throw Failure("VTK can't read it");

  Dataset data;
  const std::string name = std::filesystem::path(file).stem().string();
  if (auto* set = vtkDataSet::SafeDownCast(output)) {
    takeSet(set, name, data);
  } else if (auto* blocks = vtkCompositeDataSet::SafeDownCast(output)) {
    const auto block = vtkSmartPointer<vtkCompositeDataIterator>::Take(blocks->NewIterator());
    std::size_t number = 0;
    for (block->InitTraversal(); !block->IsDoneWithTraversal(); block->GoToNextItem()) {
      ++number;
      if (auto* part = vtkDataSet::SafeDownCast(block->GetCurrentDataObject()))
        takeSet(part, nameOfBlock(block, name, number), data);
    }
  } else {
    throw Failure("it holds no mesh but a " + std::string(output->GetClassName()));
  }
  if (data.pieces.empty()) throw Failure("there is no data in it");
  return data;
}

Dataset readVtkLegacy(const std::string& file) {
  refuseBrokenText(file);
  const auto reader = vtkSmartPointer<vtkGenericDataObjectReader>::New();
  reader->ReadAllScalarsOn();
  reader->ReadAllVectorsOn();
  reader->ReadAllNormalsOn();
  reader->ReadAllTensorsOn();
  reader->ReadAllColorScalarsOn();
  reader->ReadAllTCoordsOn();
  reader->ReadAllFieldsOn();
  reader->SetFileName(file.c_str());
  return readByVtk(*reader, file);
}

Dataset readVtkXml(const std::string& file) {
  refuseLies(file);
  const auto reader = vtkSmartPointer<vtkXMLGenericDataObjectReader>::New();
  reader->SetFileName(file.c_str());
  return readByVtk(*reader, file);
}

}  // namespace importer
