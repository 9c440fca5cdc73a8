// Grids of VTK, with values that the file hides undefined.

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSetAttributes.h>
#include <vtkImageData.h>
#include <vtkMatrix3x3.h>
#include <vtkPointData.h>
#include <vtkRectilinearGrid.h>
#include <vtkStructuredGrid.h>

#include <algorithm>
#include <limits>

#include "read_vtk_sets.h"

namespace importer {

namespace {

// Values of hidden cells are undefined, and those of nodes round which all cells are hidden.
void hideInGrid(vtkDataSet* grid, Piece& piece, Dataset& data) {
  const vtkIdType numNodes = grid->GetNumberOfPoints(), numCells = grid->GetNumberOfCells();
  const unsigned char* nodes = vtkGhostsOf(grid->GetPointData(), numNodes);
  const unsigned char* cells = vtkGhostsOf(grid->GetCellData(), numCells);
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
    undefineVtkValues(piece, Binding::CELL, [&](std::size_t i) {
      return (cells[i] & (vtkDataSetAttributes::HIDDENCELL | vtkDataSetAttributes::REFINEDCELL)) != 0;
    });
  }
  const auto numUndefined = static_cast<std::size_t>(std::count(isHidden.begin(), isHidden.end(), true));
  if (numUndefined > 0) undefineVtkValues(piece, Binding::NODE, [&](std::size_t i) { return isHidden[i]; });
  if (numHidden + numUndefined > 0)
    data.note("values of " + counted(numHidden, "hidden cell", "hidden cells") + " and " +
              counted(numUndefined, "hidden node", "hidden nodes") + " are undefined");
}

std::vector<double> numbersOf(vtkDataArray* array) {
  std::vector<double> numbers;
  for (vtkIdType i = 0; array && i < array->GetNumberOfTuples(); ++i) numbers.push_back(array->GetComponent(i, 0));
  return numbers;
}

void takeNodes(vtkDataSet* set, Piece& piece) {
  if (auto* image = vtkImageData::SafeDownCast(set)) {
    image->GetDimensions(piece.dims.data());
    if (image->GetNumberOfPoints() == 0) return;
    image->GetPoint(0, piece.origin.data());
    image->GetSpacing(piece.spacing.data());
    piece.kind = PieceKind::REGULAR_GRID;
    if (!image->GetDirectionMatrix()->IsIdentity()) {  // turned: then each node has its own coordinates
      piece.kind = PieceKind::CURVILINEAR_GRID;
      takeVtkPoints(set, piece);
    }
  } else if (auto* rectilinear = vtkRectilinearGrid::SafeDownCast(set)) {
    rectilinear->GetDimensions(piece.dims.data());
    piece.kind = PieceKind::RECTILINEAR_GRID;
    piece.axes = {numbersOf(rectilinear->GetXCoordinates()), numbersOf(rectilinear->GetYCoordinates()),
                  numbersOf(rectilinear->GetZCoordinates())};
  } else if (auto* curvilinear = vtkStructuredGrid::SafeDownCast(set)) {
    curvilinear->GetDimensions(piece.dims.data());
    piece.kind = PieceKind::CURVILINEAR_GRID;
    takeVtkPoints(set, piece);
  }
}

}  // namespace

void takeVtkPoints(vtkDataSet* set, Piece& piece) {
  const vtkIdType count = set->GetNumberOfPoints();
  if (count > std::numeric_limits<int>::max()) throw Failure("it has more than 2147483647 nodes");
  piece.points.reserve(static_cast<std::size_t>(count));
  Point point{};
  for (vtkIdType i = 0; i < count; ++i) {
    set->GetPoint(i, point.data());
    piece.points.push_back(point);
  }
}

void takeVtkGrid(vtkDataSet* set, Piece& piece, Dataset& data) {
  takeNodes(set, piece);
  hideInGrid(set, piece, data);
}

}  // namespace importer
