#ifndef ORMELLE_PIELEMENTREGISTRY_H
#define ORMELLE_PIELEMENTREGISTRY_H

#include <Inventor/SoType.h>

/// Registers traversal elements with the toolkit, once for each life of the toolkit.
///
/// The toolkit has no way to take an element away that an action has enabled: states are built of the enabled stack
/// indices, and one whose type is gone crashes the next action. So an element stays registered until `SoDB::finish`,
/// whatever the library's own start and end, and is registered anew after the next `SoDB::init`.
class PiElementRegistry {
 public:
  /// Unless done in this life of the toolkit, makes type and stack index for the element `name` and enables it for all
  /// actions, those derived later included. Fills `type` and `stackIndex`; the end of the toolkit sets both back to
  /// the bad type and -1, and `isShown` to 0, so the three must be statics of the class.
  static void enter(const char* name, SoType::instantiationMethod create, SoType& type, int& stackIndex, int& isShown);
};

#endif
