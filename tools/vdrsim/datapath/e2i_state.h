#pragma once

#include <cstdint>

#include "requests/input.h"

namespace vdrsim {

// An entry of the edge-to-infrastructure mapping.
struct E2i {
  uint32_t value2 = 0;
  MacAddress mac{};
  uint32_t value4 = 0;
  uint32_t value5 = 0;

  bool operator==(const E2i&) const = default;
};

struct PhysicalMac {
  uint32_t value = 0;

  bool operator==(const PhysicalMac&) const = default;
};

}  // namespace vdrsim
