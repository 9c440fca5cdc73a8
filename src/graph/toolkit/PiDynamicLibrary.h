#ifndef ORMELLE_PIDYNAMICLIBRARY_H
#define ORMELLE_PIDYNAMICLIBRARY_H

#include <string>

/// Loading a shared library by name and finding functions in it; libraries stay loaded.
namespace PiDynamicLibrary {

/// What the platform appends to a library's name, for example ".so".
const char* getLibrarySuffix();
bool isLibraryLoaded(const std::string& name);
bool loadLibrary(const std::string& name);
/// The function with this symbol in a loaded library, or null.
void* lookUpFunction(const std::string& name, const char* symbol);

}  // namespace PiDynamicLibrary

#endif
