// Cells of VTK, of which some become several, and some none.

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDataSetAttributes.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <array>
#include <initializer_list>
#include <limits>
#include <map>

#include "read_vtk_sets.h"

namespace importer {

namespace {

constexpr int kHidden =
    vtkDataSetAttributes::HIDDENCELL | vtkDataSetAttributes::DUPLICATECELL | vtkDataSetAttributes::REFINEDCELL;

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
      : m_ghosts(vtkGhostsOf(set->GetCellData(), set->GetNumberOfCells())), m_taker(taker) {}

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

}  // namespace

void takeVtkCells(vtkDataSet* set, Piece& piece, Dataset& data) {
  piece.kind = PieceKind::CELLS;
  takeVtkPoints(set, piece);
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
  if (const unsigned char* nodes = vtkGhostsOf(set->GetPointData(), set->GetNumberOfPoints()))
    undefineVtkValues(piece, Binding::NODE,
                      [nodes](std::size_t i) { return (nodes[i] & vtkDataSetAttributes::HIDDENPOINT) != 0; });
}

}  // namespace importer
