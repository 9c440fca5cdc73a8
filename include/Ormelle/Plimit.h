#ifndef ORMELLE_PLIMIT_H
#define ORMELLE_PLIMIT_H

#include <Ormelle/OrmelleExport.h>

/// What a chart element has built so far, in its own coordinates: a box that grows.
struct ORMELLE_API Plimit {
  float xmin = 0;
  float xmax = 0;
  float ymin = 0;
  float ymax = 0;
};

#endif
