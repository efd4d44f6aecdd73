#pragma once

#include <cstdint>
#include <string>

namespace vdrsim {

// A connection of the datapath as a whole.
struct Connection {
  std::string second{};
  std::string fourth{};
  std::string fifth{};
  std::string sixth{};
  uint32_t seventh = 0;

  bool operator==(const Connection&) const = default;
};

}  // namespace vdrsim
