#ifndef ORMELLE_PLIMIT_H
#define ORMELLE_PLIMIT_H

/// What a chart element has built so far, in its own coordinates: a box that grows.
struct Plimit {
  float xmin = 0;
  float xmax = 0;
  float ymin = 0;
  float ymax = 0;
};

#endif
