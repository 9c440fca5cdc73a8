#ifndef ORMELLE_POLIBORMELLEP_H
#define ORMELLE_POLIBORMELLEP_H

#include <Inventor/SoType.h>
#include <Ormelle/OrmelleExport.h>

/// Loads the optional view library of the running window system, by name and on demand.
///
/// The library is called "Ormelle" + "Qt", "Wx" or "Win" + the platform's suffix. Without it everything works but the
/// view classes.
class ORMELLE_API PoLibOrmelleP {
 public:
  enum WindowSystem { WINDOW_SYSTEM_WIN, WINDOW_SYSTEM_QT, WINDOW_SYSTEM_WX };

  /// Which library instance() looks for; `WINDOW_SYSTEM_WIN` at first.
  static void setWindowSystem(WindowSystem system) { s_windowSystem = system; }

  /// The loaded view library, loading it if need be; null after an error has been posted if it can't be had. Each
  /// call after the first that succeeds counts as one more user.
  static PoLibOrmelleP* instance();
  static int isAvailable() { return m_libOrmelleP != nullptr; }
  /// Gives back one counted call; the last one frees the instance.
  static void finish();

  /// Has the view library, if there is one, take its classes away, and gives it back. For the library's own end.
  static void exitViewClasses();

  static void (*m_poBaseViewInitClasses)();
  static void (*m_poBaseViewExitClasses)();
  static SoType (*m_poSceneViewGetClassTypeId)();

 private:
  PoLibOrmelleP() = default;

  static PoLibOrmelleP* m_libOrmelleP;
  static int m_refCount;
  static WindowSystem s_windowSystem;
};

#endif
