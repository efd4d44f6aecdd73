#pragma once

#include <cstddef>
#include <cstdint>

// The memory of the program, which can run out.
namespace allocations {

// So many allocations of this thread succeed; all do when it is negative.
extern thread_local long allowed;

// None that is larger does.
extern thread_local std::size_t largest;

// As long as it lives, no allocation of this thread is larger than it says.
class Limit {
 public:
  explicit Limit(std::size_t size) { largest = size; }
  Limit(const Limit&) = delete;
  ~Limit() { largest = SIZE_MAX; }
};

}  // namespace allocations
