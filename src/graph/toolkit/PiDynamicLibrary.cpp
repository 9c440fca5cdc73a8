#include "graph/toolkit/PiDynamicLibrary.h"

#include <dlfcn.h>

namespace {
// A handle to a library that is already in the process; null if it isn't.
void* loadedHandle(const std::string& name) { return dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD); }
}  // namespace

const char* PiDynamicLibrary::getLibrarySuffix() { return ".so"; }

bool PiDynamicLibrary::isLibraryLoaded(const std::string& name) {
  void* handle = loadedHandle(name);
  if (handle) dlclose(handle);  // only the reference that asking took
  return handle != nullptr;
}

bool PiDynamicLibrary::loadLibrary(const std::string& name) {
  return dlopen(name.c_str(), RTLD_LAZY | RTLD_GLOBAL) != nullptr;
}

void* PiDynamicLibrary::lookUpFunction(const std::string& name, const char* symbol) {
  void* handle = loadedHandle(name);
  if (!handle) return nullptr;
  void* function = dlsym(handle, symbol);
  dlclose(handle);
  return function;
}
