#include "allocations.h"

#include <cstdlib>
#include <new>

thread_local long allocations::allowed = -1;
thread_local std::size_t allocations::largest = SIZE_MAX;

void* operator new(std::size_t size) {
  if (allocations::allowed == 0 || size > allocations::largest) throw std::bad_alloc();
  if (allocations::allowed > 0) --allocations::allowed;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept try {
  return operator new(size);
} catch (const std::bad_alloc&) {
  return nullptr;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
