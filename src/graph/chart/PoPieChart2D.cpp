#include <Ormelle/PoPieChart2D.h>

#include <Inventor/nodes/SoGroup.h>

#include "graph/chart/PiPieSliceParts.h"

PO_KIT_SOURCE(PoPieChart2D)

PoPieChart2D::PoPieChart2D() {
  PO_KIT_CONSTRUCTOR(PoPieChart2D);
  PO_KIT_ADD_FIELD(center, (0, 0));
  PO_KIT_ADD_FIELD(radius, (0.5f));
  PO_KIT_CONSTRUCTED(PoPieChart2D);
  watchField(center);
  watchField(radius);
  beginWatching();
}

PoPieChart2D::~PoPieChart2D() = default;

void PoPieChart2D::drawSlices() {
  const PiPieSliceParts parts(
      state(), pieCenter(), pieRadius(), sliceAngleStep.getValue(), sliceColor, false,
      [](const PiPieGeometry::Sector& sector, PiPieGeometry::Faces& faces) {
        PiPieGeometry::addDisc(sector, 0, faces);
      },
      [](const PiPieGeometry::Sector& sector, PiPieGeometry::Faces& lines) {
        PiPieGeometry::addOutline(sector, 0, lines);
      });
  setPart("slice", parts.slices());
  setPart("sliceBorder", parts.borders());
}
