#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace vdrctl {

// The record that a watched command printed in the turn before, for differences and rates.
struct History {
  std::vector<uint8_t> record{};
  std::chrono::steady_clock::time_point time{};
};

}  // namespace vdrctl
