// Counts what goes through operator new, for the other benchmarks.

#include <atomic>
#include <cstdlib>
#include <new>

#include "AllocationCount.h"

namespace {
std::atomic<std::size_t> s_count{0};
}

std::size_t allocationCount() { return s_count.load(std::memory_order_relaxed); }

void* operator new(std::size_t size) {
  s_count.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
