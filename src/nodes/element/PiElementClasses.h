#ifndef ORMELLE_PIELEMENTCLASSES_H
#define ORMELLE_PIELEMENTCLASSES_H

/// The traversal elements in the order of their registration.
class PiElementTable {
 public:
  static void initClasses();
  /// In reverse. The toolkit keeps the elements until its own end, see PoSubElement.h.
  static void exitClasses();
};

#endif
