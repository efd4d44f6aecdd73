#pragma once

#include <atomic>
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
// and is counted. So those of a snapshot go on counting, while another thread may read them; one
// thread at a time counts.
class Counters {
 public:
  void Count(requests::Effect effect, int error) const {
    uint64_t Counts::*const counts[] = {&Counts::lookups, &Counts::sets, &Counts::deletes};
    uint64_t& place =
        counts_.*(error != 0 ? &Counts::failures : counts[static_cast<size_t>(effect)]);
    std::atomic_ref(place).store(place + 1, std::memory_order_relaxed);
  }
  void Reset() { counts_ = {}; }
  void Restore(const Counts& counts) { counts_ = counts; }

  Counts counts() const {
    return {.sets = Load(counts_.sets),
            .deletes = Load(counts_.deletes),
            .lookups = Load(counts_.lookups),
            .failures = Load(counts_.failures)};
  }

  bool operator==(const Counters&) const { return true; }

 private:
  static uint64_t Load(uint64_t& place) {
    return std::atomic_ref(place).load(std::memory_order_relaxed);
  }

  mutable Counts counts_{};
};

}  // namespace vdrsim
