#pragma once

#include <cstddef>
#include <vector>

// The allocator that the library sees: the true one, watched. The link step sends malloc, calloc
// and free of all that is linked statically through here.
namespace memory {

// More than any getter asks for on its own account. A larger allocation is refused.
inline constexpr std::size_t kLargest = 256 << 20;

// Watches the allocations from here on. The `failing`th of them returns NULL, none with 0.
void Watch(int failing);
void Unwatch();

// How many allocations there were since Watch, those that failed included.
int Allocations();

// The sizes of those that nobody has freed, in the order of allocation.
std::vector<std::size_t> Live();

// Frees them, where the library loses memory on purpose.
void FreeLost();

// Memory of the caller's, to be given to free(), here or by the library. It is not counted.
void* Give(std::size_t size);

}  // namespace memory
