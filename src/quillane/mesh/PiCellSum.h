#ifndef ORMELLE_PICELLSUM_H
#define ORMELLE_PICELLSUM_H

#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>

/// Sum of a measure over all cells, in double, so that small cells count among millions. A cell with a non-finite
/// coordinate measures 0.
inline float sumOverCells(const PbMesh& mesh, float (PbCell::*measure)() const) {
  double sum = 0;
  for (int c = 0; c < mesh.getNumCells(); ++c)
    if (const PbCell* cell = mesh.getCell(c)) sum += (cell->*measure)();
  return static_cast<float>(sum);
}

#endif
