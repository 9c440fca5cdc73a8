#ifndef ORMELLE_TOOL_IMPORT_READ_VTK_SETS_H
#define ORMELLE_TOOL_IMPORT_READ_VTK_SETS_H

#include <vtkType.h>

#include <limits>

#include "Dataset.h"

class vtkDataSet;
class vtkDataSetAttributes;

namespace importer {

/// Adds the arrays of nodes or cells, of which there are `count`, as sets of the piece.
void addVtkArrays(vtkDataSetAttributes* attributes, Binding binding, vtkIdType count, Piece& piece, Dataset& data);

/// Why each of `count` nodes or cells is hidden, as bits; null if the file doesn't say for each.
const unsigned char* vtkGhostsOf(vtkDataSetAttributes* attributes, vtkIdType count);

void takeVtkPoints(vtkDataSet* set, Piece& piece);

/// Takes the nodes of a grid. Values of what the file hides become undefined.
void takeVtkGrid(vtkDataSet* set, Piece& piece, Dataset& data);

/// Takes nodes and cells of a surface or a mesh of cells, but for those that the file hides.
void takeVtkCells(vtkDataSet* set, Piece& piece, Dataset& data);

/// Undefines values of what the file hides.
template <class IsHidden>
void undefineVtkValues(Piece& piece, Binding binding, IsHidden isHidden) {
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

}  // namespace importer

#endif
