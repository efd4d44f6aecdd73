#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "requests/request.h"

namespace vdrsim {

// One count. One thread at a time changes it, while others may read it: what a snapshot shares with
// the state is counted on.
class Count {
 public:
  Count() = default;
  Count(uint64_t value) : value_(value) {}
  Count(const Count& other) : Count(uint64_t{other}) {}
  Count& operator=(const Count& other) {
    value_.store(other, std::memory_order_relaxed);
    return *this;
  }
  Count& operator++() { return *this = *this + 1; }

  operator uint64_t() const { return value_.load(std::memory_order_relaxed); }

 private:
  std::atomic<uint64_t> value_ = 0;
};

// How many commands an object has seen.
struct Counts {
  Count sets{};
  Count deletes{};
  Count lookups{};
  Count failures{};

  bool operator==(const Counts&) const = default;
};

// The counts of one object. They are no part of its value: a command that fails changes nothing,
// and is counted.
class Counters {
 public:
  void Count(requests::Effect effect, int error) const {
    vdrsim::Count Counts::*const counts[] = {&Counts::lookups, &Counts::sets, &Counts::deletes};
    ++(counts_.*(error != 0 ? &Counts::failures : counts[static_cast<size_t>(effect)]));
  }
  void Reset() { counts_ = {}; }
  const Counts& counts() const { return counts_; }
  Counts& counts() { return counts_; }

  bool operator==(const Counters&) const { return true; }

 private:
  mutable Counts counts_{};
};

}  // namespace vdrsim
