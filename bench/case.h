#pragma once

#include <cstdint>
#include <functional>
#include <string>

// One way to spend time in the library, beside the least that the same work can cost.
struct Case {
  std::string name;      // the function measured
  std::string device;    // what its device does
  uint32_t records = 0;  // in the reply of a list
  double target = 0;     // the highest ratio that is wanted, 0 where the ratio is for information
  std::function<void()> prepare{};  // tells the device how to answer
  std::function<void()> library{};
  std::function<void()> floor{};
};
