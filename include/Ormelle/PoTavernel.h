#ifndef ORMELLE_POTAVERNEL_H
#define ORMELLE_POTAVERNEL_H

#include <Ormelle/PoBase.h>

/// Root of axes, legends, charts and plain shapes. It adds no field and no part to PoBase.
class ORMELLE_API PoTavernel : public PoBase {
  PO_KIT_ABSTRACT_HEADER(PoTavernel, PoBase);

 public:
  /// Registers the axes, legends, charts and shapes in their fixed order; exitClasses() undoes it. Called by the
  /// library's start and stop.
  static void initClasses();
  static void exitClasses();

 protected:
  explicit PoTavernel(void (*catchAction)(void* kit, SoAction* action) = nullptr);
  ~PoTavernel() override;
};

#endif
