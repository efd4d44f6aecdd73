#include "memory.h"

#include <sanitizer/asan_interface.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "require.h"

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* memory);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void __wrap_free(void* memory);
}

namespace {

// From this size on memory is used over and over, because AddressSanitizer takes milliseconds to
// take back what a list of BFD sessions needs.
constexpr std::size_t kLarge = 1 << 20;

// What surrounds such memory, and what of it counts as freed in between. No reply goes farther.
constexpr std::size_t kAround = 4096;
constexpr std::size_t kFreed = 1 << 19;

// What fresh memory is filled with, so that nothing can lean on its being zero.
constexpr uint8_t kGarbage = 0xA5;

struct LargeBlock {
  uint8_t* memory;
  std::size_t size;
  bool used;
};

std::vector<LargeBlock> largeBlocks;

bool watching = false;
int failingAllocation = 0;
int allocations = 0;
std::vector<std::pair<void*, std::size_t>> live;

LargeBlock NewLargeBlock(std::size_t size) {
  const std::size_t room = kAround + (size / kAround + 1) * kAround + kAround;
  void* pages = mmap(nullptr, room, PROT_READ | PROT_WRITE,
                     MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  Require(pages != MAP_FAILED, "there is memory");
  auto* memory = static_cast<uint8_t*>(pages) + kAround;
  ASAN_POISON_MEMORY_REGION(pages, kAround);
  ASAN_POISON_MEMORY_REGION(memory + size, room - kAround - size);
  return {.memory = memory, .size = size, .used = false};
}

void* AllocateLarge(std::size_t size) {
  auto block = std::find_if(largeBlocks.begin(), largeBlocks.end(),
                            [&](const LargeBlock& one) { return one.size == size && !one.used; });
  if (block == largeBlocks.end()) block = largeBlocks.insert(block, NewLargeBlock(size));
  block->used = true;
  ASAN_UNPOISON_MEMORY_REGION(block->memory, kFreed);
  return block->memory;
}

bool FreeLarge(void* memory) {
  for (LargeBlock& block : largeBlocks) {
    if (block.memory != memory) continue;
    Require(block.used, "memory is freed once");
    block.used = false;
    // The pages that were touched are given back and read as zero again.
    madvise(block.memory, block.size, MADV_DONTNEED);
    ASAN_POISON_MEMORY_REGION(block.memory, kFreed);
    return true;
  }
  return false;
}

void* Allocate(std::size_t size, bool cleared) {
  if (size < kLarge) return cleared ? __real_calloc(1, size) : __real_malloc(size);
  void* memory = AllocateLarge(size);
  if (!cleared) std::memset(memory, kGarbage, kAround);
  return memory;
}

void Free(void* memory) {
  if (!FreeLarge(memory)) __real_free(memory);
}

bool Refuses(std::size_t size) {
  return ++allocations == failingAllocation || size > memory::kLargest;
}

void* Remember(void* memory, std::size_t size) {
  if (watching && memory) live.emplace_back(memory, size);
  return memory;
}

}  // namespace

void memory::Watch(int failing) {
  watching = true;
  failingAllocation = failing;
  allocations = 0;
  live.clear();
}

void memory::Unwatch() { watching = false; }

int memory::Allocations() { return allocations; }

std::vector<std::size_t> memory::Live() {
  std::vector<std::size_t> sizes;
  sizes.reserve(live.size());
  for (const auto& [memory, size] : live) sizes.push_back(size);
  return sizes;
}

void memory::FreeLost() {
  for (const auto& [memory, size] : live) Free(memory);
  live.clear();
}

void* memory::Give(std::size_t size) { return Remember(Allocate(size, false), size); }

extern "C" {

// A refusal leaves errno alone, as an agent's own allocator may.
void* __wrap_malloc(std::size_t size) {
  if (!watching) return __real_malloc(size);
  return Refuses(size) ? nullptr : Remember(Allocate(size, false), size);
}

// The library multiplies 32-bit numbers alone, so the product does not wrap.
void* __wrap_calloc(std::size_t count, std::size_t size) {
  if (!watching) return __real_calloc(count, size);
  return Refuses(count * size) ? nullptr : Remember(Allocate(count * size, true), count * size);
}

void __wrap_free(void* memory) {
  if (watching) std::erase_if(live, [&](const auto& one) { return one.first == memory; });
  Free(memory);
}

}  // extern "C"
