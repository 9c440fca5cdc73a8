#include "graph/frame/PiMemory.h"

#include <cstdio>
#include <cstdlib>

#include <Inventor/errors/SoMemoryError.h>

namespace {

// SoMemoryError::post words the text itself, and handleError doesn't know the handlers of classes below SoError.
class MemoryError : public SoMemoryError {
 public:
  static void post(const char* text) {
    MemoryError error;
    error.setDebugString(text);
    void* data;
    SoErrorCB* handler = error.getHandler(data);
    if (handler && handler != SoError::defaultHandlerCB)
      handler(&error, data);
    else
      error.handleError();
  }
};

bool noMemorySpace(std::size_t) { return false; }

PiMemory::Source s_source = PiMemory::defaultSource();
char s_message[512];
char s_isReporting = 0;

void report(const char* what, const char* file, int line) {
  if (s_isReporting) return;
  if (file)
    std::snprintf(s_message, sizeof s_message, "%s at: %s:%d\n", what, file, line);
  else
    std::snprintf(s_message, sizeof s_message, "%s\n", what);
  s_isReporting = 1;
  s_source.post(s_message);
  s_isReporting = 0;
}

template <class Request>
void* tryTwice(Request request, std::size_t size, const char* what, const char* file, int line) {
  if (size == 0) size = 1;
  if (void* memory = request(size)) return memory;
  if (s_source.getMemorySpace(size))
    if (void* memory = request(size)) return memory;
  report(what, file, line);
  return nullptr;
}

}  // namespace

PiMemory::Source PiMemory::defaultSource() { return {std::malloc, std::realloc, noMemorySpace, MemoryError::post}; }

PiMemory::Source PiMemory::setSource(const Source& source) {
  Source previous = s_source;
  s_source = source;
  return previous;
}

void* PiMemory::allocate(std::size_t size) noexcept { return allocate(nullptr, 0, size); }

void* PiMemory::allocate(const char* file, int line, std::size_t size) noexcept {
  return tryTwice([](std::size_t n) { return s_source.allocate(n); }, size, "Memory allocation error", file, line);
}

void* PiMemory::reallocate(const char* file, int line, void* memory, std::size_t size) noexcept {
  return tryTwice([memory](std::size_t n) { return s_source.reallocate(memory, n); }, size,
                  "Memory re-allocation error", file, line);
}

void PiMemory::free(void* memory) noexcept { std::free(memory); }

void PiMemory::free(const char*, int, void* memory) noexcept { std::free(memory); }
