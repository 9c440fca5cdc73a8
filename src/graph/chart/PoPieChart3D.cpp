#include <Ormelle/PoPieChart3D.h>

#include <algorithm>
#include <cmath>

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
  buildSlices(true, bottom, top);
}
