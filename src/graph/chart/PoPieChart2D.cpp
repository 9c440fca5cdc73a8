#include <Ormelle/PoPieChart2D.h>

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

void PoPieChart2D::drawSlices() { buildSlices(false, 0, 0); }
