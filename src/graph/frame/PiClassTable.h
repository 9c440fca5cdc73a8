#ifndef ORMELLE_PICLASSTABLE_H
#define ORMELLE_PICLASSTABLE_H

#include <span>

/// How one class, or one set of shared tables, is put up and taken down.
struct PiClassEntry {
  void (*init)();
  void (*exit)();
};

/// The registration of a node class.
#define PI_CLASS(Class) \
  PiClassEntry { &Class::initClass, &Class::exitClass }
/// Shared data of a class without a type.
#define PI_TABLES(Class)                           \
  PiClassEntry {                                   \
    [] { Class::init(); }, [] { Class::finish(); } \
  }

inline void piInitClasses(std::span<const PiClassEntry> entries) {
  for (const PiClassEntry& entry : entries) entry.init();
}

/// Goes backwards through the list.
inline void piExitClasses(std::span<const PiClassEntry> entries) {
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) entry->exit();
}

#endif
