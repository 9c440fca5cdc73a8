#ifndef ORMELLE_POORMELLE_H
#define ORMELLE_POORMELLE_H

#include <Ormelle/OrmelleExport.h>

/// The library as a whole.
///
/// Starting it is optional: the first node that is constructed does so. init() is counted, and each finish() undoes
/// one; the classes go away once both the application's own starts and the last node are gone, in whichever order.
/// The toolkit is started when needed and never ended; an application that ends it with `SoDB::finish` does so after
/// its last node is gone.
class ORMELLE_API PoOrmelle {
 public:
  /// "Ormelle".
  static const char* getProductName();
  /// Major, minor and patch number, separated by points.
  static const char* getVersion();

  static void init();
  static int isInitialized();
  /// At count 0 it does nothing.
  static void finish();

 private:
  // Found by tools that look for such marks in a binary.
  static const char* const s_versionString;
};

#endif
