#ifndef ORMELLE_PILIBRARY_H
#define ORMELLE_PILIBRARY_H

/// Start and end of the library: who uses it, and when its classes come and go.
///
/// Two kinds of users are counted apart. The application calls init() and finish(); every node holds a reference for
/// as long as it lives, from before its base constructor runs until all its destructors have run. The classes stay
/// registered while anybody is left. An application that only makes and drops nodes never calls finish(): then the last
/// node marks the library uninitialised but leaves the types in place, since the toolkit never gives a type key back
/// and has only 32767 of them.
class PiLibrary {
 public:
  static void init();
  static void finish();
  static bool isInitialized() { return s_inits + s_nodes > 0; }

  static void retain();
  static void release();

 private:
  static void start();
  static void stopIfUnused();
  static void registerClasses();
  static void unregisterClasses();
  static void toolkitEnds();

  static int s_inits;             // outstanding init() of the application
  static int s_nodes;             // living nodes
  static bool s_isRegistered;     // the types are in the toolkit's type system
  static bool s_isFinishPending;  // the application is through, but nodes were alive
};

#endif
