#ifndef ORMELLE_PITOOLKIT_H
#define ORMELLE_PITOOLKIT_H

/// The toolkit's start as this library needs it.
///
/// `SoDB::init` is idempotent and not counted, and one `SoDB::finish` ends the toolkit for everybody: an application
/// that started it itself must never have it pulled away. So start and end are counted here, and the library never
/// calls `SoDB::finish`; the application may.
class PiToolkit {
 public:
  /// Starts the toolkit if need be and counts one more user.
  static void init();
  /// Gives one init() back. The toolkit stays.
  static void finish();
  static int useCount() { return s_useCount; }

  /// Has `callback` called first thing inside the next `SoDB::finish`, while all types still exist; once only.
  static void callBeforeEnd(void (*callback)());

 private:
  static int s_useCount;
};

#endif
