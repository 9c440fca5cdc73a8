#ifndef ORMELLE_POQUILLANE_H
#define ORMELLE_POQUILLANE_H

#include <Ormelle/PoBase.h>

/// Root of the representations of meshes. It adds no field and no part to PoBase.
class ORMELLE_API PoQuillane : public PoBase {
  PO_KIT_ABSTRACT_HEADER(PoQuillane, PoBase);

 public:
  /// Registers the mesh representations in their fixed order and builds the tables of the cells between the surface
  /// and the volume classes; exitClasses() undoes it. Called by the library's start and stop.
  static void initClasses();
  static void exitClasses();

 protected:
  explicit PoQuillane(void (*catchAction)(void* kit, SoAction* action) = nullptr);
  ~PoQuillane() override;
};

#endif
