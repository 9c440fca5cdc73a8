#include <Ormelle/PoLibOrmelleP.h>

#include <Inventor/errors/SoDebugError.h>

#include "graph/toolkit/PiDynamicLibrary.h"

PoLibOrmelleP* PoLibOrmelleP::m_libOrmelleP = nullptr;
int PoLibOrmelleP::m_refCount = 0;
PoLibOrmelleP::WindowSystem PoLibOrmelleP::s_windowSystem = WINDOW_SYSTEM_WIN;
void (*PoLibOrmelleP::m_poBaseViewInitClasses)() = nullptr;
void (*PoLibOrmelleP::m_poBaseViewExitClasses)() = nullptr;
SoType (*PoLibOrmelleP::m_poSceneViewGetClassTypeId)() = nullptr;

namespace {

template <class Function>
bool lookUp(const std::string& library, const char* symbol, Function*& function) {
  function = reinterpret_cast<Function*>(PiDynamicLibrary::lookUpFunction(library, symbol));
  return function != nullptr;
}

}  // namespace

PoLibOrmelleP* PoLibOrmelleP::instance() {
  static const char* const words[] = {"Win", "Qt", "Wx"};
  const std::string name = std::string("Ormelle") + words[s_windowSystem] + PiDynamicLibrary::getLibrarySuffix();

  bool isLoaded = PiDynamicLibrary::isLibraryLoaded(name);
  if (isLoaded && m_libOrmelleP) {
    ++m_refCount;
    return m_libOrmelleP;
  }
  if (!isLoaded) {
    delete m_libOrmelleP;
    m_libOrmelleP = nullptr;
    isLoaded = PiDynamicLibrary::loadLibrary(name);
  }
  if (isLoaded) {
    // The names of these static member functions as the platform's C++ compilers write them.
    const bool hasInit = lookUp(name, "_ZN10PoBaseView11initClassesEv", m_poBaseViewInitClasses);
    const bool hasExit = lookUp(name, "_ZN10PoBaseView11exitClassesEv", m_poBaseViewExitClasses);
    const bool hasType = lookUp(name, "_ZN11PoSceneView14getClassTypeIdEv", m_poSceneViewGetClassTypeId);
    if (hasInit && hasExit && hasType) return m_libOrmelleP = new PoLibOrmelleP;
  }
  SoDebugError::post("PoLibOrmelleP::instance", "Could not load %s", name.c_str());
  return m_libOrmelleP;
}

void PoLibOrmelleP::finish() {
  if (m_refCount == 0 || --m_refCount > 0) return;
  delete m_libOrmelleP;
  m_libOrmelleP = nullptr;
}

void PoLibOrmelleP::exitViewClasses() {
  if (!isAvailable()) return;
  m_poBaseViewExitClasses();
  finish();
}
