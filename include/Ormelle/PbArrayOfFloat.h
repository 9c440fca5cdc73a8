#ifndef ORMELLE_PBARRAYOFFLOAT_H
#define ORMELLE_PBARRAYOFFLOAT_H

#include <Ormelle/PbArray.h>

/// Growable array of floats by value. Comparisons are exact.
class ORMELLE_API PbArrayOfFloat : public PbArray<float, PbArrayOfFloat> {
 public:
  using PbArray::PbArray;
};

#endif
