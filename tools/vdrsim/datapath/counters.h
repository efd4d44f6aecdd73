#pragma once

#include <cstddef>
#include <cstdint>

#include "requests/request.h"

namespace vdrsim {

// How many commands an object has seen.
struct Counts {
  uint64_t sets = 0;
  uint64_t deletes = 0;
  uint64_t lookups = 0;
  uint64_t failures = 0;

  bool operator==(const Counts&) const = default;
};

// The counts of one object. They are no part of its value: a command that fails changes nothing,
// and is counted.
class Counters {
 public:
  void Count(requests::Effect effect, int error) const {
    uint64_t Counts::*const counts[] = {&Counts::lookups, &Counts::sets, &Counts::deletes};
    ++(counts_.*(error != 0 ? &Counts::failures : counts[static_cast<size_t>(effect)]));
  }
  void Reset() { counts_ = {}; }
  const Counts& counts() const { return counts_; }

  bool operator==(const Counters&) const { return true; }

 private:
  mutable Counts counts_{};
};

}  // namespace vdrsim
