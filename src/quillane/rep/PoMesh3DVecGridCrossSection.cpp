#include <Ormelle/PoMesh3DVecGridCrossSection.h>

#include <algorithm>
#include <cmath>

#include <Inventor/SbBox3f.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilter.h>

#include "quillane/vector/PiVectorRep.h"

PO_KIT_SOURCE(PoMesh3DVecGridCrossSection)

namespace {

constexpr double kMostPoints = 4e6;

/// Two directions in a plane, the first level with z = 0.
struct PlaneAxes {
  SbVec3f origin, first, second;

  explicit PlaneAxes(const SbPlane& plane) : origin(plane.getNormal() * plane.getDistanceFromOrigin()) {
    const SbVec3f normal = plane.getNormal();
    const float flat = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1]);
    if (flat > 1e-6f)
      first.setValue(-normal[1] / flat, normal[0] / flat, 0);
    else
      first.setValue(1, 0, 0);
    second = normal.cross(first);
  }
};

/// The multiples of a spacing that lie in the shadow of a box on a direction.
struct Multiples {
  double first = 0;
  double last = -1;

  Multiples(const SbBox3f& box, const SbVec3f& origin, const SbVec3f& direction, float spacing) {
    double low = 0;
    double high = 0;
    for (int corner = 0; corner < 8; ++corner) {
      const SbVec3f point((corner & 1) ? box.getMax()[0] : box.getMin()[0],
                          (corner & 2) ? box.getMax()[1] : box.getMin()[1],
                          (corner & 4) ? box.getMax()[2] : box.getMin()[2]);
      const double at = static_cast<double>((point - origin).dot(direction)) / static_cast<double>(spacing);
      low = corner == 0 ? at : std::min(low, at);
      high = corner == 0 ? at : std::max(high, at);
    }
    first = std::ceil(low - 1e-6);
    last = std::floor(high + 1e-6);
  }
  double num() const { return std::max(0.0, last - first + 1); }
};

}  // namespace

PoMesh3DVecGridCrossSection::PoMesh3DVecGridCrossSection() {
  PO_KIT_CONSTRUCTOR(PoMesh3DVecGridCrossSection);
  PO_KIT_ADD_FIELD(gridSpacing, (0, 0));
  PO_KIT_CONSTRUCTED(PoMesh3DVecGridCrossSection);
  watchField(gridSpacing);
  beginWatching();
}

PoMesh3DVecGridCrossSection::~PoMesh3DVecGridCrossSection() = default;

SbVec2f PoMesh3DVecGridCrossSection::spacing(const PbMesh3D& mesh) const {
  const float automatic = 2 * PiVectorRep::spacingOf(mesh.getBoundingBox(), mesh.getNumNodes(), 1);
  SbVec2f result = gridSpacing.getValue();
  for (int axis = 0; axis < 2; ++axis)
    if (!(result[axis] > 0) || !std::isfinite(result[axis])) result[axis] = automatic;
  return result;
}

float PoMesh3DVecGridCrossSection::vectorSpacing(const PbMesh3D& mesh) const {
  const SbVec2f steps = spacing(mesh);
  return std::sqrt(steps[0] * steps[1] * static_cast<float>(std::max(1, density.getValue())));
}

void PoMesh3DVecGridCrossSection::sample(const PbMesh3D& mesh, const SbVec3f* vectors, const float* values) {
  const SbBox3f box = mesh.getBoundingBox();
  if (box.isEmpty()) return;
  const PlaneAxes axes(plane.getValue());
  SbVec2f steps = spacing(mesh);
  const double wanted = Multiples(box, axes.origin, axes.first, steps[0]).num() *
                        Multiples(box, axes.origin, axes.second, steps[1]).num();
  if (!(wanted >= 1)) return;
  if (wanted > kMostPoints) steps *= static_cast<float>(std::sqrt(wanted / kMostPoints) * 1.001);
  const Multiples columns(box, axes.origin, axes.first, steps[0]);
  const Multiples rows(box, axes.origin, axes.second, steps[1]);

  const PoCellFilter* filter = getCellFilter();
  const float* filterValues = nullptr;
  if (mesh.getValuesBinding(valuesIndexForCellFilter.getValue()) == PbMesh::PER_CELL)
    filterValues = mesh.getValuesSet(valuesIndexForCellFilter.getValue());
  const PbCell* cell = nullptr;
  const int numColumns = static_cast<int>(columns.num());
  const int numRows = static_cast<int>(rows.num());
  for (int column = 0; column < numColumns; ++column)
    for (int row = 0; row < numRows; ++row) {
      const double i = columns.first + column;
      const double j = rows.first + row;
      const SbVec3f point = axes.origin + axes.first * static_cast<float>(i * static_cast<double>(steps[0])) +
                            axes.second * static_cast<float>(j * static_cast<double>(steps[1]));
      SbVec3f pcoord;
      cell = cell ? mesh.findContainingCell(point, 0, pcoord, cell) : mesh.findContainingCell(point, 0, pcoord);
      if (!cell) continue;
      const int index = cell->getIndex();
      if (filter && !filter->acceptCell(index, filterValues ? filterValues[index] : 0)) continue;
      m_points.push_back(point);
      m_sampled.push_back(cell->getValue(pcoord, vectors));
      if (values) m_values.push_back(cell->getValue(pcoord, values));
    }
}
