#ifndef ORMELLE_PBARRAYOFINT_H
#define ORMELLE_PBARRAYOFINT_H

#include <Ormelle/PbArray.h>

/// Growable array of integers by value.
class ORMELLE_API PbArrayOfInt : public PbArray<int, PbArrayOfInt> {
 public:
  using PbArray::PbArray;
};

#endif
