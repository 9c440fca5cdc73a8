#ifndef ORMELLE_PIENUMFIELD_H
#define ORMELLE_PIENUMFIELD_H

#include <Inventor/fields/SoSFEnum.h>

/// Reads an enumeration, whose values count from 0, from a field, which may hold any integer.
class PiEnumField {
 public:
  /// The value of `field`, or `otherwise` if it is none from 0 to `last`.
  template <class Enum>
  static Enum get(const SoSFEnum& field, Enum last, Enum otherwise) {
    const int value = field.getValue();
    return value >= 0 && value <= last ? static_cast<Enum>(value) : otherwise;
  }
};

#endif
