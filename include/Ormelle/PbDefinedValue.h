#ifndef ORMELLE_PBDEFINEDVALUE_H
#define ORMELLE_PBDEFINEDVALUE_H

#include <Ormelle/OrmelleExport.h>

/// Tells which values of a data set are defined. Derive from it to mark values as missing; here all are defined.
class ORMELLE_API PbDefinedValue {
 public:
  virtual ~PbDefinedValue();
  /// 1 if `value`, element `index` of the set `set_index`, is defined.
  virtual int operator()(float value, int index, int set_index);
  /// The value that stands for an undefined one in the set; 0.
  virtual float getUndef(int set_index);
};

#endif
