#ifndef ORMELLE_PBCELLITERATOR_H
#define ORMELLE_PBCELLITERATOR_H

#include <Ormelle/OrmelleExport.h>

class PbCell;
class PbMesh;

/// Walks the cells of a mesh by rising index.
///
///     PbCellIterator cells(mesh);
///     for (cells.first(); cells.notDone(); cells.next()) use(cells.getCell());
///
/// The mesh must live as long as the iterator, and must not change meanwhile.
class ORMELLE_API PbCellIterator {
 public:
  /// A null mesh has no cells.
  explicit PbCellIterator(const PbMesh* mesh);
  virtual ~PbCellIterator();

  /// Goes to the first cell.
  virtual void first();
  /// Goes to the next cell.
  virtual void next();
  /// 1 while there is a current cell.
  int notDone() const;
  int getCellIndex() const { return m_cellIndex; }
  /// The current cell, null if the mesh gives none. It belongs to the mesh: see PbMesh.
  const PbCell* getCell() const;
  /// The current cell without coordinates.
  const PbCell* getTopoCell() const;

 protected:
  const PbMesh* m_mesh;
  int m_cellIndex = 0;
};

#endif
