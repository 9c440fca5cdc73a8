#include <Ormelle/PoPieChart3D.h>

#include <algorithm>
#include <cmath>

#include <Inventor/nodes/SoGroup.h>

#include "graph/chart/PiPieSliceParts.h"

PO_KIT_SOURCE(PoPieChart3D)

PoPieChart3D::PoPieChart3D() {
  PO_KIT_CONSTRUCTOR(PoPieChart3D);
  PO_KIT_ADD_FIELD(center, (0, 0));
  PO_KIT_ADD_FIELD(radius, (0.5f));
  PO_KIT_ADD_FIELD(zMin, (0));
  PO_KIT_ADD_FIELD(zMax, (0.1f));
  PO_KIT_CONSTRUCTED(PoPieChart3D);
  watchField(center);
  watchField(radius);
  watchField(zMin);
  watchField(zMax);
  beginWatching();
}

PoPieChart3D::~PoPieChart3D() = default;

float PoPieChart3D::annotationHeight() const {
  const float height = std::max(zMin.getValue(), zMax.getValue());
  return std::isfinite(height) ? height : 0;
}

void PoPieChart3D::drawSlices() {
  const float bottom = std::isfinite(zMin.getValue()) ? zMin.getValue() : 0;
  const float top = std::isfinite(zMax.getValue()) ? zMax.getValue() : bottom;
  const PiPieSliceParts parts(
      state(), pieCenter(), pieRadius(), sliceAngleStep.getValue(), sliceColor, true,
      [=](const PiPieGeometry::Sector& sector, PiPieGeometry::Faces& faces) {
        PiPieGeometry::addSolid(sector, bottom, top, faces);
      },
      [=](const PiPieGeometry::Sector& sector, PiPieGeometry::Faces& lines) {
        PiPieGeometry::addSolidEdges(sector, bottom, top, lines);
      });
  setPart("slice", parts.slices());
  setPart("sliceBorder", parts.borders());
}
