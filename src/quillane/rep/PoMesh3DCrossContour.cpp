// Outlines of sections, for all kits that draw such lines.

#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoMesh3D.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>

#include <algorithm>

#include "quillane/rep/PiMeshScratch.h"
#include "quillane/rep/PiSurfaceStore.h"

PiCrossContour& PoMesh3D::crossContour() { return m_surface->crossContour; }

int PoMesh3D::getRegularGrid3DCrossContour(const PbRegularCartesianGrid3D* mesh, const float* values, float a, float b,
                                           float c, float d, SoIndexedLineSet* lines, SoCoordinate3* coordinates) {
  return mesh && lines && coordinates ? getCrossContour(*mesh, values, a, b, c, d, *lines, *coordinates) : 0;
}

int PoMesh3D::getParalCartGrid3DCrossContour(const PbParalCartesianGrid3D* mesh, const float* values, float a, float b,
                                             float c, float d, SoIndexedLineSet* lines, SoCoordinate3* coordinates) {
  return mesh && lines && coordinates ? getCrossContour(*mesh, values, a, b, c, d, *lines, *coordinates) : 0;
}

int PoMesh3D::getCartGrid3DCrossContour(const PbCartesianGrid3D* mesh, const float* values, float a, float b, float c,
                                        float d, SoIndexedLineSet* lines, SoCoordinate3* coordinates) {
  return mesh && lines && coordinates ? getCrossContour(*mesh, values, a, b, c, d, *lines, *coordinates) : 0;
}

int PoMesh3D::makeCrossContour(float a, float b, float c, float d, const float* values, SoGroup* group) {
  if (!m_currentMesh3D || !group) return 0;
  PiNodeRef<SoCoordinate3> coordinates(new SoCoordinate3);
  PiNodeRef<SoIndexedLineSet> lines(new SoIndexedLineSet);
  const int num = getCrossContour(*m_currentMesh3D, values, a, b, c, d, *lines, *coordinates);
  if (num > 0) {
    group->addChild(coordinates.get());
    group->addChild(lines.get());
  }
  return num;
}

int PoMesh3D::getCrossContour(const PbMesh3D& mesh, const float* values, float a, float b, float c, float d,
                              SoIndexedLineSet& lines, SoCoordinate3& coordinates) {
  PiCrossContour& contour = crossContour();
  contour.cut(mesh, {a, b, c, d}, values, getCellFilter(), valuesIndexForCellFilter.getValue());
  const PiSection& section = contour.section;

  coordinates.point.setNum(static_cast<int>(section.points.size()));
  lines.coordIndex.setNum(static_cast<int>(section.coordIndices.size()));
  PiMeshScratch::clear();
  if (section.points.empty()) return 0;
  std::copy(section.points.begin(), section.points.end(), coordinates.point.startEditing());
  coordinates.point.finishEditing();
  std::copy(section.coordIndices.begin(), section.coordIndices.end(), lines.coordIndex.startEditing());
  lines.coordIndex.finishEditing();
  for (const float value : section.values) push_back_value(value);
  return static_cast<int>(section.cells.size());
}
