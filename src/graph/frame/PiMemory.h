#ifndef ORMELLE_PIMEMORY_H
#define ORMELLE_PIMEMORY_H

#include <cstddef>

/// The allocation that the library's own containers go through. When memory runs out the application is asked to free
/// some, the request is tried once more, and what then fails is reported to the toolkit's memory error handler.
namespace PiMemory {

/// Where memory comes from and who is told that it ran out.
struct Source {
  void* (*allocate)(std::size_t size);
  void* (*reallocate)(void* memory, std::size_t size);
  /// Asks for `size` bytes to be freed elsewhere; false if nothing could be.
  bool (*getMemorySpace)(std::size_t size);
  /// Reports a failure. What it allocates in turn may fail without a second report.
  void (*post)(const char* text);
};

/// The C library, no means to free space, and the handler of `SoMemoryError`.
Source defaultSource();
/// Replaces the source and returns the one before. Memory is always given back with `free`.
Source setSource(const Source& source);

/// All return null after a failure, which is reported. A size of 0 is one byte.
void* allocate(std::size_t size) noexcept;
void* allocate(const char* file, int line, std::size_t size) noexcept;
/// A failure leaves `memory` as it was.
void* reallocate(const char* file, int line, void* memory, std::size_t size) noexcept;

/// Ignores null.
void free(void* memory) noexcept;
void free(const char* file, int line, void* memory) noexcept;

}  // namespace PiMemory

#endif
