// The examples that the reference shows of the cells; compiled, so that they stay right. Each stands between two marks
// with the name of its class.

#include <cstdio>

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPixelCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbQuadrangleCell.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbTriangleCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>

namespace docs {

void examplePbTriangleCell() {
  //! [PbTriangleCell]
  const float x[] = {0, 1, 0}, y[] = {0, 0, 1}, z[] = {0, 0, 0};
  const int nodes[] = {0, 1, 2};
  PbTriangleCell cell(nullptr);  // belongs to no mesh
  cell.set(0, nodes, x, y, z);
  SbVec3f pcoord;
  if (cell.locatePoint(SbVec3f(0.2f, 0.2f, 0), 0, pcoord)) std::printf("%g\n", cell.getValue(pcoord, x));  // 0.2
  //! [PbTriangleCell]
}

void examplePbQuadrangleCell() {
  //! [PbQuadrangleCell]
  const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1}, z[] = {0, 0, 0, 0};
  const int nodes[] = {0, 1, 2, 3};
  PbQuadrangleCell cell(nullptr);  // belongs to no mesh
  cell.set(0, nodes, x, y, z);
  SbVec3f pcoord;
  if (cell.locatePoint(SbVec3f(0.2f, 0.2f, 0), 0, pcoord)) std::printf("%g\n", cell.getValue(pcoord, x));  // 0.2
  //! [PbQuadrangleCell]
}

void examplePbTetrahedronCell() {
  //! [PbTetrahedronCell]
  const float x[] = {0, 1, 0, 0}, y[] = {0, 0, 1, 0}, z[] = {0, 0, 0, 1};
  const int nodes[] = {0, 1, 2, 3};
  PbTetrahedronCell cell(nullptr);  // belongs to no mesh
  cell.set(0, nodes, x, y, z);
  SbVec3f pcoord;
  if (cell.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), 0, pcoord)) std::printf("%g\n", cell.getValue(pcoord, x));  // 0.2
  //! [PbTetrahedronCell]
}

void examplePbHexahedronCell() {
  //! [PbHexahedronCell]
  const float x[] = {0, 1, 1, 0, 0, 1, 1, 0}, y[] = {0, 0, 1, 1, 0, 0, 1, 1}, z[] = {0, 0, 0, 0, 1, 1, 1, 1};
  const int nodes[] = {0, 1, 2, 3, 4, 5, 6, 7};
  PbHexahedronCell cell(nullptr);  // belongs to no mesh
  cell.set(0, nodes, x, y, z);
  SbVec3f pcoord;
  if (cell.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), 0, pcoord)) std::printf("%g\n", cell.getValue(pcoord, x));  // 0.2
  //! [PbHexahedronCell]
}

void examplePbWedgeCell() {
  //! [PbWedgeCell]
  const float x[] = {0, 1, 0, 0, 1, 0}, y[] = {0, 0, 1, 0, 0, 1}, z[] = {0, 0, 0, 1, 1, 1};
  const int nodes[] = {0, 1, 2, 3, 4, 5};
  PbWedgeCell cell(nullptr);  // belongs to no mesh
  cell.set(0, nodes, x, y, z);
  SbVec3f pcoord;
  if (cell.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), 0, pcoord)) std::printf("%g\n", cell.getValue(pcoord, x));  // 0.2
  //! [PbWedgeCell]
}

void examplePbPyramidCell() {
  //! [PbPyramidCell]
  const float x[] = {0, 1, 1, 0, 0.5f}, y[] = {0, 0, 1, 1, 0.5f}, z[] = {0, 0, 0, 0, 1};
  const int nodes[] = {0, 1, 2, 3, 4};
  PbPyramidCell cell(nullptr);  // belongs to no mesh
  cell.set(0, nodes, x, y, z);
  SbVec3f pcoord;
  if (cell.locatePoint(SbVec3f(0.2f, 0.2f, 0.2f), 0, pcoord)) std::printf("%g\n", cell.getValue(pcoord, x));  // 0.2
  //! [PbPyramidCell]
}

void examplePbPixelCell(const PbRegularCartesianGrid2D& grid, const SbVec3f& point) {
  //! [PbPixelCell]
  SbVec3f pcoord;
  if (const PbCell* cell = grid.findContainingCell(point, 0, pcoord)) {  // a PbPixelCell, which belongs to the grid
    const float heat = cell->getValue(pcoord, grid.getValuesSet(0));
    std::printf("%g in cell %d\n", heat, cell->getIndex());
  }
  //! [PbPixelCell]
}

void examplePbVoxelCell(const PbRegularCartesianGrid3D& grid, const SbVec3f& point) {
  //! [PbVoxelCell]
  SbVec3f pcoord;
  if (const PbCell* cell = grid.findContainingCell(point, 0, pcoord)) {  // a PbVoxelCell, which belongs to the grid
    const float heat = cell->getValue(pcoord, grid.getValuesSet(0));
    std::printf("%g in cell %d\n", heat, cell->getIndex());
  }
  //! [PbVoxelCell]
}

}  // namespace docs
