#ifndef ORMELLE_PIFILLEDWORK_H
#define ORMELLE_PIFILLEDWORK_H

#include "quillane/contour/PiBandPolygons.h"
#include "quillane/contour/PiContouringFilled.h"

/// What PiContouringFilled keeps from call to call.
struct PiContouringFilled::Work {
  PiContourScratch scratch;
  PiBandPolygons polygons;
};

#endif
