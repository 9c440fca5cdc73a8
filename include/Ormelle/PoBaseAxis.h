#ifndef ORMELLE_POBASEAXIS_H
#define ORMELLE_POBASEAXIS_H

#include <Ormelle/PoTavernel.h>

/// Root of everything that is an axis or is made of axes. It adds no field and no part.
class ORMELLE_API PoBaseAxis : public PoTavernel {
  PO_KIT_ABSTRACT_HEADER(PoBaseAxis, PoTavernel);

 protected:
  PoBaseAxis();
  ~PoBaseAxis() override;
};

#endif
