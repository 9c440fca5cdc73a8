#ifndef ORMELLE_PIMULTIPLIER_H
#define ORMELLE_PIMULTIPLIER_H

/// Where the common power of ten of an axis is written; the same values in all axes that have one.
struct PiMultiplier {
  enum Position { START = 0, END = 1, EXTR = 2, GRAD = 3 };

  Position position = END;
  float distAxis = 0;  ///< from the end of the axis, fraction of the reference length; 0 until it is settled
};

#endif
