#ifndef ORMELLE_PBARRAYOFLONG_H
#define ORMELLE_PBARRAYOFLONG_H

#include <Ormelle/PbArray.h>

/// Growable array of 32-bit integers by value.
class ORMELLE_API PbArrayOfLong : public PbArray<int, PbArrayOfLong> {
 public:
  using PbArray::PbArray;
};

#endif
